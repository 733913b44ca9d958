// Converts paths for Windows calls: UTF-16 on NT and later, the ANSI code page on Windows 95.
#pragma once

#include <windows.h>

#include <string>

#include "client/unicode.h"

namespace tamrix::client {

/// Whether the system's wide calls work.
bool systemIsWide();

/// Converts text, or bytes with --bytes, to UTF-16. Invalid input becomes a path that cannot exist.
WideString widePath(const std::string& path);
/// False if the path cannot be converted; the result is then only for messages.
bool pathFromWide(const WideString& wide, std::string& path);

std::string ansiPath(const std::string& path);
bool pathFromAnsi(const std::string& bytes, std::string& path);

}  // namespace tamrix::client
