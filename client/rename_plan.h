// Which entries of a tree get which names, in which order, and why the others keep theirs. Plain values: nothing here
// touches a disk.
//
// A tree is a list of folders; the first is the one that was named, and a folder comes after the one that holds it. All
// names are of the time before the first step.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "client/system/folders.h"

namespace tamrix::client {

enum class Verdict { rename, unchanged, collision, reserved, tooLong, notText, refused };
constexpr std::size_t kVerdictCount = 7;

/// The form that a name gets on the other side.
struct NewName {
    Verdict verdict = Verdict::rename;  // or why it gets none
    std::string text;
    std::string reason;
    bool comesBack = true;      // the way back gives the old name's bytes
    bool onlyComposed = false;  // letters and their marks became one character each; nothing else changed
};

using Translate = NewName (*)(const std::string& name);

constexpr std::size_t kNoFolder = static_cast<std::size_t>(-1);

struct PlannedEntry {
    FolderEntry entry;
    NewName planned;
    std::size_t folder = kNoFolder;  // which of the tree's folders it is
    bool waits = false;              // its new name is free only after another entry of the folder was renamed

    const std::string& name() const { return entry.name; }
    const std::string& newName() const { return planned.verdict == Verdict::rename ? planned.text : entry.name; }
};

struct PlannedFolder {
    std::size_t parent = kNoFolder;
    std::size_t entryInParent = 0;
    std::size_t depth = 0;
    std::vector<PlannedEntry> entries;   // by name
    std::vector<std::size_t> renamings;  // entries that are renamed, in an order in which each new name is free
};

using Tree = std::vector<PlannedFolder>;

/// Plans one folder. Entries that would get one name all stay, and so does one whose new name stays taken. With
/// `ignoreCase`, names that differ in case alone are one name, also of entries that would keep theirs.
void planFolder(std::vector<FolderEntry> entries, Translate translate, bool ignoreCase, PlannedFolder& folder);

/// The folders in the order in which their entries are renamed: the deepest first.
std::vector<std::size_t> deepestFirst(const Tree& tree);

/// A folder's path from the tree's first folder, without it; the names are old or new ones.
std::string pathInTree(const Tree& tree, std::size_t folder, bool withNewNames);

/// What happens to a link: where it points once everything has its new name.
struct PlannedLink {
    std::size_t folder;
    std::size_t entry;
    std::string target;  // equal to the old one where nothing changes
    bool leadsOut;       // out of the tree
};

/// The links of a tree whose target changes or lies outside. `root` is the tree's resolved path.
std::vector<PlannedLink> planLinks(const Tree& tree, const std::string& root);

}  // namespace tamrix::client
