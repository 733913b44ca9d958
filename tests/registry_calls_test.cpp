// What the library expects of the platform's registry calls. This suite calls only Win32, so that the same source tests
// the real registry and the stand-in.
#include <gmock/gmock.h>

#include "registry_text.h"

namespace {

using namespace std::string_literals;
using testing_support::givenValue;
using testing_support::RegistryText;
using testing_support::registryText;

/// An open key, closed at the end.
struct Opened {
    explicit Opened(const char* path, REGSAM access = KEY_ALL_ACCESS)
        : result(RegOpenKeyExA(HKEY_CURRENT_USER, path, 0, access, &key)) {}
    ~Opened() { RegCloseKey(key); }
    Opened(const Opened&) = delete;
    HKEY key = nullptr;
    LONG result;
};

LONG created(const std::string& path) {
    HKEY key = nullptr;
    const LONG result = RegCreateKeyA(HKEY_CURRENT_USER, path.c_str(), &key);
    RegCloseKey(key);
    return result;
}

/// The result of each call that needs an open key.
std::vector<LONG> callsOn(HKEY key) {
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

TEST(RegistryCalls, PathsNameKeysWithoutRegardToCaseAndKeysAreSorted) {
    testing_support::emptyRegistry();
    const std::string longest(255, 'k');
    for (const std::string& path : {"q\\Inner"s, "B"s, longest, "a"s, "Z"s, "C"s, "Q\\iNNER"s})
        EXPECT_EQ(created(path), ERROR_SUCCESS) << path;
    EXPECT_EQ(RegDeleteKeyA(HKEY_CURRENT_USER, "c"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteKeyA(HKEY_CURRENT_USER, "Q"), ERROR_ACCESS_DENIED) << "it has a subkey";
    EXPECT_EQ(created(longest + "kk"), ERROR_INVALID_PARAMETER);
    EXPECT_THAT(testing_support::subkeysOf(HKEY_CURRENT_USER), testing::ElementsAre("a", "B", longest, "q", "Z"));
    for (const char* path : {"b", "z", "Q\\inner", "q\\INNER\\", "", static_cast<const char*>(nullptr)})
        EXPECT_EQ(Opened(path).result, ERROR_SUCCESS) << (path ? path : "no path: the key itself");
    for (const char* path : {"q\\none", "none\\inner", "C"}) EXPECT_EQ(Opened(path).result, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(Opened("\\q").result, ERROR_BAD_PATHNAME);
}

TEST(RegistryCalls, AHandleAllowsWhatItWasOpenedForWhileItsKeyIsThere) {
    testing_support::emptyRegistry();
    created("k");
    const std::vector<LONG> all = {ERROR_NO_MORE_ITEMS,  ERROR_NO_MORE_ITEMS,  ERROR_FILE_NOT_FOUND, ERROR_SUCCESS,
                                   ERROR_FILE_NOT_FOUND, ERROR_FILE_NOT_FOUND, ERROR_FILE_NOT_FOUND};
    for (const auto& [access, denied] : {std::pair<REGSAM, std::vector<std::size_t>>(0x1001F, {}),
                                         {KEY_READ, {3, 4}},
                                         {KEY_SET_VALUE, {0, 1, 2}},
                                         {KEY_QUERY_VALUE, {0, 3, 4}},
                                         {KEY_ENUMERATE_SUB_KEYS, {1, 2, 3, 4}}}) {
        std::vector<LONG> expected = all;
        for (const std::size_t call : denied) expected[call] = ERROR_ACCESS_DENIED;
        EXPECT_EQ(callsOn(Opened("k", access).key), expected) << access;
    }
    const Opened old("k");
    EXPECT_EQ(RegDeleteKeyA(HKEY_CURRENT_USER, "K"), ERROR_SUCCESS);
    created("k");  // a new key with the same name is another key
    EXPECT_THAT(callsOn(old.key), testing::Each(ERROR_KEY_DELETED));
    const HKEY closed = Opened("k").key;
    for (const HKEY handle : {closed, HKEY{nullptr}}) {
        EXPECT_THAT(callsOn(handle), testing::Each(ERROR_INVALID_HANDLE));
        EXPECT_EQ(RegCloseKey(handle), ERROR_INVALID_HANDLE);
    }
    EXPECT_EQ(RegCloseKey(HKEY_CURRENT_USER), ERROR_SUCCESS) << "a predefined key may be closed and stays";
    EXPECT_EQ(Opened("").result, ERROR_SUCCESS);
}

// The property of the registry classes shows which names and data fit.
TEST(RegistryCalls, SizesAreReturnedAndNamesOfValuesKeepTheirCase) {
    testing_support::emptyRegistry();
    givenValue(HKEY_CURRENT_USER, "k", "Mixed Case", REG_SZ, "older and longer");
    givenValue(HKEY_CURRENT_USER, "k", "mIXED cASE", 0x1234, "\0\xFF\x80"s);
    EXPECT_EQ(registryText(), (RegistryText{{"USER\\k", ""}, {"USER\\k|Mixed Case", "4660:\0\xFF\x80"s}}));
    const Opened k("k");
    BYTE bytes[2];
    char name[11];
    DWORD queried = 2, enumerated = 2, nameSize = 11, keySize = 11, classSize = 2;
    EXPECT_EQ(RegQueryValueExA(k.key, "MIXED CASE", nullptr, nullptr, bytes, &queried), ERROR_MORE_DATA);
    EXPECT_EQ(RegEnumValueA(k.key, 0, name, &nameSize, nullptr, nullptr, bytes, &enumerated), ERROR_MORE_DATA);
    EXPECT_TRUE(queried == 3 && enumerated == 3) << "the size that is needed";
    char text[5];
    EXPECT_EQ(RegEnumKeyExA(HKEY_CURRENT_USER, 0, name, &keySize, nullptr, text, &classSize, nullptr), ERROR_SUCCESS);
    EXPECT_TRUE(keySize == 1 && name == "k"s && classSize == 0) << "the sizes without the terminator";
    LONG size = 1;
    EXPECT_EQ(RegQueryValueA(HKEY_CURRENT_USER, "K", text, &size), ERROR_SUCCESS) << "empty where there is none";
    EXPECT_TRUE(size == 1 && !*text);
    givenValue(HKEY_CURRENT_USER, "k", "", REG_SZ, "text\0"s);
    EXPECT_EQ(RegQueryValueA(HKEY_CURRENT_USER, "K", text, &size), ERROR_MORE_DATA);
    EXPECT_EQ(RegQueryValueA(HKEY_CURRENT_USER, "K", text, &size), ERROR_SUCCESS);
    EXPECT_STREQ(text, "text");
}

}  // namespace
