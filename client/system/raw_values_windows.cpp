// The ANSI calls would turn characters beyond the code page into question marks, so the wide ones are used where the
// system has them. Windows 95 has them in name only; what it stores is ANSI.
#include <string>

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
    const LONG result = RegQueryValueExW(key, wideName(name).c_str(), nullptr, &type, bytes, &size);
    if (result != ERROR_CALL_NOT_IMPLEMENTED) return result;
    return RegQueryValueExA(key, name, nullptr, &type, bytes, &size);
}

LONG setRaw(HKEY key, const char* name, DWORD type, const BYTE* bytes, DWORD size) {
    const LONG result = RegSetValueExW(key, wideName(name).c_str(), 0, type, bytes, size);
    if (result != ERROR_CALL_NOT_IMPLEMENTED) return result;
    return RegSetValueExA(key, name, 0, type, bytes, size);
}

}  // namespace tamrix::client
