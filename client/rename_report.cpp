#include "client/rename_report.h"

#include "client/command.h"
#include "client/output.h"
#include "client/system/streams.h"

namespace tamrix::client {
namespace {

/// The numbers in the summary of a tree.
struct Summary {
    long verdicts[kVerdictCount] = {};
    long onlyComposed = 0;
    long notConvertingBack = 0;

    explicit Summary(const Tree& tree) {
        for (const PlannedFolder& folder : tree)
            for (const PlannedEntry& entry : folder.entries) {
                ++verdicts[static_cast<std::size_t>(entry.planned.verdict)];
                onlyComposed += entry.planned.verdict == Verdict::rename && entry.planned.onlyComposed;
                notConvertingBack += entry.planned.verdict <= Verdict::unchanged && !entry.planned.convertsBack;
            }
    }
};

/// The rows of the summary, in the order of Verdict.
struct SummaryRow {
    const char* text;
    const char* json;
};
constexpr SummaryRow kSummaryRows[kVerdictCount] = {
    {"to rename", "toRename"}, {"unchanged", "unchanged"}, {"collisions", "collisions"},       {"reserved", "reserved"},
    {"too long", "tooLong"},   {"not text", "notText"},    {"rejected by the disk", "refused"}};

constexpr char kOnlyComposed[] = "Unicode composition only";
constexpr char kNoWayBack[] = "would not convert back";

}  // namespace

void Report::renamed(const std::string& folder, const NewName& name, const std::string& from) {
    ++done_;
    std::string note = name.onlyComposed ? kOnlyComposed : "";
    if (!name.convertsBack) note += (note.empty() ? "" : ", ") + std::string(kNoWayBack);
    if (asJson_) return row(folder, from, name.text, isDone_ ? "renamed" : "would rename", note);
    say(path(folder, from) + " -> " + visible(name.text) + (note.empty() ? "" : " (" + note + ")"));
}

void Report::linkChanged(const std::string& folder, const std::string& name, const std::string& from,
                         const std::string& to) {
    if (!asJson_) return say(path(folder, name) + ": link target: " + visible(from) + " -> " + visible(to));
    openDocument();
    const JsonObject entry(json_);
    rowMembers(folder, name, name, isDone_ ? "pointed" : "would point", "");
    json_.text("oldTarget", from);
    json_.text("newTarget", to);
}

void Report::skipped(const std::string& folder, const std::string& from, const std::string& to,
                     const std::string& reason) {
    ++skipped_;
    if (asJson_) return row(folder, from, to, "left", reason);
    say(path(folder, from), to.empty() ? reason : reason + " (new name: " + to + ")");
}

void Report::noted(const std::string& folder, const std::string& name, const std::string& note) {
    if (asJson_) return row(folder, name, name, "noted", note);
    say(path(folder, name), note);
}

void Report::progress(std::size_t done, std::size_t total) {
    static const bool isWatched = errorIsTerminal();
    if (!isWatched) return;
    const time_t now = time(nullptr);
    // The clock counts whole seconds: a difference of 1 may be less than a second, a difference of 2 is more.
    if (now < shownAt_ + (shownAt_ == startedAt_ ? 2 : 1)) return;
    shownAt_ = now;
    const std::string many = std::to_string(done);
    isProgressShown_ = true;
    finishOutput();
    writeText(stderr, "\r" + many + (total ? " of " + std::to_string(total) : " entries read"));
    fflush(stderr);
}

int Report::refuse(const std::string& about, const std::string& reason) {
    say(about, reason);
    return kUsageError;
}

std::string Report::path(const std::string& folder, const std::string& name) const {
    const std::string whole = folder.empty() ? folder_ : joined(folder_, folder);
    return visible(name.empty() ? whole : joined(whole, name));
}

void Report::say(const std::string& line) {
    clearProgress();
    print(line + "\n");
}

void Report::say(const std::string& about, const std::string& message) {
    clearProgress();
    complain(about, message);
}

void Report::clearProgress() {
    // Overwrites the progress, which has at most two numbers.
    if (isProgressShown_) writeText(stderr, "\r" + std::string(30, ' ') + "\r");
    isProgressShown_ = false;
}

void Report::openDocument() {
    if (document_) return;
    document_.emplace(json_);
    entries_.emplace(json_, "entries");
}

void Report::rowMembers(const std::string& folder, const std::string& from, const std::string& to, const char* status,
                        const std::string& reason) {
    json_.text("folder", folder.empty() ? folder_ : joined(folder_, folder));
    json_.text("from", from);
    json_.text("to", to);
    json_.ascii("status", status);
    json_.ascii("reason", reason);
}

void Report::row(const std::string& folder, const std::string& from, const std::string& to, const char* status,
                 const std::string& reason) {
    openDocument();
    const JsonObject entry(json_);
    rowMembers(folder, from, to, status, reason);
}

void Report::finish(const Tree* tree, const RunEnd& end, const std::string& journal) {
    clearProgress();
    if (asJson_) return finishJson(tree, end, journal);
    finishText(tree, end, journal);
}

void Report::finishText(const Tree* tree, const RunEnd& end, const std::string& journal) {
    if (tree) {
        const Summary summary(*tree);
        const auto line = [](const char* what, long count, const char* more = "") {
            if (count > 0) complain("", std::string(what) + ": " + std::to_string(count) + more);
        };
        if (!isDone_) line(kSummaryRows[0].text, summary.verdicts[0], " (use --apply)");
        line(kOnlyComposed, summary.onlyComposed);
        line(kNoWayBack, summary.notConvertingBack);
        for (std::size_t i = 1; i < kVerdictCount; ++i) line(kSummaryRows[i].text, summary.verdicts[i]);
        if (!isDone_ && summary.verdicts[0] == 0) complain("", "nothing to rename");
    }
    if (!end.reason.empty()) complain("", "stopped: " + end.reason);
    const std::string what = tree ? " renamed, " : " reverted, ";
    if (isDone_)
        complain("", std::to_string(done_) + what + std::to_string(skipped_) + " skipped, " +
                         std::to_string(end.remaining) + " remaining");
    if (!journal.empty()) complain("", "to undo: tamrix rename --undo " + journal);
}

void Report::finishJson(const Tree* tree, const RunEnd& end, const std::string& journal) {
    openDocument();
    entries_.reset();
    {
        const JsonObject object(json_, "summary");
        if (tree) {
            const Summary summary(*tree);
            for (std::size_t i = 0; i < kVerdictCount; ++i) json_.number(kSummaryRows[i].json, summary.verdicts[i]);
            json_.number("onlyComposed", summary.onlyComposed);
            json_.number("wouldNotComeBack", summary.notConvertingBack);
        }
        json_.number("done", isDone_ ? done_ : 0);
        json_.number("left", skipped_);
        json_.number("leftToDo", static_cast<long>(end.remaining));
    }
    json_.ascii("stopped", end.reason);
    json_.text("journal", journal);
    document_.reset();
}

}  // namespace tamrix::client
