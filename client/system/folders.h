// What a folder holds and how its entries are renamed. folders_windows.cpp and folders_native.cpp implement it.
#pragma once

#include <string>
#include <vector>

namespace tamrix::client {

struct FolderEntry {
    std::string name;
    bool isFolder;  // a real one: links are not followed
};

extern const char kPathSeparator;

/// Whether names on the disk have the form of --text; on Windows they are bytes of the ANSI code page always.
extern const bool kDiskNamesAreText;

/// What a folder holds, without itself and its parent. False with the reason on failure.
bool listFolder(const std::string& path, std::vector<FolderEntry>& entries, std::string& reason);

/// Names with equal keys cannot stand in one folder.
std::string nameKey(const std::string& name);

/// Why the disk does not take this name; null when it does.
const char* whyNotAName(const std::string& name);

/// Renames, never in place of something else. False with the reason on failure.
bool renameWithoutOverwriting(const std::string& from, const std::string& to, std::string& reason);

}  // namespace tamrix::client
