#include "registry_text.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr const char* kNames[] = {"Classes", "User", "Machine"};
const HKEY kRoots[] = {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE};

void removeBelow(HKEY key) {
    char name[256];
    while (RegEnumKeyA(key, 0, name, sizeof name) == ERROR_SUCCESS) {
        HKEY child = nullptr;
        if (RegOpenKeyExA(key, name, 0, KEY_ALL_ACCESS, &child) == ERROR_SUCCESS) removeBelow(child);
        RegCloseKey(child);
        if (RegDeleteKeyA(key, name) != ERROR_SUCCESS) break;
    }
    DWORD size = sizeof name;
    while (RegEnumValueA(key, 0, name, &size, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS) {
        RegDeleteValueA(key, name);
        size = sizeof name;
    }
}

/// Keys below the current user stand for the predefined ones while the process lives.
struct OwnRoots {
    const std::string home = "Software\\Tamrix Test roots " + std::to_string(GetCurrentProcessId());
    HKEY user = nullptr;
    HKEY keys[3] = {};

    OwnRoots() {
        bool own = RegOpenKeyExA(HKEY_CURRENT_USER, nullptr, 0, KEY_ALL_ACCESS, &user) == ERROR_SUCCESS;
        for (int i = 0; i < 3; ++i)
            own = own && RegCreateKeyA(user, (home + '\\' + kNames[i]).c_str(), &keys[i]) == ERROR_SUCCESS;
        for (int i = 0; i < 3; ++i) own = own && RegOverridePredefKey(kRoots[i], keys[i]) == ERROR_SUCCESS;
        if (own) return;
        std::fputs("no registry of the test's own\n", stderr);
        std::exit(1);  // rather than clear the real one
    }
    ~OwnRoots() {
        for (int i = 0; i < 3; ++i) {
            RegOverridePredefKey(kRoots[i], nullptr);
            removeBelow(keys[i]);
            RegCloseKey(keys[i]);
            RegDeleteKeyA(user, (home + '\\' + kNames[i]).c_str());
        }
        RegDeleteKeyA(user, home.c_str());
        RegCloseKey(user);
    }
};

}  // namespace

std::string testing_support::storable(std::string bytes) {
    wchar_t wide[512];
    char back[512];
    const int size = static_cast<int>(bytes.size());
    const int units = MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, wide, 512);
    const int backSize = WideCharToMultiByte(CP_ACP, 0, wide, units, back, 512, nullptr, nullptr);
    if (bytes != std::string(back, static_cast<std::size_t>(backSize)))
        std::replace_if(
            bytes.begin(), bytes.end(), [](char value) { return value < 0; }, 'x');
    return bytes;
}

void testing_support::emptyRegistry() {
    static const OwnRoots roots;
    for (const HKEY key : roots.keys) removeBelow(key);
}
