// Plans which entries of a tree are renamed, in which order, and why the others are not. Nothing here accesses the
// disk.
//
// A tree is a list of folders. The first is the one named by the user; each folder comes after its parent. All names
// are those before the first step.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "client/system/folders.h"

namespace tamrix::client {

enum class Verdict { rename, unchanged, collision, reserved, tooLong, notText, refused };
constexpr std::size_t kVerdictCount = 7;

/// A converted name.
struct NewName {
    Verdict verdict = Verdict::rename;  // or why the entry is not renamed
    std::string text;
    std::string reason;
    bool convertsBack = true;   // the new name converts back to the old name's bytes
    bool onlyComposed = false;  // the new name is the old one in composed Unicode form
};

using Translate = NewName (*)(const std::string& name);

constexpr std::size_t kNoFolder = static_cast<std::size_t>(-1);

struct PlannedEntry {
    FolderEntry entry;
    NewName planned;
    std::size_t folder = kNoFolder;  // index in the tree if the entry is a folder
    bool waits = false;              // its new name becomes free when another entry of the folder is renamed

    const std::string& name() const { return entry.name; }
    const std::string& newName() const { return planned.verdict == Verdict::rename ? planned.text : entry.name; }
};

struct PlannedFolder {
    std::size_t parent = kNoFolder;
    std::size_t entryInParent = 0;
    std::size_t depth = 0;
    std::string unreadable;              // why it could not be read; empty if it was
    std::vector<PlannedEntry> entries;   // sorted by name
    std::vector<std::size_t> renamings;  // entries to rename, in an order in which each new name is free
};

using Tree = std::vector<PlannedFolder>;

/// Plans one folder. Entries that would get the same name are all skipped, and so is an entry whose new name is never
/// free. With `ignoreCase`, names that differ only in case count as the same, including those of unchanged entries.
void planFolder(std::vector<FolderEntry> entries, Translate translate, bool ignoreCase, PlannedFolder& folder);

/// The folders in the order in which their entries are renamed, the deepest first.
std::vector<std::size_t> deepestFirst(const Tree& tree);

/// A folder's path relative to the tree's first folder, with old or new names.
std::string pathInTree(const Tree& tree, std::size_t folder, bool withNewNames);

/// A link's target after everything is renamed.
struct PlannedLink {
    std::size_t folder;
    std::size_t entry;
    std::string target;  // the old target if nothing changes
    bool leadsOutside;   // the target is outside the tree
};

/// The links of a tree whose target changes or is outside the tree. `root` is the tree's resolved path.
std::vector<PlannedLink> planLinks(const Tree& tree, const std::string& root);

}  // namespace tamrix::client
