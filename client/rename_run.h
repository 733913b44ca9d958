// The steps of tamrix rename: reads the tree, then writes each step to the journal and does it, or undoes the steps of
// a journal. rename_plan.h decides what is renamed.
#pragma once

#include <string>

#include "client/rename_journal.h"
#include "client/rename_plan.h"
#include "client/system/append_file.h"

namespace tamrix::client {

/// Receives what happens to each entry. Folders are relative to the tree's first folder.
class RenameListener {
public:
    virtual void renamed(const std::string& folder, const NewName& name, const std::string& from) = 0;
    virtual void linkChanged(const std::string& folder, const std::string& name, const std::string& from,
                             const std::string& to) = 0;
    /// An entry was skipped; `to` may be empty.
    virtual void skipped(const std::string& folder, const std::string& from, const std::string& to,
                         const std::string& reason) = 0;
    /// A note on an entry that is not skipped.
    virtual void noted(const std::string& folder, const std::string& name, const std::string& note) = 0;
    /// Called often; `total` is 0 while it is unknown.
    virtual void progress(std::size_t done, std::size_t total) = 0;

protected:
    ~RenameListener() = default;
};

/// Reads and plans the tree at a resolved path. Of the listener it calls only progress(). False with the reason if the
/// tree's first folder cannot be read.
bool readTree(const std::string& root, Translate translate, bool ignoreCase, RenameListener& listener, Tree& tree,
              std::string& reason);

/// The first unused name for a journal next to the tree.
std::string freeJournalName(const std::string& root);

/// The path of the journal of an earlier run in the same direction that was not undone. Looks next to the tree and next
/// to each folder that contains it. Empty if there is none.
std::string journalOfEarlierRun(const std::string& root, bool toWindows);

/// The same for the folders in the tree.
std::string journalInTree(const Tree& tree, const std::string& root, bool toWindows);

/// Why a run stopped before its last step; the reason is empty if it did not.
struct RunEnd {
    std::string reason;
    std::size_t remaining = 0;  // steps that were not attempted
};

class RenameRun {
public:
    RenameRun(const std::string& root, bool toWindows, Tree& tree, RenameListener& listener);

    /// The number of entries to rename.
    std::size_t size() const { return turns_.size(); }
    /// Reports what apply would do, and changes nothing.
    void plan();
    /// Creates the journal, which must be a new file; false with the reason on failure.
    bool startJournal(const std::string& path, std::string& reason);
    /// Does what plan reports. Needs a journal.
    RunEnd apply();

private:
    struct Turn {
        std::size_t folder;
        std::size_t entry;
    };
    bool announce(std::size_t first, RunEnd& end);
    bool doTurn(std::size_t number, RunEnd& end);
    bool changeLink(const PlannedLink& link, std::size_t step, RunEnd& end);
    void changeLinks(RunEnd& end);
    std::vector<PlannedLink> changesOf(std::vector<PlannedLink> links);
    void markNotDone(std::size_t step);
    void reportFolder(std::size_t folder, const std::string& path);

    const std::string& root_;
    bool toWindows_;
    Tree& tree_;
    RenameListener& listener_;
    std::vector<Turn> turns_;  // in the order of renaming
    AppendFile journal_;
    std::size_t announced_ = 0;              // number of turns whose lines are in the journal
    std::size_t folderOfLines_ = kNoFolder;  // the folder of the journal's last line
    std::size_t folderOfPath_ = kNoFolder;
    std::string path_;  // of folderOfPath_
};

/// Reads a journal and opens it to record which steps are undone; false with the reason on failure.
bool openJournal(const std::string& path, Journal& journal, AppendFile& file, std::string& reason);

/// Undoes the steps of an open journal, newest first. Skips steps whose entries have changed since.
RunEnd undo(Journal& journal, AppendFile& file, RenameListener& listener);

}  // namespace tamrix::client
