// What the suites of anything kept in the registry share: Win32 calls that put keys and values there and read them
// back, and a key below the current user, which each test makes and removes.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace testing_support {

/// A value's type and bytes.
struct Stored {
    DWORD type;
    std::string bytes;
    bool operator==(const Stored&) const = default;
};

/// Stores bytes as they are; what is behind them is no zero, which newer systems would add to a string.
inline void givenValue(HKEY key, const char* name, DWORD type, std::string_view bytes) {
    const std::string guarded = std::string(bytes) + "guard";
    EXPECT_EQ(RegSetValueExA(key, name, 0, type, reinterpret_cast<const BYTE*>(guarded.data()),
                             static_cast<DWORD>(bytes.size())),
              ERROR_SUCCESS);
}

/// The same in the key at a path, which is made where it is missing.
inline void givenValue(HKEY root, const std::string& path, const char* name, DWORD type, std::string_view bytes) {
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyA(root, path.c_str(), &key), ERROR_SUCCESS) << path;
    givenValue(key, name, type, bytes);
    RegCloseKey(key);
}

inline std::optional<Stored> storedIn(HKEY root, const std::string& path, const char* name) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return {};
    char bytes[512];
    DWORD size = sizeof bytes, type = 0;
    const LONG result = RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<BYTE*>(bytes), &size);
    RegCloseKey(key);
    if (result != ERROR_SUCCESS) return {};
    return Stored{type, std::string(bytes, size)};
}

inline std::vector<std::string> subkeysOf(HKEY key) {
    std::vector<std::string> names;
    char name[300];
    for (DWORD i = 0; RegEnumKeyA(key, i, name, sizeof name) == ERROR_SUCCESS; ++i) names.emplace_back(name);
    return names;
}

class RegistryHome : public testing::Test {
protected:
    static constexpr char kHome[] = "Software\\Tamrix Test registry";

    RegistryHome() {
        removeTree(HKEY_CURRENT_USER, kHome);
        EXPECT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, kHome, &home), ERROR_SUCCESS);
    }
    ~RegistryHome() override {
        for (const HKEY key : opened) RegCloseKey(key);
        RegCloseKey(home);
        removeTree(HKEY_CURRENT_USER, kHome);
    }

    LONG open(const char* path, REGSAM access = KEY_ALL_ACCESS) {
        HKEY key = nullptr;
        const LONG result = RegOpenKeyExA(home, path, 0, access, &key);
        if (result == ERROR_SUCCESS) opened.push_back(key);
        return result;
    }
    HKEY givenKey(const std::string& path) {
        HKEY key = nullptr;
        EXPECT_EQ(RegCreateKeyA(home, path.c_str(), &key), ERROR_SUCCESS) << path;
        opened.push_back(key);
        return key;
    }
    static void removeTree(HKEY parent, const char* path) {
        HKEY key = nullptr;
        if (RegOpenKeyExA(parent, path, 0, KEY_READ, &key) != ERROR_SUCCESS) return;
        char name[256];
        while (RegEnumKeyA(key, 0, name, sizeof name) == ERROR_SUCCESS) removeTree(key, name);
        RegCloseKey(key);
        RegDeleteKeyA(parent, path);
    }

    HKEY home = nullptr;
    std::vector<HKEY> opened;  // until the test ends
};

}  // namespace testing_support
