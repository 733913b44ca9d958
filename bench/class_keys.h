// A class root like that of a large system, and an enumeration of its mappings that makes only the necessary registry
// calls. Of every ten keys, one is an extension with a mapping, one an extension without, one an extension with a long
// name, and seven are file classes.
#pragma once

#include <windows.h>

namespace class_keys {

inline const char* nameOf(char (&name)[64], int number) {
    switch (number % 10) {
        case 0:
            std::snprintf(name, sizeof name, ".tmx-m%05d", number);
            break;
        case 1:
            std::snprintf(name, sizeof name, ".tmx-x%05d", number);
            break;
        case 2:
            std::snprintf(name, sizeof name, ".tmx-long-extension%05d", number);
            break;
        default:
            std::snprintf(name, sizeof name, "tmx-class%05d.Document", number);
    }
    return name;
}

inline void setText(HKEY key, const char* name, const char* text, DWORD size) {
    RegSetValueExA(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text), size);
}

inline void fill(int count) {
    char name[64];
    for (int number = 0; number < count; ++number) {
        HKEY key;
        if (RegCreateKeyA(HKEY_CLASSES_ROOT, nameOf(name, number), &key) != ERROR_SUCCESS) continue;
        if (number % 10 == 0) {
            setText(key, "Mac Type", "TEXT", 5);
            setText(key, "Mac Creator", "ttxt", 5);
        }
        RegCloseKey(key);
    }
}

inline void clear(int count) {
    char name[64];
    for (int number = 0; number < count; ++number) RegDeleteKeyA(HKEY_CLASSES_ROOT, nameOf(name, number));
}

/// Reads type, creator and comment of every extension with a short name. Returns the number of types and creators read.
inline int barePass() {
    char name[17];
    char code[5];
    char comment[256];
    int count = 0;
    for (DWORD index = 0;; ++index) {
        const LONG result = RegEnumKeyA(HKEY_CLASSES_ROOT, index, name, sizeof name);
        if (result == ERROR_NO_MORE_ITEMS) return count;
        HKEY key;
        if (result != ERROR_SUCCESS || name[0] != '.') continue;
        if (RegOpenKeyExA(HKEY_CLASSES_ROOT, name, 0, 0x1001F, &key) != ERROR_SUCCESS) continue;
        DWORD type;
        DWORD size = sizeof code;
        count += RegQueryValueExA(key, "Mac Type", nullptr, &type, reinterpret_cast<BYTE*>(code), &size) == 0;
        size = sizeof code;
        count += RegQueryValueExA(key, "Mac Creator", nullptr, &type, reinterpret_cast<BYTE*>(code), &size) == 0;
        size = sizeof comment;
        RegQueryValueExA(key, "Mac Comment", nullptr, &type, reinterpret_cast<BYTE*>(comment), &size);
        RegCloseKey(key);
    }
}

/// A complete enumeration with all buffers. Returns the number of mappings.
template <typename Record, typename Enumerate>
int mappingPass(Enumerate enumerate) {
    char extension[16];
    char type[5];
    char creator[5];
    char comment[256];
    Record map{};
    map.extension = extension;
    map.type = type;
    map.creator = creator;
    map.comment = comment;
    int count = 0;
    while (enumerate(&map)) ++count;
    return count;
}

}  // namespace class_keys
