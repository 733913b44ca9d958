// Reads and writes registry values as the system stores them: strings in UTF-16, or in ANSI where it has no wide calls.
// raw_values_windows.cpp and raw_values_native.cpp implement it. Arguments and results are those of RegQueryValueEx and
// RegSetValueEx.
#pragma once

#include <windows.h>

namespace tamrix::client {

LONG queryRaw(HKEY key, const char* name, DWORD& type, BYTE* bytes, DWORD& size);
LONG setRaw(HKEY key, const char* name, DWORD type, const BYTE* bytes, DWORD size);

}  // namespace tamrix::client
