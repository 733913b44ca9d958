// A renaming as it is carried out: the tree read, each step written into the journal and done, or everything put back.
// The decisions are those of rename_plan.h.
#pragma once

#include <string>

#include "client/rename_journal.h"
#include "client/rename_plan.h"
#include "client/system/append_file.h"

namespace tamrix::client {

/// What is told about each entry as it is met. Folders are named from the tree's.
class RenameListener {
public:
    virtual void renamed(const std::string& folder, const NewName& name, const std::string& from) = 0;
    virtual void pointed(const std::string& folder, const std::string& name, const std::string& from,
                         const std::string& to) = 0;
    /// Not done; `to` may be empty.
    virtual void left(const std::string& folder, const std::string& from, const std::string& to,
                      const std::string& reason) = 0;
    /// What the user should know of an entry that is as it should be.
    virtual void noted(const std::string& folder, const std::string& name, const std::string& note) = 0;
    /// Called often; `total` is 0 while it is not known.
    virtual void progress(std::size_t done, std::size_t total) = 0;

protected:
    ~RenameListener() = default;
};

/// Reads and plans the tree at a resolved path. False with the reason when its first folder cannot be read; others are
/// told to the listener.
bool readTree(const std::string& root, Translate translate, bool ignoreCase, RenameListener& listener, Tree& tree,
              std::string& reason);

/// The name of a journal next to a tree: the first that is free.
std::string freeJournalName(const std::string& root);

/// A journal next to a tree, or next to a folder that holds it, which says that the tree was renamed this way and was
/// not put back; empty when there is none.
std::string journalOfEarlierRun(const std::string& root, bool toWindows);

bool readJournal(const std::string& path, Journal& journal, std::string& reason);

/// How a run ended before its last step; empty when it did not.
struct RunEnd {
    std::string reason;
    std::size_t left = 0;  // steps that were not tried
};

class RenameRun {
public:
    RenameRun(const std::string& root, bool toWindows, Tree& tree, RenameListener& listener);

    /// How many names change.
    std::size_t size() const { return turns_.size(); }
    /// Tells what apply does. Nothing is touched.
    void plan();
    /// Makes the journal, a new file; false with the reason.
    bool startJournal(const std::string& path, std::string& reason);
    /// Does what plan tells, once there is a journal.
    RunEnd apply();

private:
    struct Turn {
        std::size_t folder;
        std::size_t entry;
    };
    bool announce(std::size_t first, RunEnd& end);
    bool doTurn(std::size_t number, RunEnd& end);
    bool pointOne(const PlannedLink& link, std::size_t step, RunEnd& end);
    void pointLinks(RunEnd& end);
    std::vector<PlannedLink> changesOf(std::vector<PlannedLink> links);
    void takeBack(std::size_t step);

    const std::string& root_;
    bool toWindows_;
    Tree& tree_;
    RenameListener& listener_;
    std::vector<Turn> turns_;  // in the order in which names change
    AppendFile journal_;
    std::size_t announced_ = 0;              // turns whose lines are in the journal
    std::size_t folderOfLines_ = kNoFolder;  // where the journal's last line is
    std::size_t folderOfPath_ = kNoFolder;
    std::string path_;  // of folderOfPath_
};

/// Puts back what a journal tells of, newest first. Steps whose entries have changed meanwhile are left.
RunEnd undo(Journal& journal, const std::string& path, RenameListener& listener);

}  // namespace tamrix::client
