// The journal of a renaming: a text file, written as the work goes on, from which everything can be put back.
//
//   tamrix rename journal 1
//   to-windows <tab> text            the way (or to-mac), and the form of the names (or bytes)
//   tree <tab> PATH                  the folder whose content is renamed
//   in <tab> FOLDER                  the folder of the steps that follow, from the tree's
//   name <tab> OLD <tab> NEW         an entry's name
//   link <tab> NAME <tab> OLD <tab> NEW    where a link points
//   back <tab> NUMBER                the step with this number, from 0, is undone or was never done
//
// A step's line is on the disk before the step is done, up to kMostAnnounced of them at once. A step whose new name
// only an earlier one makes free is never announced together with that one. So each step can be told from the disk:
// with the old name there and the new one not, it was not done. Folders are named as they are when the step is done.
// Control characters and backslashes of names are \x and two digits. A line that lacks its end was never completed: its
// step was not done.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::client {

constexpr std::size_t kMostAnnounced = 4096;
constexpr char kJournalEnding[] = ".tamrix-journal";

struct JournalStep {
    std::size_t folder;  // which of the journal's folders
    bool isLink;
    std::string name;  // of a link; otherwise empty
    std::string from;
    std::string to;
    bool isBack = false;
};

struct Journal {
    bool toWindows = false;
    bool isText = true;  // the form of the names
    std::string tree;
    std::vector<std::string> folders;
    std::vector<JournalStep> steps;
    bool isTorn = false;        // the last line lacks its end
    std::size_t wholeSize = 0;  // bytes of the whole lines

    bool isBack() const;
};

std::string journalHead(bool toWindows, bool isText, const std::string& tree);
std::string folderLine(const std::string& folder);
std::string nameLine(const std::string& from, const std::string& to);
std::string linkLine(const std::string& name, const std::string& from, const std::string& to);
std::string backLine(std::size_t step);

/// False with the line at fault, from 1.
bool parseJournal(std::string_view text, Journal& journal, std::size_t& line);

}  // namespace tamrix::client
