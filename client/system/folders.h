// What a folder holds and how its entries are renamed. folders_windows.cpp and folders_native.cpp implement it.
//
// Paths and names are text, or bytes with --bytes. Natively a name that is no UTF-8 passes as it is. A
// Windows name without a text is there with what shows it best, for messages only.
#pragma once

#include <string>
#include <vector>

#include "client/text.h"

namespace tamrix::client {

enum class EntryKind { nothing, file, folder, link };

struct FolderEntry {
    std::string name;
    EntryKind kind = EntryKind::nothing;
    std::string target;      // of a link that can be pointed elsewhere; empty otherwise
    bool canBeNamed = true;  // false where the name has no text, so that no call can be given it
};

extern const char kPathSeparator;

/// Whether this system's disks hold one name only of those that differ in case alone.
extern const bool kDiskIgnoresCase;

/// The path of a folder from the root, without links on the way, in the form that the functions below take at any
/// length. False with the reason when it is no folder.
bool resolveFolder(const std::string& path, std::string& resolved, std::string& reason);

/// A resolved path as people write it.
std::string plainPath(const std::string& resolved);

/// Whether a resolved path is that of a whole disk.
bool isRoot(const std::string& resolved);

std::string joined(const std::string& folder, const std::string& name);

/// What a folder holds, without itself and its parent. False with the reason on failure.
bool listFolder(const std::string& path, std::vector<FolderEntry>& entries, std::string& reason);

/// What is there under a path; links are not followed.
FolderEntry entryAt(const std::string& path);

/// The name in upper case, as Windows compares names.
std::string caseKey(const std::string& name);

/// Why this system's disks do not take a name; null when they do.
const char* whyNotOnThisDisk(const std::string& name);

/// Renames, never in place of something else. False with the reason on failure.
bool renameWithoutOverwriting(const std::string& from, const std::string& to, std::string& reason);

/// Points a link elsewhere: a new link takes the old one's place in one step. False with the reason on failure.
bool pointLink(const std::string& path, const std::string& target, std::string& reason);

/// Removes what an interrupted pointLink may have left next to the link.
void removeUnfinishedLink(const std::string& path);

}  // namespace tamrix::client
