// A registry for one test, and its whole content as text, which shows what was stored, deleted and not touched.
#pragma once

#include <strings.h>
#include <windows.h>

#include <map>
#include <string>
#include <vector>

namespace testing_support {

struct InAnyCase {
    bool operator()(const std::string& left, const std::string& right) const {
        return strcasecmp(left.c_str(), right.c_str()) < 0;
    }
};

/// Everything below some keys: an entry for each key ("CLASSES\.txt", with an empty text) and for each value
/// ("CLASSES\.txt|Mac Type", with the number of its type, a colon and its bytes). The case of names is kept, but
/// ignored in a search.
using RegistryText = std::map<std::string, std::string, InAnyCase>;

/// Deletes everything below HKEY_CLASSES_ROOT, HKEY_CURRENT_USER and HKEY_LOCAL_MACHINE. On Windows, the first call
/// redirects these to keys of this process, so that the user's registry is not changed. Processes that this one starts
/// use the same keys and delete nothing in them.
void emptyRegistry();

/// Stores bytes unchanged, in a key that is created if it is missing. The byte after them in memory is not zero,
/// because newer systems would add that zero to a string.
inline bool givenValue(HKEY root, const std::string& path, const std::string& name, DWORD type,
                       const std::string& bytes) {
    HKEY key = nullptr;
    if (RegCreateKeyA(root, path.c_str(), &key) != ERROR_SUCCESS) return false;
    const std::string guarded = bytes + "guard";
    const LONG result = RegSetValueExA(key, name.c_str(), 0, type, reinterpret_cast<const BYTE*>(guarded.data()),
                                       static_cast<DWORD>(bytes.size()));
    RegCloseKey(key);
    return result == ERROR_SUCCESS;
}

/// The names of a key's subkeys, in the registry's own order.
inline std::vector<std::string> subkeysOf(HKEY key) {
    std::vector<std::string> names;
    char name[256];
    for (DWORD i = 0; RegEnumKeyA(key, i, name, sizeof name) == ERROR_SUCCESS; ++i) names.emplace_back(name);
    return names;
}

inline void addText(RegistryText& text, HKEY key, const std::string& path) {
    static char name[16384], data[65536];
    DWORD nameSize = sizeof name, type = 0, size = sizeof data;
    for (DWORD i = 0;
         RegEnumValueA(key, i, name, &nameSize, nullptr, &type, reinterpret_cast<BYTE*>(data), &size) == ERROR_SUCCESS;
         ++i) {
        text[path + '|' + name] = std::to_string(type) + ':' + std::string(data, size);
        nameSize = sizeof name;
        size = sizeof data;
    }
    for (const std::string& subkey : subkeysOf(key)) {
        const std::string below = path + '\\' + subkey;
        HKEY child = nullptr;
        const bool isOpen = RegOpenKeyExA(key, subkey.c_str(), 0, KEY_READ, &child) == ERROR_SUCCESS;
        text[below] = isOpen ? "" : "can't be opened";
        if (isOpen) addText(text, child, below);
        RegCloseKey(child);
    }
}

/// The whole content of the three roots.
inline RegistryText registryText() {
    RegistryText text;
    addText(text, HKEY_CLASSES_ROOT, "CLASSES");
    addText(text, HKEY_CURRENT_USER, "USER");
    addText(text, HKEY_LOCAL_MACHINE, "MACHINE");
    return text;
}

}  // namespace testing_support
