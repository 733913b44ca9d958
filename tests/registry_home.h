// What the suites of registry keys share: a key below the current user, which each test makes and removes, and Win32
// calls that put keys and values there.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

namespace testing_support {

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
    /// Stores bytes as they are; the one behind them is no zero, which newer systems would add to a string.
    static void givenValue(HKEY key, const char* name, DWORD type, std::string bytes) {
        const auto size = static_cast<DWORD>(bytes.size());
        bytes += '!';
        EXPECT_EQ(RegSetValueExA(key, name, 0, type, reinterpret_cast<const BYTE*>(bytes.data()), size), ERROR_SUCCESS);
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
