// What the library relies on in the platform's registry calls. Written against Win32 alone: the same source runs on the
// real registry and on the stand-in.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <map>
#include <random>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "registry_home.h"

namespace {

using namespace std::string_literals;

constexpr REGSAM kAccess =
    KEY_QUERY_VALUE | KEY_SET_VALUE | KEY_CREATE_SUB_KEY | KEY_ENUMERATE_SUB_KEYS | KEY_NOTIFY | DELETE;

using RegistryContract = testing_support::RegistryHome;
using testing_support::givenValue;
using testing_support::subkeysOf;

TEST_F(RegistryContract, PathsNameKeysWithoutRegardToCaseAndKeepIt) {
    const std::pair<const char*, DWORD> creations[] = {{"Outer\\Inner", REG_CREATED_NEW_KEY},
                                                       {"oUTER\\iNNER", REG_OPENED_EXISTING_KEY}};
    for (const auto& [path, expected] : creations) {
        char className[] = "key";
        DWORD disposition = 0;
        HKEY key = nullptr;
        EXPECT_EQ(
            RegCreateKeyExA(home, path, 0, className, REG_OPTION_NON_VOLATILE, kAccess, nullptr, &key, &disposition),
            ERROR_SUCCESS);
        opened.push_back(key);
        EXPECT_EQ(disposition, expected) << path;
    }
    EXPECT_EQ(subkeysOf(home), std::vector<std::string>{"Outer"});
    for (const char* path : {"OUTER", "outer\\inner", "outer\\inner\\", "", static_cast<const char*>(nullptr)})
        EXPECT_EQ(open(path), ERROR_SUCCESS) << (path ? path : "no path: the key itself");
    EXPECT_EQ(open("outer\\none"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(open("none\\inner"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(open("\\outer"), ERROR_BAD_PATHNAME);
}

TEST_F(RegistryContract, HandlesThatAreNoneOrClosedAreRefused) {
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyA(home, "Closed", &key), ERROR_SUCCESS);
    EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
    for (const HKEY handle : {key, HKEY{nullptr}}) {
        HKEY result = nullptr;
        char name[16];
        DWORD size = sizeof name;
        for (const LONG code :
             {RegCloseKey(handle), RegOpenKeyExA(handle, "x", 0, kAccess, &result), RegCreateKeyA(handle, "x", &result),
              RegEnumKeyA(handle, 0, name, sizeof name), RegDeleteKeyA(handle, "x"),
              RegEnumValueA(handle, 0, name, &size, nullptr, nullptr, nullptr, nullptr),
              RegSetValueExA(handle, "x", 0, REG_SZ, nullptr, 0)})
            EXPECT_EQ(code, ERROR_INVALID_HANDLE);
    }
    EXPECT_EQ(RegCloseKey(HKEY_CLASSES_ROOT), ERROR_SUCCESS) << "a predefined key may be closed and stays";
    EXPECT_EQ(RegOpenKeyExA(HKEY_CLASSES_ROOT, "", 0, KEY_READ, &key), ERROR_SUCCESS);
    opened.push_back(key);
}

TEST_F(RegistryContract, SubkeyNamesFitOrSaySo) {
    givenKey("longer name");
    char name[256];
    DWORD size = 12;
    EXPECT_EQ(RegEnumKeyExA(home, 0, name, &size, nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
    EXPECT_STREQ(name, "longer name");
    EXPECT_EQ(size, 11u) << "going in the size counts the terminator, coming out it doesn't";
    EXPECT_EQ(RegEnumKeyExA(home, 0, name, &size, nullptr, nullptr, nullptr, nullptr), ERROR_MORE_DATA);
    EXPECT_EQ(RegEnumKeyA(home, 0, name, 11), ERROR_MORE_DATA);
    EXPECT_EQ(RegEnumKeyA(home, 1, name, 12), ERROR_NO_MORE_ITEMS);

    const std::string longest(255, 'k');
    givenKey(longest);
    EXPECT_EQ(RegEnumKeyA(home, 0, name, sizeof name), ERROR_SUCCESS);
    EXPECT_EQ(name, longest);
    HKEY key = nullptr;
    EXPECT_EQ(RegCreateKeyA(home, std::string(257, 'k').c_str(), &key), ERROR_INVALID_PARAMETER);
}

TEST_F(RegistryContract, DataComesBackAsStored) {
    const struct {
        const char* reason;
        DWORD type;
        std::string data;
    } rows[] = {
        {"a string with a zero inside", REG_SZ, "a\0b\0"s},
        {"a string without its terminator", REG_SZ, "abc"},
        {"no bytes", REG_BINARY, ""},
        {"a number of one byte", REG_DWORD, "\x2A"},
        {"no type", REG_NONE, "xy"},
        {"a type that nobody defines", 0x1234, "\0\xFF\x80"s},
    };
    BYTE data[8] = {};
    DWORD type = ~0u, size = 0;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        givenValue(home, "Mixed Case", row.type, "an older and longer value");
        givenValue(home, "mIXED cASE", row.type, row.data);
        EXPECT_EQ(RegQueryValueExA(home, "MIXED CASE", nullptr, &type, nullptr, &size), ERROR_SUCCESS);
        EXPECT_EQ(type, row.type);
        ASSERT_EQ(size, row.data.size());
        EXPECT_EQ(RegQueryValueExA(home, "MIXED CASE", nullptr, nullptr, data, &size), ERROR_SUCCESS);
        EXPECT_EQ(std::string(reinterpret_cast<char*>(data), size), row.data);
        if (size < 2) continue;
        size -= 1;
        EXPECT_EQ(RegQueryValueExA(home, "MIXED CASE", nullptr, nullptr, data, &size), ERROR_MORE_DATA);
        EXPECT_EQ(size, row.data.size()) << "the size that is needed";
    }
    EXPECT_EQ(RegQueryValueExA(home, "none", nullptr, nullptr, nullptr, &size), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegQueryValueExA(home, "Mixed Case", nullptr, nullptr, data, nullptr), ERROR_INVALID_PARAMETER);
}

TEST_F(RegistryContract, ValuesAreEnumeratedUntilNoneIsLeft) {
    for (const char* name : {"Beta", "", "Alpha"}) givenValue(home, name, REG_SZ, "data\0"s);
    std::set<std::string> names;
    char name[6];
    BYTE data[5];
    const auto enumerate = [&](DWORD index, DWORD nameSize, DWORD dataSize) {
        const LONG result = RegEnumValueA(home, index, name, &nameSize, nullptr, nullptr, data, &dataSize);
        EXPECT_TRUE(result != ERROR_SUCCESS || nameSize == std::strlen(name)) << "without the terminator";
        return std::pair(result, dataSize);
    };
    for (DWORD index = 0; index < 3; ++index) {
        ASSERT_EQ(enumerate(index, 6, 5), std::pair(LONG{ERROR_SUCCESS}, DWORD{5}));
        names.insert(name);
        const auto length = static_cast<DWORD>(std::strlen(name));
        EXPECT_EQ(enumerate(index, 6, 4), std::pair(LONG{ERROR_MORE_DATA}, DWORD{5})) << "the size that is needed";
        EXPECT_EQ(length > 0 ? enumerate(index, length, 5).first : ERROR_MORE_DATA, ERROR_MORE_DATA);
    }
    EXPECT_EQ(names, (std::set<std::string>{"", "Alpha", "Beta"}));
    EXPECT_EQ(enumerate(3, 6, 5).first, ERROR_NO_MORE_ITEMS);
    EXPECT_EQ(RegDeleteValueA(home, "ALPHA"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteValueA(home, "ALPHA"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegDeleteValueA(home, nullptr), ERROR_SUCCESS);
    EXPECT_EQ(enumerate(1, 6, 5).first, ERROR_NO_MORE_ITEMS);
}

TEST_F(RegistryContract, TheUnnamedValueReadsAsEmptyWhenThereIsNone) {
    const HKEY sub = givenKey("Sub");
    const auto read = [this](const char* path, LONG size) {
        char text[8] = "before";
        const LONG result = RegQueryValueA(home, path, text, &size);
        return std::tuple(result, std::string(text), size);
    };
    EXPECT_EQ(read("Sub", 8), std::tuple(ERROR_SUCCESS, ""s, 1));
    givenValue(sub, "", REG_SZ, "txtfile\0"s);
    EXPECT_EQ(read("Sub", 8), std::tuple(ERROR_SUCCESS, "txtfile"s, 8));
    EXPECT_EQ(read("Sub", 7), std::tuple(ERROR_MORE_DATA, "before"s, 8));
    EXPECT_EQ(std::get<0>(read("None", 8)), ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryContract, AHandleAllowsWhatItWasOpenedFor) {
    givenKey("Sub\\Below");
    const struct {
        REGSAM access;
        bool subkeys, values, writing;
    } rows[] = {{kAccess, true, true, true},
                {KEY_READ, true, true, false},
                {KEY_SET_VALUE, false, false, true},
                {KEY_ENUMERATE_SUB_KEYS, true, false, false}};
    for (const auto& row : rows) {
        ASSERT_EQ(open("Sub", row.access), ERROR_SUCCESS);
        const HKEY key = opened.back();
        char name[16];
        DWORD size = sizeof name;
        const auto allowed = [](bool right, LONG result) { return right ? result : LONG{ERROR_ACCESS_DENIED}; };
        EXPECT_EQ(RegEnumKeyA(key, 0, name, sizeof name), allowed(row.subkeys, ERROR_SUCCESS));
        EXPECT_EQ(RegEnumValueA(key, 9, name, &size, nullptr, nullptr, nullptr, nullptr),
                  allowed(row.values, ERROR_NO_MORE_ITEMS));
        EXPECT_EQ(RegSetValueExA(key, "w", 0, REG_SZ, nullptr, 0), allowed(row.writing, ERROR_SUCCESS));
    }
}

TEST_F(RegistryContract, DeletingTakesLeavesOnlyAndStrandsOpenHandles) {
    const HKEY inner = givenKey("Outer\\Inner");
    EXPECT_EQ(RegDeleteKeyA(home, "Outer"), ERROR_ACCESS_DENIED) << "it has a subkey";
    EXPECT_EQ(RegDeleteKeyA(home, "Outer\\None"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegDeleteKeyA(home, "outer\\inner"), ERROR_SUCCESS);
    EXPECT_EQ(open("Outer\\Inner"), ERROR_FILE_NOT_FOUND);
    givenKey("Outer\\Inner");  // a new key of the name is another key
    char name[16];
    HKEY key = nullptr;
    for (const LONG code :
         {RegEnumKeyA(inner, 0, name, sizeof name), RegSetValueExA(inner, "v", 0, REG_SZ, nullptr, 0),
          RegQueryValueExA(inner, "v", nullptr, nullptr, nullptr, nullptr), RegCreateKeyA(inner, "x", &key)})
        EXPECT_EQ(code, ERROR_KEY_DELETED);
    EXPECT_EQ(RegDeleteKeyA(home, "Outer\\Inner"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteKeyA(home, "Outer"), ERROR_SUCCESS);
}

// Insertions and deletions in any order keep the enumeration sorted, without regard to case, and complete, and hide no
// key that stands beside them.
TEST_F(RegistryContract, EnumerationAndOpeningFollowRandomChanges) {
    std::mt19937 random(7);
    std::map<std::string, std::string> model;  // by the name in small letters
    for (int step = 0; step < 2000; ++step) {
        const std::string rest = std::to_string(random() % 180), small = ".k" + rest;
        const std::string name = random() % 2 ? small : ".K" + rest;
        HKEY key = nullptr;
        if (random() % 3 != 0) {
            ASSERT_EQ(RegCreateKeyA(home, name.c_str(), &key), ERROR_SUCCESS);
            RegCloseKey(key);
            model.emplace(small, name);
        } else {
            EXPECT_EQ(RegDeleteKeyA(home, name.c_str()), model.erase(small) ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND);
        }
        for (int i = 0; i < 180 && step % 40 == 0; ++i) {
            const std::string any = ".K" + std::to_string(i);
            const bool isThere = RegOpenKeyExA(home, any.c_str(), 0, kAccess, &key) == ERROR_SUCCESS;
            ASSERT_EQ(isThere, model.contains(".k" + std::to_string(i))) << any << " after step " << step;
            if (isThere) RegCloseKey(key);
        }
    }
    std::vector<std::string> names;
    for (const auto& [small, name] : model) names.push_back(name);
    EXPECT_EQ(subkeysOf(home), names);
}

}  // namespace
