// RegKey and RegValue on the registry of the build: the platform's own under Wine, the stand-in's natively.
#include "tamrix32/registry.h"

#include <gmock/gmock.h>

#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "registry_home.h"

namespace {

using namespace std::string_literals;
using testing_support::givenValue;

class Registry : public testing_support::RegistryHome {
protected:
    bool isThere(const char* path) { return open(path) == ERROR_SUCCESS; }

    RegKey key{HKEY_CURRENT_USER, kHome};
    RegValue value;
};

unsigned char* bytesOf(std::string& text) {
    return reinterpret_cast<unsigned char*>(text.data());
}

/// What a value holds, by the length that it says.
std::string dataOf(RegValue& value) {
    return value.Buffer() ? std::string(value.String(), value.DataLen()) : "none";
}

TEST(RegValue, ReadsSettingsAsYesOrNo) {
    const auto answer = [](RegValType type, std::string data) {
        return RegValue(type, "setting", bytesOf(data), static_cast<unsigned long>(data.size())).BoolValue();
    };
    for (const char* yes : {"yes", "Y", "t", "True", "10", "on", "oN", "one"})
        EXPECT_EQ(answer(RegValString, yes), 1) << yes;
    for (const char* no : {"no", "0", "off", "o", "", "false", " yes"}) EXPECT_EQ(answer(RegValString, no), 0) << no;
    for (const auto& yes : {"\2\0\0\0"s, "\0\0\0\1"s}) EXPECT_EQ(answer(RegValDword, yes), 1);
    EXPECT_EQ(answer(RegValDword, "\0\0\0\0"s), 0);
    EXPECT_EQ(answer(RegValBinary, "\1"), 1);
    for (const auto& no : {"\0\1"s, ""s}) EXPECT_EQ(answer(RegValBinary, no), 0);
    EXPECT_EQ(answer(RegValType(REG_EXPAND_SZ), "yes"), 0);
    EXPECT_EQ(RegValue().BoolValue(), 0);
}

TEST(RegValue, KeepsDataOfThreeTypesByLength) {
    const struct {
        const char* reason;
        RegValType type;
        const char* source;
        std::string data;
        unsigned long length, number;
    } steps[] = {
        {"bytes of the length set before", RegValBinary, "\x78\x56\x34\x12rest", "\x78\x56\x34\x12rest", 8, 0},
        {"a number, whose length is kept", RegValDword, "\x78\x56\x34\x12rest", "\x78\x56\x34\x12", 8, 0x12345678},
        {"a type without data, whose length is kept", RegValType(REG_MULTI_SZ), "\x78\x56\x34\x12rest", "none", 8, 0},
        {"a longer string", RegValString, "longer text", "longer text\0"s, 12, 0},
        {"a shorter string", RegValString, "short", "short\0\0\0\0\0\0\0"s, 12, 0},
        {"no string", RegValString, nullptr, std::string(12, '\0'), 12, 0},
        {"no bytes", RegValBinary, nullptr, "none", 0, 0},
        {"no string, and no length", RegValString, nullptr, "\0"s, 1, 0},
    };
    RegValue value;
    value.SetDataLength(8);
    for (const auto& step : steps) {
        SCOPED_TRACE(step.reason);
        std::string source = step.source ? step.source : "";
        value.SetData(step.type, step.source ? bytesOf(source) : nullptr);
        EXPECT_EQ(value.Type(), step.type);
        EXPECT_EQ(value.DataLen(), step.length);
        EXPECT_EQ(value.Value(), step.number);
        EXPECT_NE(value.Buffer(), bytesOf(source)) << "a copy";
        if (step.type == RegValDword) value.SetDataLength(4);  // what there is to look at
        EXPECT_EQ(dataOf(value), step.data);
        value.SetDataLength(step.length);
    }
}

TEST(RegValue, BeginsWithNothingAndTakesPartsOfWhatItHolds) {
    unsigned char number[] = {7, 0, 0, 0};
    RegValue none, unnamed(RegValDword, nullptr, number, 4);
    EXPECT_EQ(int(none.Type()), 0);
    EXPECT_EQ(none.DataLen(), 0u);
    EXPECT_EQ(none.String(), nullptr);
    std::string text = "whole text";
    RegValue value(RegValString, "whole name", bytesOf(text), 0);
    value.SetName(value.Name() + 6);
    value.SetData(RegValString, value.Buffer() + 6);
    EXPECT_STREQ(value.Name(), "name");
    EXPECT_EQ(value.NameLen(), 4u);
    EXPECT_STREQ(value.String(), "text");
    value.SetName(nullptr);
    for (RegValue* nameless : {&none, &unnamed, &value}) {
        EXPECT_EQ(nameless->Name(), nullptr);
        EXPECT_EQ(nameless->NameLen(), 0u);
    }
}

// Data that the registry holds but no careful writer wrote.
TEST_F(Registry, ReadsNoFurtherThanTheRegistryWrote) {
    const struct {
        const char* reason;
        DWORD type;
        std::string stored, expected;
        unsigned long number = 0;
    } rows[] = {
        {"no byte at all", REG_SZ, "", "\0"s},
        {"no terminator", REG_SZ, "abc", "abc\0"s},
        {"largest, no terminator", REG_SZ, std::string(128, 'x'), std::string(128, 'x') + '\0'},
        {"largest, terminated", REG_SZ, std::string(127, 'x') + '\0', std::string(127, 'x') + '\0'},
        {"zero inside", REG_SZ, "ab\0cd\0"s, "ab\0\0\0\0"s},
        {"empty bytes", REG_BINARY, "", ""},
        {"largest bytes", REG_BINARY, std::string(128, 'b'), std::string(128, 'b')},
        {"number of one byte", REG_DWORD, "\7", "\7", 7},
        {"number of no byte", REG_DWORD, "", ""},
        {"number of more", REG_DWORD, "\1\2\0\0"s, "\1\2\0\0"s, 0x201},
        {"a type without data", REG_EXPAND_SZ, "%TEMP%\0"s, "none"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        givenValue(home, "larger", REG_BINARY, std::string(100, '\xEE'));
        ASSERT_EQ(key.ValueByName("larger", &value), 1);
        givenValue(home, "odd", row.type, row.stored);
        ASSERT_EQ(key.ValueByName("odd", &value), 1);
        key.RemoveValue("larger");
        RegValue walked;
        ASSERT_EQ(key.FirstValue(&walked), 1);
        for (RegValue* read : {&value, &walked}) {
            EXPECT_STREQ(read->Name(), "odd");
            EXPECT_EQ(read->Type(), int(row.type));
            EXPECT_EQ(read->DataLen(), row.expected == "none" ? row.stored.size() : row.expected.size());
            EXPECT_EQ(dataOf(*read), row.expected);
            EXPECT_EQ(read->Value(), row.number);
        }
    }
}

TEST_F(Registry, ReadsWritesAndRemovesValuesByName) {
    EXPECT_EQ(key.SetString("Setting", "on"), 1);
    EXPECT_EQ(key.SetString(nullptr, "unnamed"), 1);
    EXPECT_EQ(key.SetString("Setting", nullptr), 0);
    givenValue(home, "Too large", REG_BINARY, std::string(129, 'x'));
    ASSERT_EQ(key.ValueByName("SETTING", &value), 1);
    EXPECT_STREQ(value.Name(), "SETTING") << "as asked for";
    DWORD stored = 0;
    EXPECT_EQ(RegQueryValueExA(home, "Setting", nullptr, nullptr, nullptr, &stored), ERROR_SUCCESS);
    EXPECT_EQ(stored, 3u) << "with its terminator";
    for (const char* missing : {"Missing", "Too large"}) EXPECT_EQ(key.ValueByName(missing, &value), 0) << missing;
    EXPECT_STREQ(value.Name(), "SETTING") << "a failure changes nothing";
    EXPECT_STREQ(value.String(), "on");
    ASSERT_EQ(key.ValueByName(nullptr, &value), 1);
    EXPECT_EQ(value.Name(), nullptr);
    EXPECT_STREQ(value.String(), "unnamed");
    EXPECT_EQ(key.ValueByName("Setting", nullptr), 0);
    EXPECT_EQ(key.SetDword("number", 0x89ABCDEFul), 1);
    ASSERT_EQ(key.ValueByName("number", &value), 1);
    EXPECT_EQ(dataOf(value), "\xEF\xCD\xAB\x89");
    EXPECT_EQ(key.RemoveValue("number"), 1);
    EXPECT_EQ(key.RemoveValue("number"), 0);
}

TEST_F(Registry, WalksAllValuesUpToOneThatIsTooLarge) {
    const std::string longest(127, 'n'), longer(128, 'n');
    for (const char* name : {"a", "b", longest.c_str()}) givenValue(home, name, REG_SZ, "\0"s);
    std::set<std::string> names;
    for (int more = key.FirstValue(&value); more; more = key.NextValue(&value)) names.insert(value.Name());
    EXPECT_THAT(names, testing::ElementsAre("a", "b", longest));
    EXPECT_EQ(key.NextValue(&value), 0);
    EXPECT_EQ(key.FirstValue(nullptr), 0);
    EXPECT_EQ(key.NextValue(&value), 1) << "the walk began anew";

    for (const auto& name : names) key.RemoveValue(name.c_str());
    const std::pair<const char*, std::size_t> tooLarge[] = {{"data of 129 bytes", 129}, {longer.c_str(), 1}};
    for (const auto& [name, size] : tooLarge) {
        SCOPED_TRACE(name);
        givenValue(home, name, REG_BINARY, std::string(size, 'x'));
        value.SetName("kept");
        EXPECT_EQ(key.FirstValue(&value), 0);
        EXPECT_EQ(key.NextValue(&value), 0);
        EXPECT_STREQ(value.Name(), "kept");
        key.RemoveValue(name);
        givenValue(home, "small", REG_SZ, "\0"s);
        EXPECT_EQ(key.NextValue(&value), 1) << "the position did not move";
        key.RemoveValue("small");
    }
}

TEST_F(Registry, OpensAndCreatesKeys) {
    RegKey other;
    EXPECT_EQ(other.Exists(), 0);
    EXPECT_EQ(other.Open(home, "missing"), 0);
    EXPECT_EQ(other.Exists(home, "missing"), 0);
    EXPECT_FALSE(isThere("missing"));
    EXPECT_EQ(other.Create(home, "missing\\deep\\key"), 1);
    EXPECT_TRUE(isThere("missing\\deep"));
    EXPECT_EQ(other.Opened(), 1);
    for (int again = 0; again < 2; ++again) EXPECT_EQ(other.Close(), 1);
    EXPECT_EQ(other.Opened(), 0);
    EXPECT_EQ(other.Handle(), nullptr);
    EXPECT_EQ(other.Open(), 1) << "the description stays";
    EXPECT_EQ(other.Exists(), 1);
    EXPECT_EQ(other.Opened(), 0) << "closed whatever the answer";
    ASSERT_EQ(other.Open(), 1);
    EXPECT_EQ(other.SetRelPath("new"), 1);
    other.SetAncestor(HKEY_CURRENT_USER);
    EXPECT_EQ(other.SetDword("n", 1), 1);
    EXPECT_EQ(RegDeleteValueA(givenKey("missing\\deep\\key"), "n"), ERROR_SUCCESS) << "an open key stays on its path";
    EXPECT_EQ(other.Open(), 0) << "another ancestor has no such key";
    other.SetAncestor(home);
    EXPECT_EQ(other.Create(), 1);
    EXPECT_TRUE(isThere("new"));
    EXPECT_EQ(other.Exists(home, ""), 0);
    EXPECT_EQ(other.Exists(home, nullptr), 0);
    EXPECT_EQ(other.Open(home, nullptr), 1) << "opens the ancestor";
}

TEST_F(Registry, ConstructsKeysInEveryState) {
    RegKey made(&key, "made"), closed;
    EXPECT_EQ(made.Opened(), 1);
    EXPECT_TRUE(isThere("made"));
    for (auto* empty : {new RegKey(), new RegKey(home, nullptr), new RegKey(HKEY(nullptr), "made"),
                        new RegKey(static_cast<RegKey*>(nullptr), "made"), new RegKey(&closed, "made")}) {
        EXPECT_EQ(empty->Opened(), 0);
        EXPECT_EQ(empty->Open(), 0);
        delete empty;
    }
    HKEY raw = nullptr;
    ASSERT_EQ(RegOpenKeyExA(home, "made", 0, KEY_SET_VALUE, &raw), ERROR_SUCCESS);
    {
        RegKey forgetful(raw);
        forgetful.Init();
        EXPECT_EQ(forgetful.Opened(), 0);
        EXPECT_EQ(forgetful.Handle(), nullptr);
        RegKey owner(raw);
        EXPECT_EQ(owner.Opened(), 1);
        EXPECT_EQ(owner.Handle(), raw);
        EXPECT_EQ(owner.SetDword("n", 1), 1) << "not closed by the one that forgot it";
    }
    EXPECT_EQ(RegDeleteValueA(raw, "n"), ERROR_INVALID_HANDLE) << "the owner closed it";
}

__attribute__((noinline, no_sanitize("null"))) int openedThrough(RegKey* asked) {
    return asked->Opened();
}

TEST_F(Registry, FailsWithoutAHandle) {
    EXPECT_EQ(openedThrough(&key), 1);
    EXPECT_EQ(openedThrough(nullptr), 0);
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

TEST_F(Registry, WalksSubkeysInTwoFormsOnOnePosition) {
    const std::string longest(127, 'c');
    for (const auto& name : {"alpha"s, "beta"s, longest}) givenKey(name);
    RegKey child;
    std::vector<std::string> walked;
    char name[129];
    for (char* found = key.FirstSubKey(&child); found; found = key.NextSubKey(&child)) {
        EXPECT_EQ(child.SetDword("visited", 1), 1) << found;
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
    givenKey(std::string(128, 'k'));
    EXPECT_EQ(key.NextSubKey(name), 0) << "one byte too long";
    EXPECT_EQ(name, walked[2]);
    EXPECT_EQ(key.NextSubKey(&child), nullptr);
    EXPECT_EQ(child.Open(), 1) << "the child was not described anew";

    EXPECT_EQ(key.FirstSubKey(static_cast<RegKey*>(nullptr)), nullptr);
    EXPECT_EQ(key.NextSubKey(static_cast<char*>(nullptr)), 0);
    EXPECT_EQ(key.NextSubKey(&child), walked[0]) << "the walk began anew";
    for (int (RegKey::*again)() : {static_cast<int (RegKey::*)()>(&RegKey::Open), &RegKey::Create}) {
        EXPECT_EQ((key.*again)(), 1);
        EXPECT_EQ(key.NextSubKey(name), 1);
        EXPECT_EQ(name, walked[0]) << "so it does in a key that is opened or created again";
    }
    EXPECT_EQ(key.SubKeyByName("beta", &child), nullptr);
    EXPECT_EQ(child.Opened(), 1) << "SubKeyByName touches nothing";
}

}  // namespace
