// Win32 calls on registry values: query, enumerate, set, delete.
#include <standin.h>

#include <cstring>

#include "registry_access.h"

namespace {

using namespace standin;

// Returns a value's data: always its size, and its bytes if requested and if they fit.
LONG copyData(const Value& value, LPDWORD type, LPBYTE data, LPDWORD dataSize) {
    if (type) *type = value.type;
    if (!dataSize) return ERROR_SUCCESS;
    const DWORD capacity = *dataSize;
    *dataSize = static_cast<DWORD>(value.data.size());
    if (!data) return ERROR_SUCCESS;
    if (value.data.size() > capacity) return ERROR_MORE_DATA;
    if (!value.data.empty()) std::memcpy(data, value.data.data(), value.data.size());
    return ERROR_SUCCESS;
}

LONG copyText(std::string_view text, LPSTR data, PLONG dataSize) {
    if (!dataSize) return data ? ERROR_INVALID_PARAMETER : ERROR_SUCCESS;
    const LONG capacity = *dataSize;
    *dataSize = static_cast<LONG>(text.size());
    if (!data) return ERROR_SUCCESS;
    if (*dataSize > capacity) return ERROR_MORE_DATA;
    std::memcpy(data, text.data(), text.size());
    return ERROR_SUCCESS;
}

}  // namespace

LONG WINAPI RegQueryValueExA(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD dataSize) {
    RegistryCall call;
    if (reserved || (data && !dataSize)) return ERROR_INVALID_PARAMETER;
    const auto from = call.key(key, KEY_QUERY_VALUE);
    if (!from) return call.result();
    const Value* value = from->value(name ? name : "");
    return value ? copyData(*value, type, data, dataSize) : ERROR_FILE_NOT_FOUND;
}

LONG WINAPI RegQueryValueA(HKEY key, LPCSTR path, LPSTR data, PLONG dataSize) {
    RegistryCall call;
    const bool self = !path || !*path;
    const auto from = call.key(key, self ? KEY_QUERY_VALUE : 0);
    if (!from) return call.result();
    const auto found = self ? from : findKey(from, path);
    if (!found) return ERROR_FILE_NOT_FOUND;
    if (!self && found->denied) return ERROR_ACCESS_DENIED;
    const Value* value = found->value("");
    // If a key has no unnamed value, the result is the empty string.
    if (!value) return copyText(std::string(1, '\0'), data, dataSize);
    if (value->type != REG_SZ) return ERROR_INVALID_DATA;
    return copyText({reinterpret_cast<const char*>(value->data.data()), value->data.size()}, data, dataSize);
}

LONG WINAPI RegEnumValueA(HKEY key, DWORD index, LPSTR name, LPDWORD nameSize, LPDWORD reserved, LPDWORD type,
                          LPBYTE data, LPDWORD dataSize) {
    RegistryCall call;
    if (!name || !nameSize || reserved || (data && !dataSize)) return ERROR_INVALID_PARAMETER;
    const auto from = call.key(key, KEY_QUERY_VALUE);
    if (!from) return call.result();
    if (index >= from->values().size()) return ERROR_NO_MORE_ITEMS;
    const Value& value = from->values()[index];
    if (value.name.size() >= *nameSize) return ERROR_MORE_DATA;
    const LONG result = copyData(value, type, data, dataSize);
    if (result != ERROR_SUCCESS) return result;
    std::memcpy(name, value.name.c_str(), value.name.size() + 1);
    *nameSize = static_cast<DWORD>(value.name.size());
    return ERROR_SUCCESS;
}

LONG WINAPI RegSetValueExA(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD dataSize) {
    RegistryCall call;
    if (reserved) return ERROR_INVALID_PARAMETER;
    const auto from = call.key(key, KEY_SET_VALUE);
    if (!from) return call.result();
    const std::string_view valueName = name ? name : "";
    if (valueName.size() > kMaxValueName) return ERROR_INVALID_PARAMETER;
    if (!data && dataSize) return ERROR_NOACCESS;
    Value& value = from->addValue(valueName);
    value.type = type;
    value.data = data ? std::vector<BYTE>(data, data + dataSize) : std::vector<BYTE>();
    return ERROR_SUCCESS;
}

LONG WINAPI RegDeleteValueA(HKEY key, LPCSTR name) {
    RegistryCall call;
    const auto from = call.key(key, KEY_SET_VALUE);
    if (!from) return call.result();
    return from->removeValue(name ? name : "") ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
}
