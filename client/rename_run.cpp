#include "client/rename_run.h"

#include <string.h>

#include <utility>

#include "client/read_file.h"
#include "client/system/interrupts.h"
#include "client/system/whole_file.h"
#include "client/text.h"

namespace tamrix::client {
namespace {

constexpr char kInterrupted[] = "interrupted";

/// No journal of a real disk is as large as this.
constexpr std::size_t kMaxJournalSize = std::size_t{1} << 30;

bool exists(const std::string& path) {
    return entryAt(path).kind != EntryKind::nothing;
}

std::string journalName(const std::string& root, long number) {
    return root + kJournalEnding + (number > 1 ? "-" + std::to_string(number) : "");
}

bool takeJournal(const std::string& text, Journal& journal, std::string& reason) {
    std::size_t line = 0;
    if (parseJournal(text, journal, line)) return true;
    reason = "not a journal of tamrix rename (line " + std::to_string(line) + ")";
    return false;
}

/// The latest journal next to a folder that is not completely undone; empty if there is none.
std::string latestJournal(const std::string& root, Journal& journal) {
    std::string latest, path;
    for (long number = 1; exists(path = journalName(root, number)); ++number) {
        Journal read;
        std::string text, reason;
        if (!readFile(path, kMaxJournalSize, text, reason) || !takeJournal(text, read, reason) || read.isUndone())
            continue;
        latest = path;
        journal = std::move(read);
    }
    return latest;
}

void reportEntry(const std::string& folder, const PlannedEntry& entry, RenameListener& listener) {
    const NewName& planned = entry.planned;
    if (planned.verdict != Verdict::rename && planned.verdict != Verdict::unchanged)
        listener.skipped(folder, entry.name(), planned.text == entry.name() ? "" : planned.text, planned.reason);
    else if (planned.verdict == Verdict::unchanged && !planned.convertsBack)
        listener.noted(folder, entry.name(), "would not convert back");
    if (entry.entry.kind == EntryKind::link && entry.entry.target.empty())
        listener.noted(folder, entry.name(), "the link's target is not changed");
}

}  // namespace

bool readTree(const std::string& root, Translate translate, bool ignoreCase, RenameListener& listener, Tree& tree,
              std::string& reason) {
    std::size_t count = 0;
    tree.emplace_back();
    for (std::size_t i = 0; i < tree.size(); ++i) {
        std::vector<FolderEntry> entries;
        const std::string path = pathInTree(tree, i, false);
        if (!listFolder(joined(root, path), entries, tree[i].unreadable)) continue;
        planFolder(std::move(entries), translate, ignoreCase, tree[i]);
        for (std::size_t at = 0; at < tree[i].entries.size(); ++at) {
            PlannedEntry& entry = tree[i].entries[at];
            if (entry.entry.kind != EntryKind::folder || !entry.entry.canBeNamed) continue;
            entry.folder = tree.size();
            PlannedFolder next;
            next.parent = i;
            next.entryInParent = at;
            next.depth = tree[i].depth + 1;
            tree.push_back(std::move(next));
        }
        listener.progress(count += tree[i].entries.size(), 0);
    }
    reason = tree[0].unreadable;
    return reason.empty();
}

std::string freeJournalName(const std::string& root) {
    long number = 1;
    while (exists(journalName(root, number))) ++number;
    return journalName(root, number);
}

std::string journalOfEarlierRun(const std::string& root, bool toWindows) {
    for (std::string folder = root; !isRoot(folder); folder.resize(folder.rfind(kPathSeparator))) {
        Journal journal;
        const std::string path = latestJournal(folder, journal);
        if (!path.empty()) return journal.toWindows == toWindows ? path : "";
        if (folder.rfind(kPathSeparator) == 0) break;
    }
    return {};
}

std::string journalInTree(const Tree& tree, const std::string& root, bool toWindows) {
    for (std::size_t folder = 0; folder < tree.size(); ++folder)
        for (const PlannedEntry& entry : tree[folder].entries) {
            if (!entry.name().ends_with(kJournalEnding)) continue;
            std::string path = joined(joined(root, pathInTree(tree, folder, false)), entry.name());
            path.resize(path.size() - strlen(kJournalEnding));
            Journal journal;
            std::string latest = entryAt(path).kind == EntryKind::folder ? latestJournal(path, journal) : "";
            if (!latest.empty() && journal.toWindows == toWindows) return latest;
        }
    return {};
}

bool openJournal(const std::string& path, Journal& journal, AppendFile& file, std::string& reason) {
    std::string text;
    if (!readFile(path, kMaxJournalSize, text, reason) || !takeJournal(text, journal, reason)) return false;
    // The step of an incomplete last line was not done. The line is removed so that the next one is not appended to it.
    if (journal.isTorn && !writeWholeFile(path, text.substr(0, journal.wholeSize), reason)) return false;
    return file.open(path, reason);
}

RenameRun::RenameRun(const std::string& root, bool toWindows, Tree& tree, RenameListener& listener)
    : root_(root), toWindows_(toWindows), tree_(tree), listener_(listener) {
    for (const std::size_t folder : deepestFirst(tree))
        for (const std::size_t entry : tree[folder].renamings) turns_.push_back({folder, entry});
}

/// Reports why a folder could not be read, and which of its entries are not renamed.
void RenameRun::reportFolder(std::size_t folder, const std::string& path) {
    if (!tree_[folder].unreadable.empty()) listener_.skipped(path, "", "", tree_[folder].unreadable);
    for (const PlannedEntry& entry : tree_[folder].entries) reportEntry(path, entry, listener_);
}

void RenameRun::plan() {
    std::string path;
    for (const std::size_t folder : deepestFirst(tree_)) {
        path = pathInTree(tree_, folder, false);
        for (const std::size_t i : tree_[folder].renamings) {
            const PlannedEntry& entry = tree_[folder].entries[i];
            listener_.renamed(path, entry.planned, entry.name());
        }
        reportFolder(folder, path);
    }
    for (const PlannedLink& link : changesOf(planLinks(tree_, plainPath(root_)))) {
        const FolderEntry& entry = tree_[link.folder].entries[link.entry].entry;
        listener_.linkChanged(pathInTree(tree_, link.folder, false), entry.name, entry.target, link.target);
    }
}

/// Reports links to the outside of the tree. Returns the links whose target changes.
std::vector<PlannedLink> RenameRun::changesOf(std::vector<PlannedLink> links) {
    std::vector<PlannedLink> changes;
    for (PlannedLink& link : links) {
        const FolderEntry& entry = tree_[link.folder].entries[link.entry].entry;
        if (link.leadsOutside)
            listener_.noted(pathInTree(tree_, link.folder, false), entry.name,
                            "the link's target is outside the folder: " + entry.target);
        if (link.target != entry.target) changes.push_back(std::move(link));
    }
    return changes;
}

/// Writes the lines of the turns from `first` to the journal and flushes it to the disk.
bool RenameRun::announce(std::size_t first, RunEnd& end) {
    std::string lines;
    for (; announced_ < turns_.size() && announced_ < first + kMaxAnnounced; ++announced_) {
        const Turn& turn = turns_[announced_];
        const PlannedEntry& entry = tree_[turn.folder].entries[turn.entry];
        if (entry.waits && announced_ != first) break;
        if (turn.folder != folderOfLines_) lines += folderLine(pathInTree(tree_, turn.folder, false));
        folderOfLines_ = turn.folder;
        lines += nameLine(entry.name(), entry.newName());
    }
    return journal_.append(lines, end.reason) && journal_.flush(end.reason);
}

/// Marks a step in the journal as not done. Without the mark, undo detects it from the disk.
void RenameRun::markNotDone(std::size_t step) {
    std::string ignored;
    journal_.append(backLine(step), ignored);
}

/// Renames one entry. False if the disk has changed since the tree was read.
bool RenameRun::doTurn(std::size_t number, RunEnd& end) {
    const Turn& turn = turns_[number];
    PlannedEntry& entry = tree_[turn.folder].entries[turn.entry];
    if (turn.folder != folderOfPath_) path_ = pathInTree(tree_, turn.folder, false);
    folderOfPath_ = turn.folder;
    const std::string folder = joined(root_, path_);
    const std::string from = joined(folder, entry.name()), to = joined(folder, entry.newName());
    std::string reason;
    if (entryAt(from).kind != entry.entry.kind) {
        end.reason = "the disk has changed: " + joined(path_, entry.name()) + " was removed or replaced";
        return false;
    }
    if (renameWithoutOverwriting(from, to, reason)) {
        listener_.renamed(path_, entry.planned, entry.name());
        return true;
    }
    if (exists(to)) {
        end.reason = "the disk has changed: " + joined(path_, entry.newName()) + " now exists";
        return false;
    }
    // The disk rejects this name; other entries can still be renamed.
    listener_.skipped(path_, entry.name(), entry.newName(), reason);
    entry.planned.verdict = Verdict::refused;
    markNotDone(number);
    return true;
}

/// Changes one link to its target's new name; false if the run must stop.
bool RenameRun::changeLink(const PlannedLink& link, std::size_t step, RunEnd& end) {
    const PlannedEntry& entry = tree_[link.folder].entries[link.entry];
    const std::string& target = entry.entry.target;
    const std::string folder = pathInTree(tree_, link.folder, true), shownIn = pathInTree(tree_, link.folder, false);
    const std::string path = joined(joined(root_, folder), entry.newName());
    if (wasInterrupted())
        end.reason = kInterrupted;
    else if (entryAt(path).target != target)
        end.reason = "the disk has changed: " + joined(shownIn, entry.name()) + " has another target now";
    if (!end.reason.empty() ||
        !journal_.append(folderLine(folder) + linkLine(entry.newName(), target, link.target), end.reason) ||
        !journal_.flush(end.reason))
        return false;
    std::string reason;
    if (changeLinkTarget(path, link.target, reason)) {
        listener_.linkChanged(shownIn, entry.name(), target, link.target);
    } else {
        listener_.skipped(shownIn, entry.name(), "", reason);
        markNotDone(step);
    }
    return true;
}

/// Changes the links, after all entries are renamed, when it is known which names the disk rejected.
void RenameRun::changeLinks(RunEnd& end) {
    const std::vector<PlannedLink> links = changesOf(planLinks(tree_, plainPath(root_)));
    for (std::size_t i = 0; i < links.size() && end.reason.empty(); ++i)
        if (!changeLink(links[i], turns_.size() + i, end)) end.remaining = links.size() - i;
}

bool RenameRun::startJournal(const std::string& path, std::string& reason) {
    return journal_.create(path, reason) &&
           journal_.append(journalHead(toWindows_, namesAreText, plainPath(root_)), reason);
}

RunEnd RenameRun::apply() {
    RunEnd end;
    std::size_t number = 0;
    watchInterrupts();
    for (const std::size_t folder : deepestFirst(tree_)) reportFolder(folder, pathInTree(tree_, folder, false));
    for (; number < turns_.size(); ++number) {
        listener_.progress(number, turns_.size());
        if (wasInterrupted()) end.reason = kInterrupted;
        if (!end.reason.empty() || (number == announced_ && !announce(number, end)) || !doTurn(number, end)) break;
    }
    end.remaining = turns_.size() - number;
    for (; number < announced_; ++number) markNotDone(number);
    if (end.reason.empty()) changeLinks(end);
    journal_.flush(end.reason);
    return end;
}

namespace {

enum class UndoResult { done, already, changed };

UndoResult undoName(const std::string& folder, const JournalStep& step, std::string& reason) {
    const bool isOld = exists(joined(folder, step.from)), isNew = exists(joined(folder, step.to));
    if (isOld != isNew)
        return isOld ? UndoResult::already
               : renameWithoutOverwriting(joined(folder, step.to), joined(folder, step.from), reason)
                   ? UndoResult::done
                   : UndoResult::changed;
    reason = isOld ? "both names now exist" : "no longer exists";
    return UndoResult::changed;
}

UndoResult undoLink(const std::string& folder, const JournalStep& step, std::string& reason) {
    const std::string path = joined(folder, step.name);
    const std::string target = entryAt(path).target;
    removeUnfinishedLink(path);
    if (target == step.from) return UndoResult::already;
    if (target == step.to) return changeLinkTarget(path, step.from, reason) ? UndoResult::done : UndoResult::changed;
    reason = "has another target now";
    return UndoResult::changed;
}

}  // namespace

RunEnd undo(Journal& journal, AppendFile& file, RenameListener& listener) {
    RunEnd end;
    std::string root;
    watchInterrupts();
    if (!resolveFolder(journal.tree, root, end.reason)) {
        end.reason = journal.tree + ": " + end.reason;
        return end;
    }
    end.remaining = journal.steps.size();
    for (; end.remaining > 0; --end.remaining) {
        JournalStep& step = journal.steps[end.remaining - 1];
        listener.progress(journal.steps.size() - end.remaining, journal.steps.size());
        if (step.isUndone) continue;
        if (wasInterrupted()) end.reason = kInterrupted;
        if (!end.reason.empty()) break;
        const std::string& inTree = journal.folders[step.folder];
        const std::string folder = joined(root, inTree);
        std::string reason;
        const UndoResult result = step.isLink ? undoLink(folder, step, reason) : undoName(folder, step, reason);
        if (result == UndoResult::changed) {
            listener.skipped(inTree, step.isLink ? step.name : step.to, step.isLink ? "" : step.from, reason);
            continue;
        }
        step.isUndone = true;
        file.append(backLine(end.remaining - 1), end.reason);
        if (result == UndoResult::already) continue;
        if (step.isLink)
            listener.linkChanged(inTree, step.name, step.to, step.from);
        else
            listener.renamed(inTree, {Verdict::rename, step.from, {}}, step.to);
    }
    file.flush(end.reason);
    return end;
}

}  // namespace tamrix::client
