// Output of tamrix rename: a line for each entry, the progress, and a summary by reason.
#pragma once

#include <time.h>

#include <optional>
#include <string>

#include "client/json.h"
#include "client/rename_run.h"

namespace tamrix::client {

class Report final : public RenameListener {
public:
    /// `folder` is the path as the user wrote it; `isDone` is false for a dry run.
    Report(std::string folder, bool isDone, bool asJson)
        : folder_(std::move(folder)), isDone_(isDone), asJson_(asJson) {}

    void renamed(const std::string& folder, const NewName& name, const std::string& from) override;
    void linkChanged(const std::string& folder, const std::string& name, const std::string& from,
                     const std::string& to) override;
    void skipped(const std::string& folder, const std::string& from, const std::string& to,
                 const std::string& reason) override;
    void noted(const std::string& folder, const std::string& name, const std::string& note) override;
    void progress(std::size_t done, std::size_t total) override;

    /// Prints the summary. `tree` is null after an undo; `journal` is empty if none was written.
    void finish(const Tree* tree, const RunEnd& end, const std::string& journal);

    /// Reports why nothing was done, before any entry is reported. Returns the exit status.
    int refuse(const std::string& about, const std::string& reason);

    bool skippedSome() const { return skipped_ > 0; }

private:
    std::string path(const std::string& folder, const std::string& name) const;
    void say(const std::string& line);
    void say(const std::string& about, const std::string& message);
    void clearProgress();
    void row(const std::string& folder, const std::string& from, const std::string& to, const char* status,
             const std::string& reason);
    void rowMembers(const std::string& folder, const std::string& from, const std::string& to, const char* status,
                    const std::string& reason);
    void openDocument();
    void finishText(const Tree* tree, const RunEnd& end, const std::string& journal);
    void finishJson(const Tree* tree, const RunEnd& end, const std::string& journal);

    const std::string folder_;
    const bool isDone_;
    const bool asJson_;
    Json json_;
    std::optional<JsonObject> document_;
    std::optional<JsonArray> entries_;
    long done_ = 0;
    long skipped_ = 0;
    const time_t startedAt_ = time(nullptr);
    time_t shownAt_ = startedAt_;
    bool isProgressShown_ = false;
};

}  // namespace tamrix::client
