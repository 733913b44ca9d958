// The extension store where the registry refuses, where memory runs out, and under a double-byte code page: results,
// what is stored and held then, and that nothing stays open. The leak detector watches the memory.
#include <gmock/gmock.h>
#include <standin.h>

#include "../extmap_records.h"
#include "extmap/extension_key.h"
#include "strings/lead_bytes.h"

namespace {

using namespace extmap_store;
using standin::Kind;

class StoreWithFaults : public StoreTest {
protected:
    void TearDown() override {
        standin::clearFaults();
        StoreTest::TearDown();
    }
};

/// An operation's result and what the cursor holds then.
std::string withHeld(int result, CExtensionMap& cursor) {
    return std::to_string(result) + ": " + held(cursor);
}

/// What an operation gives when nothing fails, and all that it may give when a call does.
struct Operation {
    const char* name;
    std::vector<Kind> failing;  // what has no row for memory allocates nothing
    std::string (*run)(CExtensionMap& cursor);
    std::string whole;
    std::vector<std::string> damaged;
    bool writes = false;  // what it gives is followed by what is stored for .tmx-a then
};

const std::vector<Kind> kCalls = {Kind::registry};
const std::vector<Kind> kCallsAndMemory = {Kind::registry, Kind::allocation};

/// Before each .tmx-a TEXT ttxt old and .tmx-b PICT ogle are stored, BINA hDmp are the default codes, and the cursor
/// holds .tmx-a PICT ogle new.
const Operation kOperations[] = {
    {"AddExtMap, where the comment does not count",
     kCalls,
     [](CExtensionMap&) { return std::to_string(add(".tmx-a", "PICT", "ogle", "new")); },
     "1; PICT ogle new",
     {"0; TEXT ttxt old", "1; PICT ogle old", "0; no key"},
     true},
    {"GetExtMap, where only the comment may be lost",
     kCalls,
     [](CExtensionMap&) { return got(".tmx-a"); },
     "TEXT ttxt old",
     {"none", "TEXT ttxt "}},
    {"HasExtMap", kCalls, [](CExtensionMap&) { return std::to_string(HasExtMap(text(".tmx-a"))); }, "1", {"0"}},
    {"RemoveExtMap, which answers 1 and never takes a key it is not sure of",
     kCalls,
     [](CExtensionMap&) { return std::to_string(RemoveExtMap(text(".tmx-a"))); },
     "1; no key",
     {"1; TEXT ttxt old", "1; TEXT (none) (none)", "1; (none) ttxt (none)", "1; (none) (none) old",
      "1; (none) (none) (none)"},
     true},
    {"EnumExtMap, which loses one mapping at most",
     kCalls,
     [](CExtensionMap&) { return testing::PrintToString(enumerated(EnumExtMap)); },
     R"({ "tmx-a TEXT ttxt old", "tmx-b PICT ogle " })",
     {R"({ "tmx-a TEXT ttxt old" })", R"({ "tmx-b PICT ogle " })", R"({ "tmx-a TEXT ttxt ", "tmx-b PICT ogle " })",
      R"({ "tmx-a TEXT ttxt old", "tmx-b PICT ogle " })"}},
    {"EnumExtMapCT",
     kCalls,
     [](CExtensionMap&) { return testing::PrintToString(enumerated(EnumExtMapCT, "PICT", "ogle")); },
     R"({ "tmx-b PICT ogle " })",
     {"{}", R"({ "tmx-b PICT ogle " })"}},
    {"GetDefaultExtMap, where codes fall back together",
     kCalls,
     [](CExtensionMap&) {
         Record record;
         GetDefaultExtMap(&record);
         return record.codes();
     },
     "BINA hDmp",
     {"TEXT dosa"}},
    {"First and Next, which fetch whole mappings only",
     kCallsAndMemory,
     [](CExtensionMap& cursor) {
         std::string found;
         for (int more = cursor.First(); more; more = cursor.Next()) found += held(cursor) + "; ";
         EXPECT_EQ(cursor.Next(), 0);
         EXPECT_TRUE(found.empty() ? held(cursor) == ".tmx-a PICT ogle new" : found.ends_with(held(cursor) + "; "));
         return found;
     },
     ".tmx-a TEXT ttxt old; .tmx-b PICT ogle (none); ",
     {"", ".tmx-a TEXT ttxt old; ", ".tmx-b PICT ogle (none); ", ".tmx-a TEXT ttxt (none); .tmx-b PICT ogle (none); ",
      ".tmx-a TEXT ttxt old; .tmx-b PICT ogle (none); "}},
    {"FirstCT, which holds the old or the wanted codes",
     kCallsAndMemory,
     [](CExtensionMap& cursor) { return withHeld(cursor.FirstCT(text("ttxt"), text("TEXT")), cursor); },
     "1: .tmx-a TEXT ttxt old",
     {"1: .tmx-a TEXT ttxt (none)", "0: .tmx-a PICT ogle new", "0: .tmx-a TEXT ttxt new",
      "0: .tmx-b TEXT ttxt (none)"}},
    {"Find, which loads both codes or neither",
     kCallsAndMemory,
     [](CExtensionMap& cursor) { return withHeld(cursor.Find(text("tmx-a")), cursor); },
     "1: .tmx-a TEXT ttxt new",
     {"0: .tmx-a PICT ogle new"}},
    {"Create, which writes no comment without both codes",
     kCallsAndMemory,
     [](CExtensionMap& cursor) { return withHeld(cursor.Create(), cursor); },
     "1: .tmx-a PICT ogle new; PICT ogle new",
     {"1: .tmx-a PICT ogle new; PICT ogle old", "0: .tmx-a PICT ogle new; TEXT ttxt old",
      "0: .tmx-a PICT ogle new; TEXT ogle old"},
     true},
    {"Delete, which answers whether the key opened",
     kCallsAndMemory,
     [](CExtensionMap& cursor) { return std::to_string(cursor.Delete()); },
     "1; (none) (none) (none)",
     {"0; TEXT ttxt old", "1; TEXT (none) (none)", "1; (none) ttxt (none)", "1; (none) (none) old"},
     true},
    {"Default, after which nothing stale is held",
     kCallsAndMemory,
     [](CExtensionMap& cursor) {
         cursor.Default();
         return held(cursor);
     },
     ".tmx-a BINA hDmp new",
     {".tmx-a TEXT dosa new", ".tmx-a (none) hDmp new", ".tmx-a BINA (none) new"}},
    {"the setters, after which nothing stale is held",
     {Kind::allocation},
     [](CExtensionMap& cursor) {
         setHeld(cursor, ".tmx-b", "TEXT", "ttxt", "newer");
         return held(cursor);
     },
     ".tmx-b TEXT ttxt newer",
     {"(none) TEXT ttxt newer", ".tmx-b (none) ttxt newer", ".tmx-b TEXT (none) newer", ".tmx-b TEXT ttxt (none)"}},
    {"NextCT behind the last, which still holds the wanted codes",
     kCallsAndMemory,
     [](CExtensionMap& cursor) {
         const int found = cursor.FirstCT(text("ttxt"), text("TEXT"));
         return std::to_string(found) + withHeld(found ? cursor.NextCT() : 0, cursor);
     },
     "10: .tmx-b TEXT ttxt (none)",
     {"00: .tmx-a PICT ogle new", "00: .tmx-a TEXT ttxt new", "00: .tmx-b TEXT ttxt (none)",
      "10: .tmx-a TEXT ttxt (none)", "10: .tmx-a TEXT ttxt old", "10: .tmx-b TEXT ttxt (none)"}},
};

TEST_F(StoreWithFaults, EachOperationComesToWhatItSaysWhicheverCallFails) {
    for (const Operation& operation : kOperations)
        for (const Kind kind : operation.failing)
            for (std::size_t n = 1;; ++n) {
                SCOPED_TRACE(testing::Message() << operation.name << ", failing "
                                                << (kind == Kind::registry ? "registry call " : "allocation ") << n);
                removeOurKeys();
                givenMapping(".tmx-a", "TEXT", "ttxt", "old");
                givenMapping(".tmx-b", "PICT", "ogle");
                givenDefault("Default Mac Type", std::string_view("BINA", 5));
                givenDefault("Default Mac Creator", std::string_view("hDmp", 5));
                std::string outcome;
                {
                    CExtensionMap cursor;
                    setHeld(cursor, ".tmx-a", "PICT", "ogle", "new");
                    standin::clearFaults();
                    standin::failNth(kind, n);
                    outcome = operation.run(cursor);
                }
                const bool failed = standin::faultHit();
                EXPECT_TRUE(operation.failing != kCalls || standin::calls(Kind::allocation) == 0);
                standin::clearFaults();
                EXPECT_EQ(standin::openKeys(), 0U);
                if (operation.writes) outcome += "; " + (exists(".tmx-a") ? mappingOf(".tmx-a") : "no key");
                if (!failed) {
                    EXPECT_EQ(outcome, operation.whole);
                    EXPECT_GT(n, 1U) << "nothing was made to fail";
                    break;
                }
                EXPECT_THAT(operation.damaged, testing::Contains(outcome));
                ASSERT_LT(n, 100U);
            }
}

TEST_F(StoreWithFaults, KeysThatMayNotBeOpenedAreMissing) {
    givenMapping(".tmx-a", "TEXT", "ttxt", "old");
    givenMapping(".tmx-b", "TEXT", "ttxt", "old");
    ASSERT_TRUE(standin::denyAccess(HKEY_CLASSES_ROOT, ".tmx-a"));
    EXPECT_EQ(got(".tmx-a"), "none");
    EXPECT_EQ(HasExtMap(text(".tmx-a")), 0);
    EXPECT_EQ(add(".tmx-a", "TEXT", "ttxt"), 0);
    EXPECT_EQ(RemoveExtMap(text(".tmx-a")), 1);
    EXPECT_THAT(enumerated(EnumExtMap), testing::ElementsAre("tmx-b TEXT ttxt old"));
    CExtensionMap cursor;
    EXPECT_EQ(cursor.First(), 1);
    EXPECT_STREQ(cursor.Extension(), ".tmx-b");
    EXPECT_EQ(cursor.Next(), 0);
    cursor.SetExtension(text(".tmx-a"));
    EXPECT_EQ(cursor.Create(), 0);
    EXPECT_EQ(cursor.Delete(), 0);
    EXPECT_EQ(cursor.Find(text(".tmx-a")), 0);
    standin::clearRegistry();
    givenDefault("Default Mac Type", std::string_view("BINA", 5));
    givenDefault("Default Mac Creator", std::string_view("hDmp", 5));
    ASSERT_TRUE(standin::denyAccess(HKEY_LOCAL_MACHINE, kSettings));
    Record record;
    GetDefaultExtMap(&record);
    EXPECT_EQ(record.codes(), "TEXT dosa");
    standin::clearRegistry();
}

TEST(ExtensionKeyNameInJapanese, NeverSplitsACharacter) {
    standin::setCodePages(932, 932);
    tamrix::buildLeadByteTable();
    tamrix::KeyNameBuffer buffer;
    // 0x835C is a katakana letter whose trail byte is a backslash's.
    EXPECT_STREQ(tamrix::extensionKeyName("12345678901234\x83\x5C", buffer), ".12345678901234");
    EXPECT_STREQ(tamrix::extensionKeyName("1234567890123\x83\x5Cx", buffer), ".1234567890123\x83\x5C");
    standin::setCodePages(1252, 437);
    tamrix::buildLeadByteTable();
}

}  // namespace
