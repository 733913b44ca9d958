// The flat functions of the extension store. They use the platform's registry calls and allocate no memory. The caller
// owns all buffers.
#include <windows.h>

#include <climits>
#include <cstddef>
#include <cstring>
#include <initializer_list>

#include "base/settings_key.h"
#include "extmap/extension_key.h"
#include "extmap/store_layout.h"
#include "registry/unique_key.h"
#include "tamrix32/extmap.h"
#include "tamrix32/strings.h"

namespace tamrix {
namespace {

static_assert(sizeof(void*) != 4 || (sizeof(SExtensionMap) == 28 && offsetof(SExtensionMap, commentSize) == 24));

constexpr char kFallbackType[] = "TEXT";
constexpr char kFallbackCreator[] = "dosa";

UniqueKey openKey(HKEY root, const char* path) {
    HKEY key = nullptr;
    return UniqueKey(RegOpenKeyExA(root, path, 0, kKeyAccess, &key) == ERROR_SUCCESS ? key : nullptr);
}

UniqueKey createKey(HKEY root, const char* path) {
    HKEY key = nullptr;
    return UniqueKey(RegCreateKeyA(root, path, &key) == ERROR_SUCCESS ? key : nullptr);
}

UniqueKey openExtension(const char* extension) {
    KeyNameBuffer buffer;
    const char* name = extensionKeyName(extension, buffer);
    return name ? openKey(HKEY_CLASSES_ROOT, name) : UniqueKey();
}

/// Reads a code. False, with `code` undefined, unless the value is a string of exactly 5 bytes. The fifth byte should
/// be the terminator; whatever it is, it is replaced by one.
bool readCode(HKEY key, const char* valueName, char* code) {
    DWORD type = REG_NONE;
    DWORD size = kCodeSize;
    const LONG result = RegQueryValueExA(key, valueName, nullptr, &type, reinterpret_cast<BYTE*>(code), &size);
    code[kCodeLength] = 0;
    return result == ERROR_SUCCESS && type == REG_SZ && size == kCodeSize;
}

/// Reads each code that has a buffer. True if all of these could be read.
bool readCodes(HKEY key, const SExtensionMap& map, const char* typeValue, const char* creatorValue) {
    const bool hasType = !map.type || readCode(key, typeValue, map.type);
    const bool hasCreator = !map.creator || readCode(key, creatorValue, map.creator);
    return hasType && hasCreator;
}

/// Reads the comment. It becomes empty if there is none or if it does not fit with a terminator.
void readComment(HKEY key, char* comment, DWORD capacity) {
    DWORD type = REG_NONE;
    DWORD size = capacity;
    const LONG result = RegQueryValueExA(key, kCommentValue, nullptr, &type, reinterpret_cast<BYTE*>(comment), &size);
    if (result != ERROR_SUCCESS || type != REG_SZ) size = 0;
    if (size == capacity && comment[size - 1] != 0) size = 0;
    if (size < capacity) comment[size] = 0;
}

bool writeText(HKEY key, const char* valueName, const char* text) {
    const auto size = static_cast<DWORD>(std::strlen(text) + 1);
    return RegSetValueExA(key, valueName, 0, REG_SZ, reinterpret_cast<const BYTE*>(text), size) == ERROR_SUCCESS;
}

bool isCode(const char* code) {
    return code && std::strlen(code) == kCodeLength;
}

/// Whether a stored code equals the wanted one. A wanted code of fewer than four bytes matches nothing.
bool isSameCode(const char* stored, const char* wanted) {
    for (int i = 0; i < kCodeLength; ++i)
        if (wanted[i] == 0 || stored[i] != wanted[i]) return false;
    return true;
}

/// Enumerates the keys of the class root from an index on.
class ClassKeys {
public:
    explicit ClassKeys(unsigned& index) : index_(index) {}

    /// Reads the name at the index and advances the index. A name that does not fit or cannot be read is returned as an
    /// empty string. False at the end, and after too many consecutive failures.
    bool next(KeyNameBuffer& name) {
        if (index_ == UINT_MAX || failuresInARow_ == kMaxFailuresInARow) return false;
        const LONG result = RegEnumKeyA(HKEY_CLASSES_ROOT, index_++, name, sizeof name);
        if (result != ERROR_SUCCESS) name[0] = 0;
        failuresInARow_ = result == ERROR_SUCCESS || result == ERROR_MORE_DATA ? 0 : failuresInARow_ + 1;
        return result != ERROR_NO_MORE_ITEMS;
    }

private:
    static constexpr int kMaxFailuresInARow = 16;
    unsigned& index_;
    int failuresInARow_ = 0;
};

/// Whether a key has no subkeys and no values. Any result other than "no more items" counts as content.
bool isEmpty(HKEY key) {
    char name[32];
    DWORD nameSize = sizeof name;
    if (RegEnumKeyA(key, 0, name, sizeof name) != ERROR_NO_MORE_ITEMS) return false;
    if (RegEnumValueA(key, 0, name, &nameSize, nullptr, nullptr, nullptr, nullptr) != ERROR_NO_MORE_ITEMS) return false;
    // On Windows 95 every key has an unnamed value, whether it is enumerated or not. A value that does not fit in the
    // buffer counts as content.
    char unnamed[32] = "";
    LONG unnamedSize = sizeof unnamed;
    return RegQueryValueA(key, nullptr, unnamed, &unnamedSize) == ERROR_SUCCESS && unnamed[0] == 0;
}

}  // namespace
}  // namespace tamrix

using namespace tamrix;

SExtensionMap::SExtensionMap()
    : index(0),
      extension(nullptr),
      type(nullptr),
      creator(nullptr),
      comment(nullptr),
      extensionSize(0),
      commentSize(0) {}

int TAMRIX_CALL AddExtMap(SExtensionMap* map) {
    if (!map->extension || !map->extension[0] || !isCode(map->type) || !isCode(map->creator)) return 0;
    KeyNameBuffer buffer;
    const char* name = extensionKeyName(map->extension, buffer);
    UniqueKey key = createKey(HKEY_CLASSES_ROOT, name);
    if (!key) return 0;
    if (map->comment) writeText(key.get(), kCommentValue, map->comment);
    if (writeText(key.get(), kTypeValue, map->type) && writeText(key.get(), kCreatorValue, map->creator)) return 1;
    key.reset();
    RemoveExtMap(map->extension);
    return 0;
}

int TAMRIX_CALL GetExtMap(SExtensionMap* map) {
    const UniqueKey key = openExtension(map->extension);
    if (!key) return 0;
    const bool isComplete = readCodes(key.get(), *map, kTypeValue, kCreatorValue);
    if (map->comment) readComment(key.get(), map->comment, map->commentSize ? map->commentSize : kCommentSize);
    return isComplete;
}

int TAMRIX_CALL EnumExtMap(SExtensionMap* map) {
    KeyNameBuffer name;
    CodeBuffer type;
    CodeBuffer creator;
    SExtensionMap found = *map;
    found.extension = name;
    if (!found.type) found.type = type;
    if (!found.creator) found.creator = creator;
    ClassKeys keys(map->index);
    while (keys.next(name)) {
        if (name[0] != '.' || !GetExtMap(&found)) continue;
        BufStrCpy(map->extension, name + 1, map->extensionSize ? map->extensionSize : kExtensionSize);
        return 1;
    }
    return 0;
}

int TAMRIX_CALL EnumExtMapCT(SExtensionMap* map) {
    if (!map->type || !map->creator) return 0;
    CodeBuffer type;
    CodeBuffer creator;
    SExtensionMap found = *map;
    found.type = type;
    found.creator = creator;
    bool isMatch = false;
    while (!isMatch && EnumExtMap(&found)) isMatch = isSameCode(type, map->type) && isSameCode(creator, map->creator);
    map->index = found.index;
    return isMatch;
}

void TAMRIX_CALL GetDefaultExtMap(SExtensionMap* map) {
    const UniqueKey key = openKey(HKEY_LOCAL_MACHINE, kSettingsPath);
    if (key && readCodes(key.get(), *map, kDefaultTypeValue, kDefaultCreatorValue)) return;
    dbcs_strcpy(map->type, kFallbackType);
    dbcs_strcpy(map->creator, kFallbackCreator);
}

int TAMRIX_CALL HasExtMap(char* extension) {
    CodeBuffer type;
    CodeBuffer creator;
    SExtensionMap map;
    map.extension = extension;
    map.type = type;
    map.creator = creator;
    return GetExtMap(&map);
}

int TAMRIX_CALL RemoveExtMap(char* extension) {
    UniqueKey key = openExtension(extension);
    if (!key) return 1;
    for (const char* valueName : {kTypeValue, kCreatorValue, kCommentValue}) RegDeleteValueA(key.get(), valueName);
    const bool isLeftEmpty = isEmpty(key.get());
    key.reset();
    KeyNameBuffer buffer;
    if (isLeftEmpty) RegDeleteKeyA(HKEY_CLASSES_ROOT, extensionKeyName(extension, buffer));
    return 1;
}
