// Writes a file completely or not at all. whole_file_windows.cpp and whole_file_native.cpp implement it.
#pragma once

#include <string>

namespace tamrix::client {

/// Writes a whole file. A file on a disk, or a link's target, is written under a temporary name next to it, which then
/// replaces it; devices and pipes are written directly. On failure returns false with the reason: an existing file is
/// unchanged, or the reason names the file that now has its content.
bool writeWholeFile(const std::string& path, const std::string& text, std::string& reason);

}  // namespace tamrix::client
