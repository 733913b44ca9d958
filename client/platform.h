// What differs between the shipped EXE and the native program: how the library starts, Mac Roman text, folders, and
// where the mappings are kept. platform_windows.cpp and platform_native.cpp implement it.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "client/options.h"
#include "client/text.h"

namespace tamrix::client {

/// Options that exist on this platform only, for every command.
std::span<const Option> platformOptions();

/// Standard input and output carry bytes as they are.
void makeStreamsBinary();

/// Makes the library ready. With `changesMappings`, other runs that change the
/// mappings wait until this one has ended. False with the reason on failure.
bool startLibrary(const Arguments& arguments, bool changesMappings, std::string& reason);

/// Makes changes to the mappings last. False with the reason on failure: nothing has changed then.
bool keepMappings(std::string& reason);

/// Mac Roman by the platform's published table.
bool wideFromMac(const std::string& bytes, WideString& wide);
bool macFromWide(const WideString& wide, std::string& bytes);

/// An argument of the command line in the form of --text: Windows gives arguments in the ANSI code page whatever the
/// terminal shows.
std::string argumentText(const std::string& argument);

/// The library's counters of attached processes and threads; false when they cannot be read.
bool readCounters(long& processes, long& threads);

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

/// Writes a whole file. A file on a disk, or the one that a link leads to, is written under another name beside it and
/// takes its place at the end; devices and pipes are written as they stand. False with the reason on failure: a former
/// file is as it was then.
bool writeWholeFile(const std::string& path, const std::string& text, std::string& reason);

/// Renames, never in place of something else. False with the reason on failure.
bool renameWithoutOverwriting(const std::string& from, const std::string& to, std::string& reason);

}  // namespace tamrix::client
