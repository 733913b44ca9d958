// What tamrix rename prints: a line for each entry, how far the work is, and a summary by reason.
#pragma once

#include <time.h>

#include <string>

#include "client/json.h"
#include "client/rename_run.h"

namespace tamrix::client {

class Report final : public RenameListener {
public:
    /// `folder` is what the user wrote; `isDone` says whether what is told has happened.
    Report(std::string folder, bool isDone, bool asJson)
        : folder_(std::move(folder)), isDone_(isDone), asJson_(asJson) {}

    void renamed(const std::string& folder, const NewName& name, const std::string& from) override;
    void pointed(const std::string& folder, const std::string& name, const std::string& from,
                 const std::string& to) override;
    void left(const std::string& folder, const std::string& from, const std::string& to,
              const std::string& reason) override;
    void noted(const std::string& folder, const std::string& name, const std::string& note) override;
    void progress(std::size_t done, std::size_t total) override;

    /// The summary of a tree, null when one was put back. `journal` is empty where none was written.
    void finish(const Tree* tree, const RunEnd& end, const std::string& journal);

    bool leftSome() const { return left_ > 0; }

private:
    std::string path(const std::string& folder, const std::string& name) const;
    void say(const std::string& line);
    void say(const std::string& about, const std::string& message);
    void clearProgress();
    void beginRow(const std::string& folder, const std::string& from, const std::string& to, const char* status,
                  const std::string& reason);
    void row(const std::string& folder, const std::string& from, const std::string& to, const char* status,
             const std::string& reason);
    void openJson();
    void finishText(const Tree* tree, const RunEnd& end, const std::string& journal);
    void finishJson(const Tree* tree, const RunEnd& end, const std::string& journal);

    const std::string folder_;
    const bool isDone_;
    const bool asJson_;
    Json json_;
    bool jsonIsOpen_ = false;
    long done_ = 0;
    long left_ = 0;
    const time_t startedAt_ = time(nullptr);
    time_t shownAt_ = startedAt_;
    bool isProgressShown_ = false;
};

}  // namespace tamrix::client
