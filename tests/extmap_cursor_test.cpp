// CExtensionMap on the stand-in's registry and on the real one, and what it and the flat functions read of keys that
// anyone may have written.
#include <gmock/gmock.h>

#include <map>
#include <random>

#include "extmap_records.h"

namespace {

using namespace extmap_store;
using namespace std::string_literals;
using testing::ElementsAre;
using Random = std::mt19937;

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

// A class root of keys that anyone may have written, and what is to be read of it.

using Value = std::optional<Stored>;
const char* const kValues[] = {"Mac Type", "Mac Creator", "Mac Comment"};

Value randomValue(Random& random, std::size_t of) {
    const char* const usual[][2] = {{"TEXT", "text"}, {"dosa", "DOSA"}, {"note", "n"}};
    const std::string odd[] = {"", "TE\0"s, "TEX\0\0"s, "TEXT", "TEXTS", "TEXTS\0"s};
    const DWORD otherTypes[] = {REG_BINARY, REG_DWORD, REG_EXPAND_SZ, REG_MULTI_SZ};
    const std::string text = usual[of][random() % 4 == 0] + "\0"s;
    const auto kind = random() % 9;
    if (kind == 0) return {};
    if (kind == 1) return Stored{otherTypes[random() % 4], text};
    if (kind == 2) return Stored{REG_SZ, odd[random() % 6]};
    if (kind > 3 + of) return Stored{REG_SZ, text};
    // About the sizes of the buffers, with and without a terminator.
    const std::string longText(random() % 2 * 128 + 126 + random() % 4, 'T');
    return Stored{REG_SZ, longText + std::string(random() % 2, '\0')};
}

/// A string value's text; none for another type and for more than `largest` bytes.
std::optional<std::string> textOf(const Value& value, std::size_t largest) {
    if (!value || value->type != REG_SZ || value->bytes.size() > largest) return {};
    return value->bytes.c_str();
}

/// What the flat functions take for a code: five bytes stored, of which the first four count.
std::optional<std::string> codeOf(const Value& value) {
    if (!textOf(value, 5) || value->bytes.size() < 5) return {};
    return textOf(value, 5)->substr(0, 4);
}

std::string flatComment(const Value& value) {
    const bool fits = value && (value->bytes.size() < 256 || value->bytes.back() == 0);
    return fits ? textOf(value, 256).value_or("") : "";
}

std::vector<std::string> only(std::vector<std::string> mappings, const char* codes) {
    std::erase_if(mappings, [codes](const std::string& each) { return each.find(codes) == std::string::npos; });
    return mappings;
}

TEST_F(ExtensionCursor, ReadsAnyStoreAsStatedAndSoDoTheFlatFunctions) {
    Random random(5);
    for (int round = 0; round < 40; ++round) {
        removeOurKeys();
        std::map<std::string, Value[3]> store;
        std::vector<std::string> names = {".tmx-a", ".tmx-b", ".TMX-C", "tmx-d", ".tmx-d", ".tmx-e"};
        for (const std::size_t length : {16U, 17U, 127U, 128U}) names.push_back(nameOfLength(length));
        if (round % 4 != 0) names.pop_back();
        for (const std::string& name : names)
            for (std::size_t i = 0; i < 3; ++i)
                if (const Value value = randomValue(random, i)) {
                    store[name][i] = value;
                    givenValue(HKEY_CLASSES_ROOT, name, kValues[i], value->type, value->bytes);
                }
        std::vector<std::string> listed, passed;
        bool passing = true;
        for (const std::string& name : classKeys()) {
            passing = passing && name.size() < 128;  // a name too long for the walk ends the pass
            if (name[0] != '.' || !store.contains(name)) continue;
            SCOPED_TRACE(name + " of round " + std::to_string(round));
            const auto& [type, creator, comment] = store[name];
            const bool isMapping = codeOf(type) && codeOf(creator);
            const std::string mapping =
                isMapping ? *codeOf(type) + ' ' + *codeOf(creator) + ' ' + flatComment(comment) : "none";
            EXPECT_EQ(got(name), mapping);
            EXPECT_EQ(HasExtMap(text(name.c_str())), isMapping);
            if (isMapping && name.size() <= 16) listed.push_back(name.substr(1) + ' ' + mapping);

            const bool isHeld = textOf(type, 128) && textOf(creator, 128);
            const std::string codes = isHeld ? *textOf(type, 128) + ' ' + *textOf(creator, 128) : "(none) (none)";
            CExtensionMap finder;
            EXPECT_EQ(finder.Find(text(name.c_str())), isHeld);
            EXPECT_EQ(held(finder), "(none) " + codes + " (none)");
            if (isHeld && passing) passed.push_back(name + ' ' + codes + ' ' + textOf(comment, 128).value_or("(none)"));
        }
        EXPECT_EQ(enumerated(EnumExtMap), listed);
        EXPECT_EQ(enumerated(EnumExtMapCT, "TEXT", "dosa"), only(listed, " TEXT dosa "));
        CExtensionMap cursor;
        EXPECT_EQ(walked(cursor), passed);
        EXPECT_EQ(cursor.Next(), 0);
        EXPECT_EQ(held(cursor), passed.empty() ? kHoldsNothing : passed.back());
        std::vector<std::string> matches;
        for (int more = cursor.FirstCT(text("dosa"), text("TEXT")); more; more = cursor.NextCT())
            matches.push_back(held(cursor));
        EXPECT_EQ(matches, only(passed, " TEXT dosa "));
    }
}

TEST_F(ExtensionCursor, RefusesCodesThatNoMappingCanHaveAndHoldsThoseItLookedFor) {
    givenMapping(".tmx-a", "TEXT", "dosa", "first");
    CExtensionMap cursor;
    setHeld(cursor, ".tmx-z", "old", "old", "old");
    for (const auto& [creator, type] : {std::pair<const char*, const char*>(nullptr, "TEXT"),
                                        {"dosa", nullptr},
                                        {"dosas", "TEXT"},
                                        {"dosa", "TEXTS"}})
        EXPECT_EQ(cursor.FirstCT(text(creator), text(type)), 0);
    EXPECT_EQ(held(cursor), ".tmx-z old old old");
    EXPECT_EQ(cursor.Next(), 0) << "no pass was started";
    EXPECT_EQ(cursor.FirstCT(text("dosa"), text("TEXT")), 1);
    EXPECT_EQ(cursor.NextCT(), 0);
    EXPECT_EQ(held(cursor), ".tmx-a TEXT dosa first") << "the wanted codes are held again after the end";
    EXPECT_EQ(cursor.FirstCT(cursor.Type(), cursor.Creator()), 0) << "the held strings themselves, exchanged";
    EXPECT_STREQ(cursor.Creator(), "TEXT");
}

TEST_F(ExtensionCursor, NextCTGoesByTheHeldCodes) {
    for (const char* extension : {".tmx-a", ".tmx-b", ".tmx-c"}) givenMapping(extension, "TEXT", "dosa");
    CExtensionMap cursor;
    ASSERT_EQ(cursor.FirstCT(text("dosa"), text("TEXT")), 1);
    cursor.SetType(text("TEXT and more"));
    cursor.SetCreator(text("dosa and more"));
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
    ASSERT_EQ(cursor.First(), 1) << "a pass that the next one replaces";
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
    CExtensionMap cursor;
    cursor.Default();
    EXPECT_EQ(held(cursor), kHoldsNothing);
    setHeld(cursor, ".tmx-a", "t", "abcd", "note");
    cursor.Default();
    EXPECT_EQ(held(cursor), ".tmx-a TEXT dosa note");
    givenDefault("Default Mac Type", "BINA\0"s);
    for (const bool isType : {true, false}) {
        SCOPED_TRACE(isType ? "a type that is not held" : "a creator that is not held");
        setHeld(cursor, ".tmx-a", isType ? nullptr : "t", isType ? "c" : nullptr, "note");
        for (const auto& other : {"hDmp\0"s, "hD\0"s}) {
            givenDefault("Default Mac Creator", isType ? "hDmp\0"s : other);
            givenDefault("Default Mac Type", isType ? other : "BINA\0"s);
            cursor.Default();
            EXPECT_EQ(held(cursor), isType ? ".tmx-a (none) hDmp note" : ".tmx-a BINA (none) note");
        }
    }
    cursor.SetCreator(text("c"));
    cursor.Default();
    EXPECT_EQ(held(cursor), ".tmx-a TEXT dosa note") << "held codes fall back together";
}

}  // namespace
