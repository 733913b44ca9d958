// Lists folders and renames their entries. folders_windows.cpp and folders_native.cpp implement it.
//
// Paths and names are text, or bytes with --bytes. In the native program, names that are not UTF-8 are passed
// unchanged. On Windows, a name that cannot be converted to text is listed in a similar form, for messages only.
#pragma once

#include <string>
#include <vector>

namespace tamrix::client {

enum class EntryKind { nothing, file, folder, link };

struct FolderEntry {
    std::string name;
    EntryKind kind = EntryKind::nothing;
    std::string target;      // of a link whose target can be changed; empty otherwise
    bool canBeNamed = true;  // false if the name cannot be converted to text and so cannot be used in calls
};

extern const char kPathSeparator;

/// Whether this system's disks treat names that differ only in case as the same name.
extern const bool kDiskIgnoresCase;

/// Converts a folder's path to an absolute path in a form that the functions below accept at any length. Resolves
/// symbolic links, except on Windows. False with the reason if it is not a folder.
bool resolveFolder(const std::string& path, std::string& resolved, std::string& reason);

/// A resolved path in its usual form, for messages.
std::string plainPath(const std::string& resolved);

/// Whether a resolved path is a disk's root.
bool isRoot(const std::string& resolved);

std::string joined(const std::string& folder, const std::string& name);

/// Lists a folder's entries except "." and "..". False with the reason on failure.
bool listFolder(const std::string& path, std::vector<FolderEntry>& entries, std::string& reason);

/// The entry at a path, whose kind is EntryKind::nothing if there is none; links are not followed.
FolderEntry entryAt(const std::string& path);

/// The name in upper case, as Windows compares names.
std::string caseKey(const std::string& name);

/// Why this system's disks do not accept a name; null if they do.
const char* whyNotOnThisDisk(const std::string& name);

/// Renames an entry and never overwrites another. False with the reason on failure.
bool renameWithoutOverwriting(const std::string& from, const std::string& to, std::string& reason);

/// Changes a link's target: a new link replaces the old one in one step. False with the reason on failure.
bool changeLinkTarget(const std::string& path, const std::string& target, std::string& reason);

/// Removes what an interrupted changeLinkTarget may have left next to the link.
void removeUnfinishedLink(const std::string& path);

}  // namespace tamrix::client
