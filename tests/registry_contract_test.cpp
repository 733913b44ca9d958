// What the library relies on in the platform's registry calls. Written against Win32 alone: the same source runs on the
// real registry and on the stand-in, in keys of its own that it makes and removes.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;

constexpr char kTestKey[] = "Software\\Tamrix Test";
constexpr REGSAM kAccess =
    KEY_QUERY_VALUE | KEY_SET_VALUE | KEY_CREATE_SUB_KEY | KEY_ENUMERATE_SUB_KEYS | KEY_NOTIFY | DELETE;

void removeTree(HKEY parent, const char* path) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(parent, path, 0, KEY_READ, &key) != ERROR_SUCCESS) return;
    char name[256];
    while (RegEnumKeyA(key, 0, name, sizeof name) == ERROR_SUCCESS) removeTree(key, name);
    RegCloseKey(key);
    RegDeleteKeyA(parent, path);
}

class RegistryContract : public testing::Test {
protected:
    void SetUp() override {
        removeTree(HKEY_CURRENT_USER, kTestKey);
        ASSERT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, kTestKey, &root), ERROR_SUCCESS);
    }

    void TearDown() override {
        for (HKEY key : opened) RegCloseKey(key);
        RegCloseKey(root);
        removeTree(HKEY_CURRENT_USER, kTestKey);
    }

    HKEY givenKey(const char* path) {
        HKEY key = nullptr;
        EXPECT_EQ(RegCreateKeyA(root, path, &key), ERROR_SUCCESS) << path;
        opened.push_back(key);
        return key;
    }

    void givenValue(HKEY key, const char* name, DWORD type, const std::string& data) {
        EXPECT_EQ(RegSetValueExA(key, name, 0, type, reinterpret_cast<const BYTE*>(data.data()),
                                 static_cast<DWORD>(data.size())),
                  ERROR_SUCCESS);
    }

    LONG open(const char* path, REGSAM access = kAccess) {
        HKEY key = nullptr;
        const LONG result = RegOpenKeyExA(root, path, 0, access, &key);
        if (result == ERROR_SUCCESS) opened.push_back(key);
        return result;
    }

    HKEY root = nullptr;
    std::vector<HKEY> opened;
};

std::vector<std::string> subkeysOf(HKEY key) {
    std::vector<std::string> names;
    char name[256];
    for (DWORD i = 0; RegEnumKeyA(key, i, name, sizeof name) == ERROR_SUCCESS; ++i) names.emplace_back(name);
    return names;
}

TEST_F(RegistryContract, PathsNameKeysWithoutRegardToCaseAndKeepIt) {
    HKEY key = nullptr;
    DWORD disposition = 0;
    char className[] = "key";
    const auto create = [&](const char* path) {
        const LONG result =
            RegCreateKeyExA(root, path, 0, className, REG_OPTION_NON_VOLATILE, kAccess, nullptr, &key, &disposition);
        opened.push_back(key);
        return result;
    };
    EXPECT_EQ(create("Outer\\Inner"), ERROR_SUCCESS);
    EXPECT_EQ(disposition, DWORD{REG_CREATED_NEW_KEY});
    EXPECT_EQ(create("oUTER\\iNNER"), ERROR_SUCCESS);
    EXPECT_EQ(disposition, DWORD{REG_OPENED_EXISTING_KEY});
    EXPECT_EQ(subkeysOf(root), std::vector<std::string>{"Outer"});

    EXPECT_EQ(open("OUTER"), ERROR_SUCCESS);
    EXPECT_EQ(open("outer\\inner"), ERROR_SUCCESS);
    EXPECT_EQ(open("outer\\inner\\"), ERROR_SUCCESS) << "a final backslash names the same key";
    EXPECT_EQ(open(""), ERROR_SUCCESS) << "an empty path is the key itself";
    EXPECT_EQ(open(nullptr), ERROR_SUCCESS) << "no path is the key itself";
    EXPECT_EQ(open("outer\\none"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(open("none\\inner"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(open("\\outer"), ERROR_BAD_PATHNAME);
}

TEST_F(RegistryContract, HandlesThatAreNoneOrClosedAreRefused) {
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyA(root, "Closed", &key), ERROR_SUCCESS);
    EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
    for (const HKEY handle : {key, HKEY{nullptr}}) {
        HKEY result = nullptr;
        char name[16];
        DWORD nameSize = sizeof name;
        EXPECT_EQ(RegCloseKey(handle), ERROR_INVALID_HANDLE);
        EXPECT_EQ(RegOpenKeyExA(handle, "x", 0, kAccess, &result), ERROR_INVALID_HANDLE);
        EXPECT_EQ(RegCreateKeyA(handle, "x", &result), ERROR_INVALID_HANDLE);
        EXPECT_EQ(RegEnumKeyA(handle, 0, name, sizeof name), ERROR_INVALID_HANDLE);
        EXPECT_EQ(RegEnumValueA(handle, 0, name, &nameSize, nullptr, nullptr, nullptr, nullptr), ERROR_INVALID_HANDLE);
        EXPECT_EQ(RegSetValueExA(handle, "x", 0, REG_SZ, nullptr, 0), ERROR_INVALID_HANDLE);
        EXPECT_EQ(RegDeleteKeyA(handle, "x"), ERROR_INVALID_HANDLE);
    }
    EXPECT_EQ(RegCloseKey(HKEY_CLASSES_ROOT), ERROR_SUCCESS) << "a predefined key may be closed and stays";
    EXPECT_EQ(RegOpenKeyExA(HKEY_CLASSES_ROOT, "", 0, KEY_READ, &key), ERROR_SUCCESS);
    opened.push_back(key);
}

TEST_F(RegistryContract, SubkeysComeInOrderOfTheirNamesAndFitOrSaySo) {
    for (const char* name : {".b", ".C", ".a", "longer name"}) givenKey(name);
    EXPECT_EQ(subkeysOf(root), (std::vector<std::string>{".a", ".b", ".C", "longer name"}));

    char name[12];
    DWORD size = 12;
    EXPECT_EQ(RegEnumKeyExA(root, 3, name, &size, nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
    EXPECT_STREQ(name, "longer name");
    EXPECT_EQ(size, 11u) << "going in the size counts the terminator, coming out it doesn't";
    size = 11;
    EXPECT_EQ(RegEnumKeyExA(root, 3, name, &size, nullptr, nullptr, nullptr, nullptr), ERROR_MORE_DATA);
    EXPECT_EQ(RegEnumKeyA(root, 3, name, 11), ERROR_MORE_DATA);
    EXPECT_EQ(RegEnumKeyA(root, 4, name, 12), ERROR_NO_MORE_ITEMS);

    const std::string longest(255, 'k');
    givenKey(longest.c_str());
    char wide[256];
    EXPECT_EQ(RegEnumKeyA(root, 3, wide, sizeof wide), ERROR_SUCCESS);
    EXPECT_EQ(wide, longest);
    HKEY key = nullptr;
    EXPECT_EQ(RegCreateKeyA(root, std::string(257, 'k').c_str(), &key), ERROR_INVALID_PARAMETER);
}

TEST_F(RegistryContract, DataComesBackAsStored) {
    struct {
        DWORD type;
        std::string data;
        const char* reason;
    } rows[] = {
        {REG_SZ, "TEXT\0"s, "a terminated string"},
        {REG_SZ, "a\0b\0"s, "a string with a zero inside"},
        {REG_BINARY, "\0\xFF\x80"s, "bytes that are no text"},
        {REG_BINARY, "", "no bytes"},
        {REG_DWORD, "\x2A\0\0\0"s, "a number"},
        {REG_DWORD, "\x2A", "a number of one byte"},
        {REG_NONE, "xy", "no type"},
        {0x1234, "odd", "a type that nobody defines"},
    };
    for (const auto& row : rows) {
        givenValue(root, "Mixed Case", row.type, "an older and longer value");
        givenValue(root, "mIXED cASE", row.type, row.data);
        std::vector<char> data(row.data.size());
        DWORD type = ~0u, size = 0;
        EXPECT_EQ(RegQueryValueExA(root, "MIXED CASE", nullptr, &type, nullptr, &size), ERROR_SUCCESS) << row.reason;
        EXPECT_EQ(type, row.type) << row.reason;
        ASSERT_EQ(size, row.data.size()) << row.reason;
        BYTE none = 0;
        BYTE* target = data.empty() ? &none : reinterpret_cast<BYTE*>(data.data());
        EXPECT_EQ(RegQueryValueExA(root, "MIXED CASE", nullptr, nullptr, target, &size), ERROR_SUCCESS) << row.reason;
        EXPECT_EQ(std::string(data.data(), data.size()), row.data) << row.reason;
        if (size < 2) continue;
        size -= 1;
        EXPECT_EQ(RegQueryValueExA(root, "MIXED CASE", nullptr, nullptr, target, &size), ERROR_MORE_DATA) << row.reason;
        EXPECT_EQ(size, row.data.size()) << "the size that is needed, for " << row.reason;
    }
    DWORD size = 0;
    EXPECT_EQ(RegQueryValueExA(root, "none", nullptr, nullptr, nullptr, &size), ERROR_FILE_NOT_FOUND);
    BYTE byte = 0;
    EXPECT_EQ(RegQueryValueExA(root, "Mixed Case", nullptr, nullptr, &byte, nullptr), ERROR_INVALID_PARAMETER);
}

// Newer systems add the terminator when the byte behind the data is zero, so something else stands there.
TEST_F(RegistryContract, AStringStoredWithoutItsTerminatorStaysSo) {
    const BYTE text[] = {'a', 'b', 'c', 'X'};
    ASSERT_EQ(RegSetValueExA(root, "Open", 0, REG_SZ, text, 3), ERROR_SUCCESS);
    BYTE data[3];
    DWORD size = sizeof data;
    EXPECT_EQ(RegQueryValueExA(root, "Open", nullptr, nullptr, data, &size), ERROR_SUCCESS);
    EXPECT_EQ(size, 3u);
    EXPECT_EQ(std::memcmp(data, "abc", 3), 0);
}

TEST_F(RegistryContract, ValuesAreEnumeratedUntilNoneIsLeft) {
    givenValue(root, "Beta", REG_SZ, "two\0"s);
    givenValue(root, nullptr, REG_SZ, "unnamed\0"s);
    givenValue(root, "Alpha", REG_DWORD, "\1\0\0\0"s);
    std::set<std::string> names;
    char name[8];
    for (DWORD index = 0; index < 3; ++index) {
        DWORD nameSize = sizeof name, type = 0, dataSize = 0;
        ASSERT_EQ(RegEnumValueA(root, index, name, &nameSize, nullptr, &type, nullptr, &dataSize), ERROR_SUCCESS);
        EXPECT_EQ(nameSize, std::strlen(name));
        names.insert(name);
        BYTE data[8];
        DWORD small = 3;
        nameSize = sizeof name;
        EXPECT_EQ(RegEnumValueA(root, index, name, &nameSize, nullptr, nullptr, data, &small), ERROR_MORE_DATA);
        EXPECT_EQ(small, dataSize);
        nameSize = static_cast<DWORD>(std::strlen(name));
        if (nameSize == 0) continue;
        EXPECT_EQ(RegEnumValueA(root, index, name, &nameSize, nullptr, nullptr, nullptr, nullptr), ERROR_MORE_DATA);
    }
    EXPECT_EQ(names, (std::set<std::string>{"", "Alpha", "Beta"}));
    DWORD nameSize = sizeof name;
    EXPECT_EQ(RegEnumValueA(root, 3, name, &nameSize, nullptr, nullptr, nullptr, nullptr), ERROR_NO_MORE_ITEMS);

    EXPECT_EQ(RegDeleteValueA(root, "ALPHA"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteValueA(root, "ALPHA"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegDeleteValueA(root, nullptr), ERROR_SUCCESS);
    nameSize = sizeof name;
    EXPECT_EQ(RegEnumValueA(root, 1, name, &nameSize, nullptr, nullptr, nullptr, nullptr), ERROR_NO_MORE_ITEMS);
}

TEST_F(RegistryContract, TheUnnamedValueReadsAsEmptyWhenThereIsNone) {
    givenKey("Sub");
    char text[8] = "before";
    LONG size = sizeof text;
    EXPECT_EQ(RegQueryValueA(root, "Sub", text, &size), ERROR_SUCCESS);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(size, 1);
    givenValue(givenKey("Sub"), "", REG_SZ, "txtfile\0"s);
    size = sizeof text;
    EXPECT_EQ(RegQueryValueA(root, "Sub", text, &size), ERROR_SUCCESS);
    EXPECT_STREQ(text, "txtfile");
    size = 7;
    EXPECT_EQ(RegQueryValueA(root, "Sub", text, &size), ERROR_MORE_DATA);
    EXPECT_EQ(size, 8);
    EXPECT_EQ(RegQueryValueA(root, "None", text, &size), ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryContract, AHandleAllowsWhatItWasOpenedFor) {
    givenValue(givenKey("Sub\\Below"), "v", REG_SZ, "x\0"s);
    const auto resultsWith = [&](REGSAM access) {
        HKEY key = nullptr;
        EXPECT_EQ(RegOpenKeyExA(root, "Sub", 0, access, &key), ERROR_SUCCESS);
        opened.push_back(key);
        char name[16];
        DWORD size = sizeof name;
        std::vector<LONG> results{RegEnumKeyA(key, 0, name, sizeof name),
                                  RegEnumValueA(key, 9, name, &size, nullptr, nullptr, nullptr, nullptr),
                                  RegSetValueExA(key, "w", 0, REG_SZ, nullptr, 0)};
        return results;
    };
    constexpr LONG kDenied = ERROR_ACCESS_DENIED, kEnd = ERROR_NO_MORE_ITEMS;
    EXPECT_EQ(resultsWith(kAccess), (std::vector<LONG>{0, kEnd, 0}));
    EXPECT_EQ(resultsWith(KEY_READ), (std::vector<LONG>{0, kEnd, kDenied}));
    EXPECT_EQ(resultsWith(KEY_SET_VALUE), (std::vector<LONG>{kDenied, kDenied, 0}));
    EXPECT_EQ(resultsWith(KEY_ENUMERATE_SUB_KEYS), (std::vector<LONG>{0, kDenied, kDenied}));
}

TEST_F(RegistryContract, DeletingTakesLeavesOnlyAndStrandsOpenHandles) {
    const HKEY inner = givenKey("Outer\\Inner");
    EXPECT_EQ(RegDeleteKeyA(root, "Outer"), ERROR_ACCESS_DENIED) << "it has a subkey";
    EXPECT_EQ(RegDeleteKeyA(root, "Outer\\None"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegDeleteKeyA(root, "outer\\inner"), ERROR_SUCCESS);
    char name[16];
    HKEY key = nullptr;
    EXPECT_EQ(RegEnumKeyA(inner, 0, name, sizeof name), ERROR_KEY_DELETED);
    EXPECT_EQ(RegSetValueExA(inner, "v", 0, REG_SZ, nullptr, 0), ERROR_KEY_DELETED);
    EXPECT_EQ(RegQueryValueExA(inner, "v", nullptr, nullptr, nullptr, nullptr), ERROR_KEY_DELETED);
    EXPECT_EQ(RegCreateKeyA(inner, "x", &key), ERROR_KEY_DELETED);
    EXPECT_EQ(open("Outer\\Inner"), ERROR_FILE_NOT_FOUND);
    givenKey("Outer\\Inner");
    EXPECT_EQ(RegEnumKeyA(inner, 0, name, sizeof name), ERROR_KEY_DELETED) << "a new key of the name is another key";
    EXPECT_EQ(RegDeleteKeyA(root, "Outer\\Inner"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteKeyA(root, "Outer"), ERROR_SUCCESS);
}

// Insertions and deletions in any order keep the enumeration sorted and complete.
TEST_F(RegistryContract, EnumerationFollowsRandomChanges) {
    std::mt19937 random(7);
    std::set<std::string> model;
    for (int step = 0; step < 400; ++step) {
        const std::string name = ".k" + std::to_string(random() % 60);
        if (random() % 3 != 0) {
            HKEY key = nullptr;
            ASSERT_EQ(RegCreateKeyA(root, name.c_str(), &key), ERROR_SUCCESS);
            RegCloseKey(key);
            model.insert(name);
        } else {
            EXPECT_EQ(RegDeleteKeyA(root, name.c_str()), model.erase(name) ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND);
        }
    }
    EXPECT_EQ(subkeysOf(root), std::vector<std::string>(model.begin(), model.end()));
}

}  // namespace
