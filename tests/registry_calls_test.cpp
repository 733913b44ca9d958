// What the library relies on in the platform's registry calls, written against Win32 alone: the same source holds the
// real registry and the stand-in to it.
#include <gmock/gmock.h>

#include <cstring>
#include <random>

#include "registry_text.h"

namespace {

using namespace std::string_literals;
using testing_support::givenValue;
using testing_support::RegistryText;
using testing_support::registryText;

class RegistryCalls : public testing::Test {
protected:
    RegistryCalls() { testing_support::emptyRegistry(); }
    ~RegistryCalls() override {
        for (const HKEY key : opened) RegCloseKey(key);
    }
    LONG open(HKEY from, const char* path, REGSAM access = KEY_ALL_ACCESS) {
        HKEY key = nullptr;
        const LONG result = RegOpenKeyExA(from, path, 0, access, &key);
        if (result == ERROR_SUCCESS) opened.push_back(key);
        return result;
    }
    HKEY given(const std::string& path) {
        HKEY key = nullptr;
        EXPECT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, path.c_str(), &key), ERROR_SUCCESS);
        opened.push_back(key);
        return key;
    }
    /// What each call that needs an open key gives.
    static std::vector<LONG> callsOn(HKEY key) {
        HKEY result = nullptr;
        char name[16];
        DWORD size = sizeof name;
        return {RegEnumKeyA(key, 9, name, sizeof name),
                RegEnumValueA(key, 9, name, &size, nullptr, nullptr, nullptr, nullptr),
                RegQueryValueExA(key, "none", nullptr, nullptr, nullptr, nullptr),
                RegSetValueExA(key, "v", 0, REG_SZ, nullptr, 0),
                RegDeleteValueA(key, "none"),
                RegOpenKeyExA(key, "none", 0, KEY_READ, &result),
                RegDeleteKeyA(key, "none")};
    }

    const HKEY user = HKEY_CURRENT_USER;
    std::vector<HKEY> opened;  // until the test ends
};

TEST_F(RegistryCalls, PathsNameKeysWithoutRegardToCaseAndKeepIt) {
    for (const auto& [path, expected] :
         {std::pair("Outer\\Inner", REG_CREATED_NEW_KEY), {"oUTER\\iNNER", REG_OPENED_EXISTING_KEY}}) {
        DWORD disposition = 0;
        HKEY key = nullptr;
        char keyClass[] = "key";
        EXPECT_EQ(
            RegCreateKeyExA(user, path, 0, keyClass, REG_OPTION_NON_VOLATILE, KEY_READ, nullptr, &key, &disposition),
            ERROR_SUCCESS);
        opened.push_back(key);
        EXPECT_EQ(disposition, DWORD(expected)) << path;
    }
    EXPECT_EQ(registryText(), (RegistryText{{"USER\\Outer", ""}, {"USER\\Outer\\Inner", ""}}));
    for (const char* path : {"OUTER", "outer\\inner", "outer\\inner\\", "", static_cast<const char*>(nullptr)})
        EXPECT_EQ(open(user, path), ERROR_SUCCESS) << (path ? path : "no path: the key itself");
    for (const char* path : {"outer\\none", "none\\inner"}) EXPECT_EQ(open(user, path), ERROR_FILE_NOT_FOUND) << path;
    EXPECT_EQ(open(user, "\\outer"), ERROR_BAD_PATHNAME);
    HKEY key = nullptr;
    EXPECT_EQ(RegCreateKeyA(user, std::string(257, 'k').c_str(), &key), ERROR_INVALID_PARAMETER);
    given(std::string(255, 'k'));
}

TEST_F(RegistryCalls, AHandleAllowsWhatItWasOpenedForWhileItsKeyIsThere) {
    const std::vector<LONG> all = {ERROR_NO_MORE_ITEMS,  ERROR_NO_MORE_ITEMS,  ERROR_FILE_NOT_FOUND, ERROR_SUCCESS,
                                   ERROR_FILE_NOT_FOUND, ERROR_FILE_NOT_FOUND, ERROR_FILE_NOT_FOUND};
    const std::pair<REGSAM, std::vector<int>> rows[] = {{0x1001F, {1, 1, 1, 1, 1, 1, 1}},
                                                        {KEY_READ, {1, 1, 1, 0, 0, 1, 1}},
                                                        {KEY_SET_VALUE, {0, 0, 0, 1, 1, 1, 1}},
                                                        {KEY_QUERY_VALUE, {0, 1, 1, 0, 0, 1, 1}},
                                                        {KEY_ENUMERATE_SUB_KEYS, {1, 0, 0, 0, 0, 1, 1}}};
    given("Outer\\Inner");
    for (const auto& [access, allowed] : rows) {
        ASSERT_EQ(open(user, "Outer\\Inner", access), ERROR_SUCCESS);
        for (std::size_t i = 0; i < all.size(); ++i)
            EXPECT_EQ(callsOn(opened.back())[i], allowed[i] ? all[i] : LONG{ERROR_ACCESS_DENIED}) << access << ' ' << i;
    }
    EXPECT_EQ(RegDeleteKeyA(user, "Outer"), ERROR_ACCESS_DENIED) << "it has a subkey";
    EXPECT_EQ(RegDeleteKeyA(user, "outer\\INNER"), ERROR_SUCCESS);
    given("Outer\\Inner");  // a new key of the name is another key
    EXPECT_THAT(callsOn(opened[0]), testing::Each(ERROR_KEY_DELETED));
    HKEY closed = opened.back();
    opened.back() = nullptr;
    EXPECT_EQ(RegCloseKey(closed), ERROR_SUCCESS);
    for (const HKEY handle : {closed, HKEY{nullptr}}) {
        EXPECT_THAT(callsOn(handle), testing::Each(ERROR_INVALID_HANDLE));
        EXPECT_EQ(RegCloseKey(handle), ERROR_INVALID_HANDLE);
    }
    EXPECT_EQ(RegCloseKey(HKEY_CLASSES_ROOT), ERROR_SUCCESS) << "a predefined key may be closed and stays";
    EXPECT_EQ(open(HKEY_CLASSES_ROOT, ""), ERROR_SUCCESS);
}

TEST_F(RegistryCalls, DataComesBackAsStoredWhereItFits) {
    const HKEY key = given("k");
    for (const auto& [type, data] : {std::pair<DWORD, std::string>(REG_SZ, "a\0b\0"s),
                                     {REG_SZ, "abc"},
                                     {REG_BINARY, ""},
                                     {REG_DWORD, "\x2A"},
                                     {REG_NONE, "xy"},
                                     {0x1234, "\0\xFF\x80"s}}) {
        SCOPED_TRACE(type);
        givenValue(user, "k", "Mixed Case", REG_SZ, "older and longer");
        givenValue(user, "k", "mIXED cASE", type, data);
        EXPECT_EQ(registryText(),
                  (RegistryText{{"USER\\k", ""}, {"USER\\k|Mixed Case", std::to_string(type) + ':' + data}}));
        for (DWORD room = 0; room < 6; ++room) {
            BYTE bytes[6];
            char name[11];
            DWORD size = room, nameSize = 11, shortSize = 10, enumerated = room, found = 0;
            const LONG expected = room < data.size() ? ERROR_MORE_DATA : ERROR_SUCCESS;
            EXPECT_EQ(RegQueryValueExA(key, "MIXED CASE", nullptr, &found, bytes, &size), expected);
            EXPECT_EQ(RegEnumValueA(key, 0, name, &nameSize, nullptr, nullptr, bytes, &enumerated), expected);
            EXPECT_TRUE(found == type && size == data.size() && enumerated == size) << "the size that is needed";
            EXPECT_TRUE(expected || (std::string(name) == "Mixed Case" && nameSize == 10)) << "without the terminator";
            EXPECT_EQ(RegEnumValueA(key, 0, name, &shortSize, nullptr, nullptr, nullptr, nullptr), ERROR_MORE_DATA);
        }
    }
    EXPECT_EQ(RegDeleteValueA(key, "MIXED case"), ERROR_SUCCESS);
    for (const auto& [stored, text] : {std::pair(""s, "\0"s), {"txtfile\0"s, "txtfile\0"s}}) {
        if (!stored.empty()) givenValue(user, "k", "", REG_SZ, stored);
        char read[9] = "";
        for (LONG room = 7; room < 9; ++room) {
            LONG size = room;
            EXPECT_EQ(RegQueryValueA(user, "K", read, &size),
                      std::size_t(room) < text.size() ? ERROR_MORE_DATA : ERROR_SUCCESS);
            EXPECT_EQ(size, LONG(text.size())) << "a key without an unnamed value reads as empty";
        }
        EXPECT_STREQ(read, text.c_str());
    }
    EXPECT_EQ(RegDeleteValueA(key, nullptr), ERROR_SUCCESS);
    EXPECT_EQ(RegQueryValueExA(key, nullptr, nullptr, nullptr, nullptr, nullptr), ERROR_FILE_NOT_FOUND);
    LONG size = 0;
    EXPECT_EQ(RegQueryValueA(user, "none", nullptr, &size), ERROR_FILE_NOT_FOUND);
}

// Insertions and deletions in any order keep the enumeration sorted, without regard to case, and complete, and hide no
// key that is next to them.
TEST_F(RegistryCalls, EnumerationAndOpeningFollowRandomChanges) {
    std::mt19937 random(7);
    std::map<std::string, std::string> model;  // by the name in small letters
    for (int step = 0; step < 2000; ++step) {
        const std::string rest = std::to_string(random() % 180), small = ".k" + rest;
        const std::string name = random() % 2 ? small : ".K" + rest;
        HKEY key = nullptr;
        if (random() % 3 != 0) {
            ASSERT_EQ(RegCreateKeyA(user, name.c_str(), &key), ERROR_SUCCESS);
            RegCloseKey(key);
            model.emplace(small, name);
        } else {
            EXPECT_EQ(RegDeleteKeyA(user, name.c_str()), model.erase(small) ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND);
        }
        ASSERT_EQ(open(user, name.c_str()) == ERROR_SUCCESS, model.contains(small)) << name;
    }
    std::vector<std::string> names;
    for (const auto& [small, name] : model) names.push_back(name);
    EXPECT_EQ(testing_support::subkeysOf(user), names);
    char name[256];
    DWORD size = 256;
    EXPECT_EQ(RegEnumKeyExA(user, 0, name, &size, nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
    EXPECT_EQ(std::string(name), names[0]);
    EXPECT_EQ(size, names[0].size()) << "going in the size counts the terminator, coming out it doesn't";
    EXPECT_EQ(RegEnumKeyExA(user, 0, name, &size, nullptr, nullptr, nullptr, nullptr), ERROR_MORE_DATA);
    EXPECT_EQ(RegEnumKeyA(user, 0, name, size), ERROR_MORE_DATA);
    EXPECT_EQ(RegEnumKeyA(user, 0, name, size + 1), ERROR_SUCCESS);
}

}  // namespace
