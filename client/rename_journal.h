// The journal of tamrix rename: a text file, written during the run, with which all steps can be undone.
//
//   tamrix rename journal 1
//   to-windows <tab> text            direction (or to-mac) and encoding of the names (or bytes)
//   tree <tab> PATH                  the folder whose content is renamed
//   in <tab> FOLDER                  the folder of the following steps, relative to the tree's
//   name <tab> OLD <tab> NEW         step: an entry is renamed
//   link <tab> NAME <tab> OLD <tab> NEW    step: a link gets another target
//   back <tab> NUMBER                the step with this number, from 0, is undone or was never done
//
// A step's line is flushed to the disk before the step is done, together with the lines of up to kMaxAnnounced - 1
// later steps. If a step's new name becomes free only through an earlier step, its line is written only after that step
// is done. Therefore the disk shows whether a step was done: it was not if the old name exists and the new one does
// not. Folders have the names that they have when the step is done. Control characters and backslashes in names are
// written as \x and two digits. If the last line lacks its newline, its step was not done.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::client {

constexpr std::size_t kMaxAnnounced = 4096;
constexpr char kJournalEnding[] = ".tamrix-journal";

struct JournalStep {
    std::size_t folder;  // index in the journal's folders
    bool isLink;
    std::string name;  // the link's name; empty if the step renames an entry
    std::string from;
    std::string to;
    bool isUndone = false;
};

struct Journal {
    bool toWindows = false;
    bool isText = true;  // names are text, not bytes
    std::string tree;
    std::vector<std::string> folders;
    std::vector<JournalStep> steps;
    bool isTorn = false;        // the last line lacks its newline
    std::size_t wholeSize = 0;  // bytes of the complete lines

    bool isUndone() const;
};

std::string journalHead(bool toWindows, bool isText, const std::string& tree);
std::string folderLine(const std::string& folder);
std::string nameLine(const std::string& from, const std::string& to);
std::string linkLine(const std::string& name, const std::string& from, const std::string& to);
std::string backLine(std::size_t step);

/// On failure returns false and the number of the malformed line, from 1.
bool parseJournal(std::string_view text, Journal& journal, std::size_t& line);

}  // namespace tamrix::client
