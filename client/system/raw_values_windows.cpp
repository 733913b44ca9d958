// ANSI calls would replace characters outside the code page by question marks, so wide calls are used if the system
// supports them. Windows 95 stores ANSI strings.
#include <string>

#include "client/system/paths_windows.h"
#include "client/system/raw_values.h"

namespace tamrix::client {
namespace {

std::wstring wideName(const char* name) {
    std::wstring wide;
    for (; *name; ++name) wide += static_cast<wchar_t>(*name);
    return wide;
}

}  // namespace

LONG queryRaw(HKEY key, const char* name, DWORD& type, BYTE* bytes, DWORD& size) {
    return systemIsWide() ? RegQueryValueExW(key, wideName(name).c_str(), nullptr, &type, bytes, &size)
                          : RegQueryValueExA(key, name, nullptr, &type, bytes, &size);
}

LONG setRaw(HKEY key, const char* name, DWORD type, const BYTE* bytes, DWORD size) {
    return systemIsWide() ? RegSetValueExW(key, wideName(name).c_str(), 0, type, bytes, size)
                          : RegSetValueExA(key, name, 0, type, bytes, size);
}

}  // namespace tamrix::client
