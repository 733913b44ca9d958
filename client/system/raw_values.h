// Values of a registry key as they are stored: strings in the system's own form, UTF-16 where it has it, else ANSI.
// raw_values_windows.cpp and raw_values_native.cpp implement it. Arguments and results are those of RegQueryValueEx and
// RegSetValueEx.
#pragma once

#include <windows.h>

namespace tamrix::client {

LONG queryRaw(HKEY key, const char* name, DWORD& type, BYTE* bytes, DWORD& size);
LONG setRaw(HKEY key, const char* name, DWORD type, const BYTE* bytes, DWORD size);

}  // namespace tamrix::client
