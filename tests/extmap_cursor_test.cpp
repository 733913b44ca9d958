// CExtensionMap on the stand-in's registry and on the real one, and which stored codes it and the flat functions take.
#include <gmock/gmock.h>

#include "extmap_records.h"

namespace {

using namespace extmap_store;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

/// All of our mappings that a pass fetches; each is heard of while the pass stands at it.
std::vector<std::string> walked(
    CExtensionMap& cursor, void (*hear)(CExtensionMap&) = [](CExtensionMap&) {}) {
    std::vector<std::string> found;
    for (int more = cursor.First(); more; more = cursor.Next()) {
        if (!isOurs(cursor.Extension())) continue;
        found.push_back(held(cursor));
        hear(cursor);
    }
    return found;
}

using ExtensionCursor = StoreTest;

TEST_F(ExtensionCursor, BeginsIdleAndHoldsCopiesOfAnyLength) {
    CExtensionMap cursor;
    EXPECT_EQ(held(cursor), kHoldsNothing);
    EXPECT_EQ(cursor.Next(), 0);
    EXPECT_EQ(cursor.NextCT(), 0);
    char buffer[] = ".tmx-a";
    const std::string longText(1000, 'x');
    setHeld(cursor, buffer, longText.c_str(), "", "note");
    buffer[1] = '!';
    EXPECT_EQ(held(cursor), ".tmx-a " + longText + "  note");
    cursor.SetType(cursor.Type() + 998);
    EXPECT_STREQ(cursor.Type(), "xx") << "a part of the held string itself";
    setHeld(cursor, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(held(cursor), kHoldsNothing);
}

TEST_F(ExtensionCursor, WalksEveryMappingKeepsTheLastAndMayStartAnew) {
    givenMapping(".tmx-a", "TEXT", "ttxt", "note");
    givenMapping(".tmx-b", "sixsix", "o");
    givenMapping("tmx-nodot", "TEXT", "ttxt");
    givenText(".tmx-half", "Mac Type", "TEXT");
    givenMapping(nameOfLength(127), "PICT", "ogle");
    CExtensionMap cursor;
    ASSERT_EQ(cursor.First(), 1);
    const auto found = walked(cursor);
    EXPECT_THAT(found, UnorderedElementsAre(".tmx-a TEXT ttxt note", ".tmx-b sixsix o (none)",
                                            nameOfLength(127) + " PICT ogle (none)"));
    EXPECT_EQ(cursor.Next(), 0);
    EXPECT_EQ(held(cursor), found.back());
    removeOurKeys();
    givenMapping(nameOfLength(128), "TEXT", "ttxt");
    EXPECT_THAT(walked(cursor), ElementsAre()) << "a name too long for the walk ends the pass";
    EXPECT_EQ(cursor.Next(), 0);
}

TEST_F(ExtensionCursor, TakesStringsOfAnyLengthWhereFlatFunctionsTakeFourBytes) {
    using namespace std::string_literals;
    const std::string none = "(none)", longCode(127, 'T');
    const struct {
        const char* reason;
        DWORD type;
        std::string bytes, flat, held;  // the code as either fetches it
    } rows[] = {
        {"two bytes", REG_SZ, "TE\0"s, none, "TE"},
        {"four bytes", REG_SZ, "TEXT\0"s, "TEXT", "TEXT"},
        {"five bytes", REG_SZ, "TEXTS\0"s, none, "TEXTS"},
        {"128 bytes", REG_SZ, longCode + '\0', none, longCode},
        {"129 bytes", REG_SZ, longCode + "T\0"s, none, none},
        {"nothing", REG_SZ, "", none, ""},
        {"four bytes without a terminator", REG_SZ, "TEXT", none, "TEXT"},
        {"five bytes without a terminator give the first four", REG_SZ, "TEXTS", "TEXT", "TEXTS"},
        {"128 bytes without a terminator", REG_SZ, longCode + 'T', none, longCode + 'T'},
        {"bytes", REG_BINARY, "TEXT\0"s, none, none},
        {"a number", REG_DWORD, "TEXT", none, none},
        {"an expandable string, which carries no data", REG_EXPAND_SZ, "TEXT\0"s, none, none},
        {"a list of strings", REG_MULTI_SZ, "TEX\0\0"s, none, none},
    };
    for (const auto& row : rows)
        for (const bool asType : {false, true}) {
            SCOPED_TRACE(row.reason + std::string(asType ? ", as the type" : ", as the creator"));
            givenMapping(".tmx-a", "good", "good");
            givenValue(HKEY_CLASSES_ROOT, ".tmx-a", asType ? "Mac Type" : "Mac Creator", row.type, row.bytes);
            const auto codes = [asType](const std::string& code) { return asType ? code + " good" : "good " + code; };
            EXPECT_EQ(got(".tmx-a"), row.flat == none ? "none" : codes(row.flat) + ' ');
            EXPECT_EQ(HasExtMap(text(".tmx-a")), row.flat != none);
            CExtensionMap cursor;
            EXPECT_EQ(walked(cursor).size(), row.held != none);
            EXPECT_EQ(held(cursor), row.held == none ? kHoldsNothing : ".tmx-a " + codes(row.held) + " (none)");
            EXPECT_EQ(cursor.Find(text("tmx-a")), row.held != none);
        }
    givenMapping(".tmx-a", "TEXT", "ttxt");
    givenValue(HKEY_CLASSES_ROOT, ".tmx-a", "Mac Comment", REG_BINARY, "bytes");
    CExtensionMap cursor;
    EXPECT_THAT(walked(cursor), ElementsAre(".tmx-a TEXT ttxt (none)"));
}

TEST_F(ExtensionCursor, WalksOneCreatorAndType) {
    givenMapping(".tmx-a", "TEXT", "dosa", "first");
    givenMapping(".tmx-b", "text", "dosa");
    givenMapping(".tmx-c", "TEXTS", "dosa");
    givenMapping(".tmx-d", "TEXT", "dosa", "second");
    CExtensionMap cursor;
    setHeld(cursor, ".tmx-z", "old", "old", "old");
    for (const auto& [creator, type] : {std::pair<const char*, const char*>(nullptr, "TEXT"),
                                        {"dosa", nullptr},
                                        {"dosas", "TEXT"},
                                        {"dosa", "TEXTS"}})
        EXPECT_EQ(cursor.FirstCT(text(creator), text(type)), 0) << "none can be so";
    EXPECT_EQ(held(cursor), ".tmx-z old old old");
    EXPECT_EQ(cursor.Next(), 0) << "no pass was started";
    std::vector<std::string> found;
    for (int more = cursor.FirstCT(text("dosa"), text("TEXT")); more; more = cursor.NextCT())
        found.push_back(held(cursor));
    EXPECT_THAT(found, UnorderedElementsAre(".tmx-a TEXT dosa first", ".tmx-d TEXT dosa second"));
    EXPECT_STREQ(cursor.Creator(), "dosa");
    EXPECT_STREQ(cursor.Type(), "TEXT") << "the wanted codes are held again after the end";
    EXPECT_EQ(cursor.FirstCT(cursor.Type(), cursor.Creator()), 0) << "the held strings themselves, exchanged";
    EXPECT_STREQ(cursor.Creator(), "TEXT");
}

TEST_F(ExtensionCursor, NextCTGoesByTheHeldCodes) {
    for (const char* extension : {".tmx-a", ".tmx-b", ".tmx-c"}) givenMapping(extension, "TEXT", "dosa");
    CExtensionMap cursor;
    ASSERT_EQ(cursor.FirstCT(text("dosa"), text("TEXT")), 1);
    cursor.SetType(text("TEXT and more"));
    EXPECT_EQ(cursor.NextCT(), 1) << "four bytes of a held code count";
    EXPECT_STREQ(cursor.Type(), "TEXT");
    cursor.SetType(nullptr);
    EXPECT_EQ(cursor.NextCT(), 0) << "a code of none matches nothing";
    EXPECT_EQ(cursor.Type(), nullptr);
}

TEST_F(ExtensionCursor, DeletesMappingsButNoKeysAlsoInTheMiddleOfAPass) {
    const char* const extensions[] = {".tmx-a", ".tmx-b", ".tmx-c", ".tmx-d"};
    for (const char* extension : extensions) givenMapping(extension, "TEXT", "ttxt", "old");
    CExtensionMap cursor;
    EXPECT_EQ(walked(cursor, [](CExtensionMap& at) { EXPECT_EQ(at.Delete(), 1); }).size(), 4U);
    for (const char* extension : extensions) {
        EXPECT_TRUE(exists(extension));
        EXPECT_EQ(mappingOf(extension), "(none) (none) (none)");
        givenMapping(extension, "TEXT", "ttxt");
    }
    auto found = walked(cursor, [](CExtensionMap& at) { RegDeleteKeyA(HKEY_CLASSES_ROOT, at.Extension()); });
    std::sort(found.begin(), found.end());
    EXPECT_EQ(std::unique(found.begin(), found.end()), found.end());
    EXPECT_GE(found.size(), 2U) << "keys deleted under a pass end nothing";
    cursor.SetExtension(text(".tmx-missing"));
    EXPECT_EQ(cursor.Delete(), 1);
    EXPECT_TRUE(exists(".tmx-missing"));
}

TEST_F(ExtensionCursor, FindLoadsTheCodesOfOneExtension) {
    givenMapping(".tmx-a", "TEXT", "ttxt", "note");
    CExtensionMap cursor;
    for (const char* wanted : {"tmx-a", ".tmx-a"}) {
        setHeld(cursor, "other", "old", "old", "old");
        EXPECT_EQ(cursor.Find(text(wanted)), 1);
        EXPECT_EQ(held(cursor), "other TEXT ttxt old") << wanted;
    }
    givenText(".tmx-half", "Mac Type", "PICT");
    for (const char* missing : {".tmx-half", "tmx-345678901234567890", static_cast<const char*>(nullptr)})
        EXPECT_EQ(cursor.Find(text(missing)), 0);
    EXPECT_EQ(held(cursor), "other TEXT ttxt old");
    EXPECT_TRUE(exists(".tmx-345678901234567890")) << "a missing key is left behind, its name not shortened";
    ASSERT_EQ(cursor.First(), 1);
    cursor.Find(cursor.Extension());
    EXPECT_EQ(cursor.Next(), 0) << "Find ends a pass";
}

TEST_F(ExtensionCursor, CreateWritesWhatIsHeldUpToTheFirstCodeItLacks) {
    const struct {
        const char *extension, *type, *creator, *comment;
        int result;
        const char* mapping;
    } rows[] = {
        {".tmx-a", "TEXT", nullptr, "note", 0, "(none) (none) (none)"},
        {".tmx-a", nullptr, "ttxt", "note", 0, "(none) ttxt (none)"},
        {".tmx-a", "TEXT", "ogle", "note", 1, "TEXT ogle note"},
        {".tmx-a", "PICT", nullptr, nullptr, 0, "TEXT ogle note"},
        {".tmx-a", "longer than four", "ttxt", nullptr, 1, "longer than four ttxt (none)"},
        {"tmx-nodot", "TEXT", "ttxt", "note", 1, "TEXT ttxt note"},
        {"", "TEXT", "ttxt", "note", 0, "(none) (none) (none)"},  // of the class root itself
        {nullptr, "TEXT", "ttxt", "note", 0, "(none) (none) (none)"},
    };
    CExtensionMap cursor;
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        setHeld(cursor, row.extension, row.type, row.creator, row.comment);
        EXPECT_EQ(cursor.Create(), row.result);
        EXPECT_EQ(mappingOf(row.extension ? row.extension : ""), row.mapping);
    }
    for (const char* none : {static_cast<const char*>(nullptr), ""}) {
        cursor.SetExtension(text(none));
        EXPECT_EQ(cursor.Delete(), 0);
    }
}

TEST_F(ExtensionCursor, DefaultReplacesWhatIsHeld) {
    using namespace std::string_literals;
    CExtensionMap cursor;
    cursor.Default();
    EXPECT_EQ(held(cursor), kHoldsNothing);
    setHeld(cursor, ".tmx-a", "t", "abcd", "note");
    cursor.Default();
    EXPECT_EQ(held(cursor), ".tmx-a TEXT dosa note");
    givenDefault("Default Mac Creator", "hDmp\0"s);
    cursor.SetType(nullptr);
    for (const auto& defaultType : {"BINA\0"s, "BI\0"s}) {
        givenDefault("Default Mac Type", defaultType);
        cursor.Default();
        EXPECT_EQ(held(cursor), ".tmx-a (none) hDmp note") << "whatever the default for a code that is not held";
    }
    cursor.SetType(text("t"));
    cursor.Default();
    EXPECT_EQ(held(cursor), ".tmx-a TEXT dosa note") << "held codes fall back together";
}

}  // namespace
