// RegKey and RegValue on the registry of the build: the platform's own under Wine, the stand-in's natively. Everything
// happens below one key of the current user, which each test makes and removes.
#include "tamrix32/registry.h"

#include <gmock/gmock.h>

#include <cstring>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;

constexpr char kHome[] = "Software\\Tamrix Test registry";

std::string inHome(const std::string& path) {
    return kHome + ("\\" + path);
}

void removeTree(HKEY parent, const std::string& path) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(parent, path.c_str(), 0, KEY_ENUMERATE_SUB_KEYS | DELETE, &key) != ERROR_SUCCESS) return;
    char name[300];
    while (RegEnumKeyA(key, 0, name, sizeof name) == ERROR_SUCCESS) removeTree(key, name);
    RegCloseKey(key);
    RegDeleteKeyA(parent, path.c_str());
}

class Registry : public testing::Test {
protected:
    Registry() {
        removeTree(HKEY_CURRENT_USER, kHome);
        EXPECT_EQ(key.Create(HKEY_CURRENT_USER, kHome), 1);
    }
    ~Registry() override { removeTree(HKEY_CURRENT_USER, kHome); }

    /// Stores bytes as they are; the one behind them is no zero, which some platforms would add to a string.
    void givenValue(const char* name, DWORD type, std::string bytes) {
        const auto size = static_cast<DWORD>(bytes.size());
        bytes += '!';
        ASSERT_EQ(RegSetValueExA(key.Handle(), name, 0, type, reinterpret_cast<const BYTE*>(bytes.data()), size),
                  ERROR_SUCCESS);
    }
    void givenKey(const std::string& path) { RegKey(HKEY_CURRENT_USER, inHome(path).c_str()); }
    bool isThere(const std::string& path) { return RegKey().Exists(HKEY_CURRENT_USER, inHome(path).c_str()) == 1; }

    /// The bytes that a value has in the registry.
    std::string stored(const char* name) {
        char bytes[300] = {};
        DWORD size = sizeof bytes;
        RegQueryValueExA(key.Handle(), name, nullptr, nullptr, reinterpret_cast<BYTE*>(bytes), &size);
        return {bytes, size};
    }

    RegKey key;
    RegValue value;
};

unsigned char* bytesOf(std::string& text) {
    return reinterpret_cast<unsigned char*>(text.data());
}

std::string dataOf(RegValue& value) {
    return {value.String(), value.DataLen()};
}

TEST(RegValue, ReadsSettingsAsYesOrNo) {
    const struct {
        RegValType type;
        std::string data;
        int expected;
    } rows[] = {
        {RegValString, "yes", 1},      {RegValString, "Y", 1},
        {RegValString, "t", 1},        {RegValString, "True", 1},
        {RegValString, "10", 1},       {RegValString, "on", 1},
        {RegValString, "oN", 1},       {RegValString, "one", 1},
        {RegValString, "no", 0},       {RegValString, "0", 0},
        {RegValString, "off", 0},      {RegValString, "o", 0},
        {RegValString, "", 0},         {RegValString, "false", 0},
        {RegValString, " yes", 0},     {RegValBinary, "\1", 1},
        {RegValBinary, "\0\1"s, 0},    {RegValBinary, "", 0},
        {RegValDword, "\0\0\0\0"s, 0}, {RegValDword, "\2\0\0\0"s, 1},
        {RegValDword, "\0\0\0\1"s, 1}, {RegValType(REG_EXPAND_SZ), "yes", 0},
    };
    for (auto row : rows) {
        RegValue value(row.type, "setting", bytesOf(row.data), static_cast<unsigned long>(row.data.size()));
        EXPECT_EQ(value.BoolValue(), row.expected) << row.type << " " << row.data;
    }
    EXPECT_EQ(RegValue().BoolValue(), 0);
}

TEST(RegValue, KeepsTheLargerLengthOfAString) {
    RegValue value;
    std::string text = "longer text";
    value.SetData(RegValString, bytesOf(text));
    EXPECT_EQ(value.DataLen(), 12u);
    text = "short";
    value.SetData(RegValString, bytesOf(text));
    EXPECT_EQ(dataOf(value), "short\0\0\0\0\0\0\0"s);
    value.SetData(RegValString, nullptr);
    EXPECT_EQ(dataOf(value), std::string(12, '\0'));
    value.SetDataLength(0);
    value.SetData(RegValString, nullptr);
    EXPECT_EQ(dataOf(value), "\0"s);
}

TEST(RegValue, KeepsDataOfThreeTypesOnly) {
    std::string bytes = "\x78\x56\x34\x12rest";
    RegValue value(RegValBinary, "name", bytesOf(bytes), 8);
    EXPECT_EQ(dataOf(value), bytes);
    EXPECT_NE(value.Buffer(), bytesOf(bytes));
    EXPECT_EQ(value.Value(), 0u);
    value.SetData(RegValDword, bytesOf(bytes));
    EXPECT_EQ(value.Value(), 0x12345678u);
    EXPECT_EQ(value.DataLen(), 8u);
    value.SetData(RegValType(REG_MULTI_SZ), bytesOf(bytes));
    EXPECT_EQ(value.Type(), REG_MULTI_SZ);
    EXPECT_EQ(value.Buffer(), nullptr);
    EXPECT_EQ(value.DataLen(), 8u);
    EXPECT_EQ(value.Value(), 0u);
    value.SetData(RegValBinary, nullptr);
    EXPECT_EQ(value.Buffer(), nullptr);
    EXPECT_EQ(value.DataLen(), 0u);
    EXPECT_EQ(value.BoolValue(), 0);
}

TEST(RegValue, BeginsWithNothing) {
    unsigned char number[] = {7, 0, 0, 0};
    RegValue none;
    RegValue unnamed(RegValDword, nullptr, number, 4);
    EXPECT_EQ(int(none.Type()), 0);
    EXPECT_EQ(none.DataLen(), 0u);
    EXPECT_EQ(none.String(), nullptr);
    for (RegValue* nameless : {&none, &unnamed}) {
        EXPECT_EQ(nameless->Name(), nullptr);
        EXPECT_EQ(nameless->NameLen(), 0u);
    }
}

TEST(RegValue, TakesPartsOfWhatItHolds) {
    std::string text = "whole text";
    RegValue value(RegValString, "whole name", bytesOf(text), 0);
    value.SetName(value.Name() + 6);
    value.SetData(RegValString, value.Buffer() + 6);
    EXPECT_STREQ(value.Name(), "name");
    EXPECT_EQ(value.NameLen(), 4u);
    EXPECT_STREQ(value.String(), "text");
    value.SetName(nullptr);
    EXPECT_EQ(value.Name(), nullptr);
    EXPECT_EQ(value.NameLen(), 0u);
}

// Data that the registry holds but no careful writer wrote.
TEST_F(Registry, ReadsNoFurtherThanTheRegistryWrote) {
    const struct {
        const char* reason;
        DWORD type;
        std::string stored;
        std::string expected;
        unsigned long number;
    } rows[] = {
        {"no byte at all", REG_SZ, "", "\0"s, 0},
        {"no terminator", REG_SZ, "abc", "abc\0"s, 0},
        {"largest, no terminator", REG_SZ, std::string(128, 'x'), std::string(128, 'x') + '\0', 0},
        {"largest, terminated", REG_SZ, std::string(127, 'x') + '\0', std::string(127, 'x') + '\0', 0},
        {"zero inside", REG_SZ, "ab\0cd\0"s, "ab\0\0\0\0"s, 0},
        {"empty bytes", REG_BINARY, "", "", 0},
        {"largest bytes", REG_BINARY, std::string(128, '\0'), std::string(128, '\0'), 0},
        {"number of one byte", REG_DWORD, "\7", "\7", 7},
        {"number of no byte", REG_DWORD, "", "", 0},
        {"number of more", REG_DWORD, "\1\2\0\0"s, "\1\2\0\0"s, 0x201},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        givenValue("larger", REG_BINARY, std::string(100, '\xEE'));
        ASSERT_EQ(key.ValueByName("larger", &value), 1);
        givenValue("odd", row.type, row.stored);
        ASSERT_EQ(key.ValueByName("odd", &value), 1);
        EXPECT_EQ(value.Type(), int(row.type));
        EXPECT_EQ(dataOf(value), row.expected);
        EXPECT_EQ(value.Value(), row.number);
        key.RemoveValue("larger");
        RegValue walked;
        ASSERT_EQ(key.FirstValue(&walked), 1);
        EXPECT_STREQ(walked.Name(), "odd");
        EXPECT_EQ(dataOf(walked), row.expected);
    }
}

TEST_F(Registry, ReadsValuesByName) {
    givenValue("Setting", REG_SZ, "on\0"s);
    givenValue("", REG_SZ, "unnamed\0"s);
    givenValue("Too large", REG_BINARY, std::string(129, 'x'));
    ASSERT_EQ(key.ValueByName("SETTING", &value), 1);
    EXPECT_STREQ(value.Name(), "SETTING") << "as asked for";
    EXPECT_EQ(value.DataLen(), 3u);
    for (const char* missing : {"Missing", "Too large"}) EXPECT_EQ(key.ValueByName(missing, &value), 0) << missing;
    EXPECT_STREQ(value.Name(), "SETTING") << "a failure changes nothing";
    EXPECT_STREQ(value.String(), "on");
    ASSERT_EQ(key.ValueByName(nullptr, &value), 1);
    EXPECT_EQ(value.Name(), nullptr);
    EXPECT_STREQ(value.String(), "unnamed");
    EXPECT_EQ(key.ValueByName("Setting", nullptr), 0);
}

TEST_F(Registry, WritesAndRemovesValues) {
    EXPECT_EQ(key.SetString("text", "hello"), 1);
    EXPECT_EQ(stored("text"), "hello\0"s);
    EXPECT_EQ(key.SetString("text", nullptr), 0);
    EXPECT_EQ(stored("text"), "hello\0"s);
    EXPECT_EQ(key.SetDword("number", 0x89ABCDEFul), 1);
    EXPECT_EQ(stored("number"), "\xEF\xCD\xAB\x89");
    ASSERT_EQ(key.ValueByName("number", &value), 1);
    EXPECT_EQ(value.Value(), 0x89ABCDEFu);
    EXPECT_EQ(key.RemoveValue("text"), 1);
    EXPECT_EQ(key.RemoveValue("text"), 0);
}

TEST_F(Registry, WalksAllValues) {
    const std::string longest(127, 'n');
    givenValue("a", REG_SZ, "text\0"s);
    givenValue("b", REG_EXPAND_SZ, "%TEMP%\0"s);
    givenValue(longest.c_str(), REG_DWORD, "\1\0\0\0"s);
    std::set<std::string> names;
    for (int more = key.FirstValue(&value); more; more = key.NextValue(&value)) {
        names.insert(value.Name());
        if (value.Name() != "b"s) continue;
        EXPECT_EQ(value.Type(), REG_EXPAND_SZ);
        EXPECT_EQ(value.String(), nullptr);
        EXPECT_EQ(value.DataLen(), 7u);
    }
    EXPECT_THAT(names, testing::ElementsAre("a", "b", longest));
    EXPECT_EQ(key.NextValue(&value), 0);
    EXPECT_EQ(key.FirstValue(nullptr), 0);
    EXPECT_EQ(key.NextValue(&value), 1) << "the walk began anew";
}

TEST_F(Registry, StopsAtAValueThatIsTooLargeAndStaysThere) {
    const struct {
        const char* reason;
        std::string name;
        std::size_t size;
    } rows[] = {{"data of 129 bytes", "large", 129}, {"name of 128 bytes", std::string(128, 'n'), 1}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        givenValue(row.name.c_str(), REG_BINARY, std::string(row.size, 'x'));
        value.SetName("kept");
        EXPECT_EQ(key.FirstValue(&value), 0);
        EXPECT_EQ(key.NextValue(&value), 0);
        EXPECT_STREQ(value.Name(), "kept");
        key.RemoveValue(row.name.c_str());
        givenValue("small", REG_SZ, "\0"s);
        EXPECT_EQ(key.NextValue(&value), 1) << "the position did not move";
        key.RemoveValue("small");
    }
}

TEST_F(Registry, OpensAndCreatesKeys) {
    RegKey other;
    EXPECT_EQ(other.Open(HKEY_CURRENT_USER, inHome("missing").c_str()), 0);
    EXPECT_EQ(other.Exists(HKEY_CURRENT_USER, inHome("missing").c_str()), 0);
    EXPECT_FALSE(isThere("missing"));
    EXPECT_EQ(other.Create(HKEY_CURRENT_USER, inHome("missing\\deep\\key").c_str()), 1);
    EXPECT_TRUE(isThere("missing\\deep"));
    EXPECT_EQ(other.Opened(), 1);
    EXPECT_EQ(other.Close(), 1);
    EXPECT_EQ(other.Close(), 1);
    EXPECT_EQ(other.Opened(), 0);
    EXPECT_EQ(other.Handle(), nullptr);
    EXPECT_EQ(other.Open(), 1) << "the description stays";
    EXPECT_EQ(other.Exists(), 1);
    EXPECT_EQ(other.Opened(), 0) << "closed whatever the answer";
    EXPECT_EQ(other.SetRelPath(inHome("new").c_str()), 1);
    EXPECT_EQ(other.Create(), 1);
    EXPECT_TRUE(isThere("new"));
}

TEST_F(Registry, FindsNoKeyUnderAnEmptyPath) {
    EXPECT_EQ(RegKey().Exists(), 0);
    EXPECT_EQ(key.Exists(HKEY_CURRENT_USER, ""), 0);
    EXPECT_EQ(key.Exists(HKEY_CURRENT_USER, nullptr), 0);
    EXPECT_EQ(key.Open(HKEY_CURRENT_USER, nullptr), 1) << "opens the ancestor";
}

TEST_F(Registry, ConstructsKeysInEveryState) {
    RegKey made(&key, "made");
    EXPECT_EQ(made.Opened(), 1);
    EXPECT_TRUE(isThere("made"));
    RegKey closed;
    for (auto* empty : {new RegKey(), new RegKey(HKEY_CURRENT_USER, nullptr), new RegKey(HKEY(nullptr), "made"),
                        new RegKey(static_cast<RegKey*>(nullptr), "made"), new RegKey(&closed, "made")}) {
        EXPECT_EQ(empty->Opened(), 0);
        EXPECT_EQ(empty->Open(), 0);
        delete empty;
    }
    HKEY raw = nullptr;
    ASSERT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, inHome("made").c_str(), 0, KEY_SET_VALUE, &raw), ERROR_SUCCESS);
    {
        RegKey wrapper(raw);
        EXPECT_EQ(wrapper.Opened(), 1);
        EXPECT_EQ(wrapper.Handle(), raw);
        EXPECT_EQ(wrapper.SetDword("n", 1), 1);
    }
    EXPECT_EQ(RegDeleteValueA(raw, "n"), ERROR_INVALID_HANDLE) << "the wrapper owned it";
}

TEST_F(Registry, KeepsAnOpenKeyOnItsOldPath) {
    givenKey("first");
    givenKey("second");
    RegKey moving(&key, "first");
    moving.SetRelPath("second");
    moving.SetAncestor(HKEY_CURRENT_USER);
    EXPECT_EQ(moving.SetDword("n", 1), 1);
    RegKey first(&key, "first");
    EXPECT_EQ(first.ValueByName("n", &value), 1);
    EXPECT_EQ(moving.Open(), 0) << "another ancestor has no such key";
    moving.SetAncestor(key.Handle());
    EXPECT_EQ(moving.Open(), 1);
    EXPECT_EQ(moving.ValueByName("n", &value), 0);
}

TEST_F(Registry, ForgetsWithoutClosing) {
    HKEY raw = nullptr;
    ASSERT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, kHome, 0, KEY_SET_VALUE, &raw), ERROR_SUCCESS);
    RegKey wrapper(raw);
    wrapper.Init();
    EXPECT_EQ(wrapper.Opened(), 0);
    EXPECT_EQ(wrapper.Handle(), nullptr);
    EXPECT_EQ(RegCloseKey(raw), ERROR_SUCCESS);
}

TEST_F(Registry, FailsWithoutAHandle) {
    key.Close();
    RegKey child;
    char name[128] = "kept";
    EXPECT_EQ(key.FirstValue(&value), 0);
    EXPECT_EQ(key.ValueByName("n", &value), 0);
    EXPECT_EQ(key.SetDword("n", 1), 0);
    EXPECT_EQ(key.SetString("n", "x"), 0);
    EXPECT_EQ(key.RemoveValue("n"), 0);
    EXPECT_EQ(key.FirstSubKey(&child), nullptr);
    EXPECT_EQ(key.FirstSubKey(name), 0);
    EXPECT_STREQ(name, "kept");
}

__attribute__((noinline, no_sanitize("null"))) int openedThrough(RegKey* asked) {
    return asked->Opened();
}

TEST_F(Registry, SaysThatNoKeyIsNotOpen) {
    EXPECT_EQ(openedThrough(nullptr), 0);
    EXPECT_EQ(openedThrough(&key), 1);
}

TEST_F(Registry, WalksSubkeysInTwoFormsOnOnePosition) {
    const std::string longest(127, 'z');
    for (const auto& name : {"alpha"s, "beta"s, longest}) givenKey(name);
    RegKey child;
    std::vector<std::string> walked;
    char name[128];
    for (char* found = key.FirstSubKey(&child); found; found = key.NextSubKey(&child)) {
        EXPECT_EQ(child.Opened(), 1) << found;
        EXPECT_EQ(child.SetDword("visited", 1), 1);
        walked.emplace_back(found);
    }
    EXPECT_THAT(walked, testing::UnorderedElementsAre("alpha", "beta", longest));
    EXPECT_EQ(child.Opened(), 1) << "the end changes nothing";
    EXPECT_EQ(child.Exists(), 1) << "described by the walking key's handle and the subkey's name";

    ASSERT_EQ(key.FirstSubKey(name), 1);
    EXPECT_EQ(name, walked[0]);
    EXPECT_EQ(key.NextSubKey(&child), walked[1]);
    ASSERT_EQ(key.NextSubKey(name), 1);
    EXPECT_EQ(name, walked[2]);
    EXPECT_EQ(key.NextSubKey(name), 0);
    EXPECT_EQ(name, walked[2]);

    EXPECT_EQ(key.FirstSubKey(static_cast<RegKey*>(nullptr)), nullptr);
    EXPECT_EQ(key.NextSubKey(&child), walked[0]) << "the walk began anew";
    EXPECT_EQ(key.SubKeyByName("beta", &child), nullptr);
    EXPECT_EQ(child.Opened(), 1) << "SubKeyByName touches nothing";
}

TEST_F(Registry, StopsAtASubkeyNameOf128Bytes) {
    givenKey(std::string(128, 'k'));
    RegKey child;
    char name[129] = "kept";
    EXPECT_EQ(key.FirstSubKey(&child), nullptr);
    EXPECT_EQ(key.FirstSubKey(name), 0);
    EXPECT_STREQ(name, "kept");
    EXPECT_EQ(child.Open(), 0) << "the child was not described";
}

}  // namespace
