// Paths as the calls of Windows take them: UTF-16 on NT and later, at any length, bytes of the ANSI code page on 95.
#pragma once

#include <windows.h>

#include <string>

#include "client/text.h"

namespace tamrix::client {

/// Whether the system's wide calls work.
bool systemIsWide();

/// Text, or bytes with --bytes, as UTF-16. What is neither gives a path that no disk holds.
WideString widePath(const std::string& path);
/// False where the path has no text; the result then shows it in messages.
bool pathFromWide(const WideString& wide, std::string& path);

std::string ansiPath(const std::string& path);
bool pathFromAnsi(const std::string& bytes, std::string& path);

}  // namespace tamrix::client
