#include "client/system/raw_values.h"

namespace tamrix::client {

LONG queryRaw(HKEY key, const char* name, DWORD& type, BYTE* bytes, DWORD& size) {
    return RegQueryValueExA(key, name, nullptr, &type, bytes, &size);
}

LONG setRaw(HKEY key, const char* name, DWORD type, const BYTE* bytes, DWORD size) {
    return RegSetValueExA(key, name, 0, type, bytes, size);
}

}  // namespace tamrix::client
