#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

#include "registry/registry_layout.h"
#include "registry/unique_key.h"
#include "strings/copied_string.h"

namespace {

constexpr DWORD kScratchSize = 128;  // bytes for a name with its terminator, or for data

/// A buffer for the result of one registry call. A stored string may have no terminator, and a number may have fewer
/// than 4 bytes. So all bytes after the returned ones are zero, and the buffer is one byte larger than the size passed
/// to the registry.
struct Scratch {
    BYTE bytes[kScratchSize + 1] = {};
    DWORD size = kScratchSize;

    char* text() { return reinterpret_cast<char*>(bytes); }
    void trim() {
        size = std::min(size, kScratchSize);
        std::memset(bytes + size, 0, sizeof bytes - size);
    }
};

/// Whether a handle is predefined. Closing such a handle has no effect.
bool isPredefined(HKEY key) {
    return (reinterpret_cast<ULONG_PTR>(key) & 0x80000000U) != 0;
}

/// A function, because compilers warn about a direct comparison of `this` with null.
bool isNotNull(const RegKey* key) {
    return key != nullptr;
}

/// Whether values of this type store data.
bool storesData(RegValType type) {
    return type == RegValString || type == RegValBinary || type == RegValDword;
}

/// Replaces name, type and data together. False, with nothing changed, if memory runs out.
bool fill(RegValue& value, const char* name, DWORD type, Scratch& data) {
    data.trim();
    RegValue fresh(static_cast<RegValType>(type), name, data.bytes, data.size);
    if ((name && !fresh.Name()) || (storesData(fresh.Type()) && !fresh.Buffer())) return false;
    RegistryLayout::swap(value, fresh);
    return true;
}

}  // namespace

RegKey::RegKey() {
    Init();
}

RegKey::RegKey(HKEY openKey) {
    Init();
    handle = openKey;
    opened = 1;
}

RegKey::RegKey(HKEY under, const char* path) {
    Init();
    if (under && path) Create(under, path);
}

RegKey::RegKey(RegKey* parent, const char* path) : RegKey(parent ? parent->handle : nullptr, path) {}

RegKey::~RegKey() {
    Close();
    delete[] relativePath;
}

void RegKey::Init() {
    ancestor = nullptr;
    relativePath = nullptr;
    handle = nullptr;
    subKeyPosition = 0;
    valuePosition = 0;
    opened = 0;
}

int RegKey::SetRelPath(const char* path) {
    // `path` may point into the old path, so the copy is made before the old path is freed.
    delete[] std::exchange(relativePath, tamrix::copiedString(path ? path : ""));
    return 1;
}

void RegKey::SetAncestor(HKEY newAncestor) {
    ancestor = newAncestor;
}

int RegKey::Exists() {
    Close();
    if (!ancestor || !relativePath || !*relativePath) return 0;
    tamrix::UniqueKey probe;
    return RegOpenKeyExA(ancestor, relativePath, 0, tamrix::kKeyAccess, probe.receive()) == ERROR_SUCCESS;
}

int RegKey::Exists(HKEY newAncestor, const char* path) {
    SetRelPath(path);
    SetAncestor(newAncestor);
    return Exists();
}

int RegKey::Open() {
    Close();
    subKeyPosition = valuePosition = 0;
    // For a null path, the registry would open the ancestor itself.
    if (!ancestor || !relativePath) return 0;
    tamrix::UniqueKey key;
    if (RegOpenKeyExA(ancestor, relativePath, 0, tamrix::kKeyAccess, key.receive()) != ERROR_SUCCESS) return 0;
    handle = key.release();
    opened = 1;
    return 1;
}

int RegKey::Open(HKEY newAncestor, const char* path) {
    SetRelPath(path);
    SetAncestor(newAncestor);
    return Open();
}

int RegKey::Create() {
    Close();
    subKeyPosition = valuePosition = 0;
    if (!ancestor || !relativePath) return 0;
    char keyClass[] = "key";
    DWORD disposition = 0;
    tamrix::UniqueKey key;
    if (RegCreateKeyExA(ancestor, relativePath, 0, keyClass, REG_OPTION_NON_VOLATILE, tamrix::kKeyAccess, nullptr,
                        key.receive(), &disposition) != ERROR_SUCCESS)
        return 0;
    handle = key.release();
    opened = 1;
    return 1;
}

int RegKey::Create(HKEY newAncestor, const char* path) {
    SetRelPath(path);
    SetAncestor(newAncestor);
    return Create();
}

int RegKey::Close() {
    // The ancestor may be this key's own handle, for example after key.FirstSubKey(&key). The system may assign the
    // value of a closed handle to another key, so nothing may be opened below it any more.
    if (ancestor == handle && !isPredefined(handle)) ancestor = nullptr;
    const tamrix::UniqueKey closed{std::exchange(handle, nullptr)};
    opened = 0;
    return 1;
}

__attribute__((no_sanitize("null"))) int RegKey::Opened() {
    return isNotNull(this) ? opened : 0;
}

HKEY RegKey::Handle() {
    return handle;
}

int RegKey::FirstValue(RegValue* value) {
    valuePosition = 0;
    return NextValue(value);
}

int RegKey::NextValue(RegValue* value) {
    if (!value) return 0;
    Scratch name;
    Scratch data;
    DWORD type = 0;
    if (RegEnumValueA(handle, static_cast<DWORD>(valuePosition), name.text(), &name.size, nullptr, &type, data.bytes,
                      &data.size) != ERROR_SUCCESS)
        return 0;
    if (!fill(*value, name.text(), type, data)) return 0;
    ++valuePosition;
    return 1;
}

int RegKey::ValueByName(const char* name, RegValue* value) {
    if (!value) return 0;
    Scratch data;
    DWORD type = 0;
    if (RegQueryValueExA(handle, name, nullptr, &type, data.bytes, &data.size) != ERROR_SUCCESS) return 0;
    return fill(*value, name, type, data);
}

int RegKey::RemoveValue(const char* name) {
    return RegDeleteValueA(handle, name) == ERROR_SUCCESS;
}

int RegKey::SetString(const char* name, const char* text) {
    if (!text) return 0;
    const auto* bytes = reinterpret_cast<const BYTE*>(text);
    return RegSetValueExA(handle, name, 0, REG_SZ, bytes, static_cast<DWORD>(std::strlen(text) + 1)) == ERROR_SUCCESS;
}

int RegKey::SetDword(const char* name, unsigned long number) {
    const auto stored = static_cast<std::uint32_t>(number);
    return RegSetValueExA(handle, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&stored), sizeof stored) ==
           ERROR_SUCCESS;
}

char* RegKey::FirstSubKey(RegKey* child) {
    subKeyPosition = 0;
    return NextSubKey(child);
}

char* RegKey::NextSubKey(RegKey* child) {
    if (!child) return nullptr;
    Scratch name;
    FILETIME written;
    if (RegEnumKeyExA(handle, static_cast<DWORD>(subKeyPosition), name.text(), &name.size, nullptr, nullptr, nullptr,
                      &written) != ERROR_SUCCESS)
        return nullptr;
    char* path = tamrix::copiedString(name.text());
    if (!path) return nullptr;
    delete[] std::exchange(child->relativePath, path);
    child->ancestor = handle;
    ++subKeyPosition;
    child->Open();
    return child->relativePath;
}

int RegKey::FirstSubKey(char* name) {
    subKeyPosition = 0;
    return NextSubKey(name);
}

int RegKey::NextSubKey(char* name) {
    if (!name) return 0;
    Scratch found;
    if (RegEnumKeyA(handle, static_cast<DWORD>(subKeyPosition), found.text(), kScratchSize) != ERROR_SUCCESS) return 0;
    std::strcpy(name, found.text());
    ++subKeyPosition;
    return 1;
}

char* RegKey::SubKeyByName(const char*, RegKey*) {
    return nullptr;
}
