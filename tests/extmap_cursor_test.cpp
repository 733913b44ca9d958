// CExtensionMap on the stand-in's registry and on the real one.
#include <gmock/gmock.h>

#include "extmap_store.h"
#include "tamrix32/extmap.h"

namespace {

using namespace extmap_store;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

char* text(const char* constant) {
    return const_cast<char*>(constant);
}

std::string shown(const char* held) {
    return held ? held : "(none)";
}

/// What a cursor holds: extension, type, creator, comment.
std::string held(CExtensionMap& cursor) {
    return shown(cursor.Extension()) + ' ' + shown(cursor.Type()) + ' ' + shown(cursor.Creator()) + ' ' +
           shown(cursor.Comment());
}

void setHeld(CExtensionMap& cursor, const char* extension, const char* type, const char* creator, const char* comment) {
    cursor.SetExtension(text(extension));
    cursor.SetType(text(type));
    cursor.SetCreator(text(creator));
    cursor.SetComment(text(comment));
}

/// All of our mappings that a pass fetches.
std::vector<std::string> walked(CExtensionMap& cursor) {
    std::vector<std::string> found;
    for (int more = cursor.First(); more; more = cursor.Next())
        if (isOurs(cursor.Extension())) found.push_back(held(cursor));
    return found;
}

using ExtensionCursor = StoreTest;

TEST_F(ExtensionCursor, BeginsEmptyAndIdle) {
    CExtensionMap cursor;
    EXPECT_EQ(held(cursor), "(none) (none) (none) (none)");
    EXPECT_EQ(cursor.Next(), 0);
    EXPECT_EQ(cursor.NextCT(), 0);
}

TEST_F(ExtensionCursor, HoldsCopiesOfAnyLength) {
    CExtensionMap cursor;
    char buffer[] = ".tmx-a";
    const std::string longText(1000, 'x');
    setHeld(cursor, buffer, longText.c_str(), "", "note");
    buffer[1] = '!';
    EXPECT_EQ(held(cursor), ".tmx-a " + longText + "  note");
    cursor.SetType(cursor.Type() + 998);
    EXPECT_STREQ(cursor.Type(), "xx") << "a part of the held string itself";
    setHeld(cursor, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(held(cursor), "(none) (none) (none) (none)");
}

TEST_F(ExtensionCursor, WalksEveryMappingAndKeepsTheLast) {
    givenMapping(".tmx-a", "TEXT", "ttxt", "note");
    givenMapping(".tmx-b", "sixsix", "o");
    givenMapping("tmx-nodot", "TEXT", "ttxt");
    givenText(".tmx-half", "Mac Type", "TEXT");
    givenMapping(nameOfLength(127), "PICT", "ogle");
    CExtensionMap cursor;
    const auto found = walked(cursor);
    EXPECT_THAT(found, UnorderedElementsAre(".tmx-a TEXT ttxt note", ".tmx-b sixsix o (none)",
                                            nameOfLength(127) + " PICT ogle (none)"));
    EXPECT_EQ(held(cursor), found.back());
    EXPECT_EQ(cursor.Next(), 0);
    EXPECT_EQ(held(cursor), found.back());
}

TEST_F(ExtensionCursor, ANameTooLongForTheWalkEndsThePass) {
    givenMapping(nameOfLength(128), "TEXT", "ttxt");
    givenMapping(nameOfLength(255), "TEXT", "ttxt");
    CExtensionMap cursor;
    EXPECT_THAT(walked(cursor), ElementsAre());
    EXPECT_EQ(cursor.Next(), 0);
}

struct HostileCode {
    const char* reason;
    DWORD type;
    std::string bytes;
    std::string code;  // as fetched; empty when the mapping is passed over
};

TEST_F(ExtensionCursor, TakesStringsOfAnyLengthAndNothingElse) {
    using namespace std::string_literals;
    const HostileCode rows[] = {
        {"two bytes", REG_SZ, "TE\0"s, "TE"},
        {"five bytes", REG_SZ, "TEXTS\0"s, "TEXTS"},
        {"128 bytes", REG_SZ, std::string(127, 'T') + '\0', std::string(127, 'T')},
        {"129 bytes", REG_SZ, std::string(128, 'T') + '\0', ""},
        {"no terminator", REG_SZ, "TEXT", "TEXT"},
        {"128 bytes without a terminator", REG_SZ, std::string(128, 'T'), std::string(128, 'T')},
        {"bytes", REG_BINARY, "TEXT\0"s, ""},
        {"a number", REG_DWORD, "TEXT", ""},
        {"an expandable string, which carries no data", REG_EXPAND_SZ, "TEXT\0"s, ""},
    };
    for (const HostileCode& row : rows) {
        const bool isFetched = !row.code.empty();
        for (const char* name : {"Mac Type", "Mac Creator"}) {
            givenMapping(".tmx-a", "good", "good");
            givenValue(HKEY_CLASSES_ROOT, ".tmx-a", name, row.type, row.bytes);
            CExtensionMap cursor;
            EXPECT_EQ(walked(cursor).size(), isFetched) << row.reason << ", " << name;
            EXPECT_EQ(shown(name == std::string("Mac Type") ? cursor.Type() : cursor.Creator()),
                      isFetched ? row.code : "(none)")
                << row.reason << ", " << name;
            EXPECT_EQ(cursor.Find(text("tmx-a")), isFetched) << row.reason << ", " << name;
        }
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
    std::vector<std::string> found;
    for (int more = cursor.FirstCT(text("dosa"), text("TEXT")); more; more = cursor.NextCT())
        found.push_back(held(cursor));
    EXPECT_THAT(found, UnorderedElementsAre(".tmx-a TEXT dosa first", ".tmx-d TEXT dosa second"));
    EXPECT_STREQ(cursor.Creator(), "dosa");
    EXPECT_STREQ(cursor.Type(), "TEXT") << "the wanted codes are held again after the end";
    EXPECT_EQ(cursor.FirstCT(cursor.Type(), cursor.Creator()), 0) << "the held strings themselves, exchanged";
    EXPECT_STREQ(cursor.Creator(), "TEXT");
}

TEST_F(ExtensionCursor, RefusesWantedCodesThatNoneCanBe) {
    givenMapping(".tmx-a", "TEXT", "dosa");
    CExtensionMap cursor;
    setHeld(cursor, ".tmx-z", "old", "old", "old");
    EXPECT_EQ(cursor.FirstCT(nullptr, text("TEXT")), 0);
    EXPECT_EQ(cursor.FirstCT(text("dosa"), nullptr), 0);
    EXPECT_EQ(cursor.FirstCT(text("dosas"), text("TEXT")), 0);
    EXPECT_EQ(cursor.FirstCT(text("dosa"), text("TEXTS")), 0);
    EXPECT_EQ(held(cursor), ".tmx-z old old old");
    EXPECT_EQ(cursor.Next(), 0) << "no pass was started";
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

TEST_F(ExtensionCursor, WritesAndDeletesInTheMiddleOfAPass) {
    for (const char* extension : {".tmx-a", ".tmx-b", ".tmx-c"}) givenMapping(extension, "TEXT", "dosa", "old");
    CExtensionMap cursor;
    int count = 0;
    for (int more = cursor.FirstCT(text("dosa"), text("TEXT")); more; more = cursor.NextCT()) {
        EXPECT_EQ(cursor.Delete(), 1);
        ++count;
    }
    EXPECT_EQ(count, 3);
    cursor.SetExtension(text(".tmx-b"));
    cursor.SetComment(text("new"));
    EXPECT_EQ(cursor.Create(), 1);
    EXPECT_EQ(mappingOf(".tmx-a"), "(none) (none) (none)");
    EXPECT_TRUE(exists(".tmx-a")) << "the key itself is never deleted";
    EXPECT_EQ(mappingOf(".tmx-b"), "TEXT dosa new");
}

TEST_F(ExtensionCursor, AKeyDeletedUnderAPassEndsNothing) {
    for (const char* extension : {".tmx-a", ".tmx-b", ".tmx-c", ".tmx-d"}) givenMapping(extension, "TEXT", "ttxt");
    CExtensionMap cursor;
    std::vector<std::string> found;
    for (int more = cursor.First(); more; more = cursor.Next()) {
        if (!isOurs(cursor.Extension())) continue;
        found.emplace_back(cursor.Extension());
        EXPECT_EQ(RegDeleteKeyA(HKEY_CLASSES_ROOT, cursor.Extension()), ERROR_SUCCESS);
    }
    std::sort(found.begin(), found.end());
    EXPECT_EQ(std::unique(found.begin(), found.end()), found.end());
    EXPECT_GE(found.size(), 2U);
}

TEST_F(ExtensionCursor, StartsAnewWithoutFinishing) {
    for (const char* extension : {".tmx-a", ".tmx-b"}) givenMapping(extension, "TEXT", "ttxt");
    CExtensionMap cursor;
    ASSERT_EQ(cursor.First(), 1);
    EXPECT_EQ(walked(cursor).size(), 2U);
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
    EXPECT_EQ(cursor.Find(text(".tmx-half")), 0);
    EXPECT_EQ(cursor.Find(text("tmx-345678901234567890")), 0);
    EXPECT_EQ(cursor.Find(nullptr), 0);
    EXPECT_EQ(held(cursor), "other TEXT ttxt old");
    EXPECT_TRUE(exists(".tmx-345678901234567890")) << "a missing key is left behind, its name not shortened";
    ASSERT_EQ(cursor.First(), 1);
    cursor.Find(cursor.Extension());
    EXPECT_EQ(cursor.Next(), 0) << "Find ends a pass";
}

TEST_F(ExtensionCursor, CreateWritesWhatIsHeld) {
    CExtensionMap cursor;
    setHeld(cursor, ".tmx-a", "TEXT", "ttxt", "note");
    EXPECT_EQ(cursor.Create(), 1);
    EXPECT_EQ(mappingOf(".tmx-a"), "TEXT ttxt note");
    cursor.SetComment(nullptr);
    cursor.SetType(text("longer than four"));
    EXPECT_EQ(cursor.Create(), 1);
    EXPECT_EQ(mappingOf(".tmx-a"), "longer than four ttxt (none)");
    cursor.SetExtension(text("tmx-nodot"));
    EXPECT_EQ(cursor.Create(), 1);
    EXPECT_TRUE(exists("tmx-nodot"));
}

TEST_F(ExtensionCursor, CreateStopsAtTheFirstCodeItLacks) {
    CExtensionMap cursor;
    setHeld(cursor, ".tmx-a", "TEXT", nullptr, "note");
    EXPECT_EQ(cursor.Create(), 0);
    EXPECT_EQ(mappingOf(".tmx-a"), "(none) (none) (none)");
    EXPECT_TRUE(exists(".tmx-a"));
    setHeld(cursor, ".tmx-a", nullptr, "ttxt", "note");
    EXPECT_EQ(cursor.Create(), 0);
    EXPECT_EQ(mappingOf(".tmx-a"), "(none) ttxt (none)");
    setHeld(cursor, ".tmx-a", "TEXT", nullptr, nullptr);
    givenText(".tmx-a", "Mac Comment", "kept");
    EXPECT_EQ(cursor.Create(), 0);
    EXPECT_EQ(stored(".tmx-a", "Mac Comment"), "kept");
}

TEST_F(ExtensionCursor, WithoutAnExtensionNothingIsWritten) {
    CExtensionMap cursor;
    for (const char* extension : {static_cast<const char*>(nullptr), ""}) {
        setHeld(cursor, extension, "TEXT", "ttxt", "note");
        EXPECT_EQ(cursor.Create(), 0);
        EXPECT_EQ(cursor.Delete(), 0);
        EXPECT_EQ(mappingOf(""), "(none) (none) (none)") << "the class root itself";
    }
}

TEST_F(ExtensionCursor, DeleteLeavesTheKey) {
    givenMapping(".tmx-a", "TEXT", "ttxt", "note");
    CExtensionMap cursor;
    for (const char* extension : {".tmx-a", ".tmx-missing"}) {
        cursor.SetExtension(text(extension));
        EXPECT_EQ(cursor.Delete(), 1);
        EXPECT_TRUE(exists(extension));
        EXPECT_EQ(mappingOf(extension), "(none) (none) (none)");
    }
}

TEST_F(ExtensionCursor, DefaultReplacesWhatIsHeld) {
    using namespace std::string_literals;
    CExtensionMap cursor;
    cursor.Default();
    EXPECT_EQ(held(cursor), "(none) (none) (none) (none)");
    setHeld(cursor, ".tmx-a", "t", "abcd", "note");
    cursor.Default();
    EXPECT_EQ(held(cursor), ".tmx-a TEXT dosa note");
    givenDefault("Default Mac Type", "BINA\0"s);
    givenDefault("Default Mac Creator", "hDmp\0"s);
    cursor.SetType(nullptr);
    cursor.Default();
    EXPECT_EQ(held(cursor), ".tmx-a (none) hDmp note");
    givenDefault("Default Mac Type", "BI\0"s);
    cursor.Default();
    EXPECT_EQ(held(cursor), ".tmx-a (none) hDmp note") << "a malformed default for a code that is not held";
    cursor.SetType(text("t"));
    cursor.Default();
    EXPECT_EQ(held(cursor), ".tmx-a TEXT dosa note") << "held codes fall back together";
}

}  // namespace
