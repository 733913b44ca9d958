// A file written whole or not at all. whole_file_windows.cpp and whole_file_native.cpp implement it.
#pragma once

#include <string>

namespace tamrix::client {

/// Writes a whole file. A file on a disk, or the one that a link leads to, is written under another name next to it and
/// takes its place at the end; devices and pipes are written directly. False with the reason on failure: a former file
/// is as it was then, or the reason names the file in which its content is now.
bool writeWholeFile(const std::string& path, const std::string& text, std::string& reason);

}  // namespace tamrix::client
