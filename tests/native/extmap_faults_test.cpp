// The extension store where the registry refuses, where memory runs out, and under a double-byte code page: results,
// what is stored and held then, and that nothing stays open. The leak detector watches the memory.
#include <gmock/gmock.h>
#include <standin.h>

#include <functional>

#include "../extmap_store.h"
#include "extmap/extension_key.h"
#include "strings/lead_bytes.h"
#include "tamrix32/extmap.h"

namespace {

using namespace extmap_store;
using standin::Kind;
using testing::AnyOf;
using testing::ElementsAre;

class StoreWithFaults : public StoreTest {
protected:
    void TearDown() override {
        standin::clearFaults();
        StoreTest::TearDown();
    }

    /// Runs an operation with its 1st, 2nd, ... call of a kind failing until none does. Each time begins with two
    /// mappings, and `check` hears which call failed and what the operation gave; it runs with the faults cleared.
    static void withEachCallFailing(Kind kind, const std::function<int()>& operation,
                                    const std::function<void(std::size_t, int)>& check) {
        for (std::size_t n = 1;; ++n) {
            SCOPED_TRACE((kind == Kind::registry ? "failing registry call " : "failing allocation ") +
                         std::to_string(n));
            removeOurKeys();
            givenMapping(".tmx-a", "TEXT", "ttxt", "old");
            givenMapping(".tmx-b", "PICT", "ogle");
            standin::clearFaults();
            standin::failNth(kind, n);
            const int result = operation();
            const bool failed = standin::faultHit();
            standin::clearFaults();
            EXPECT_EQ(standin::openKeys(), 0U);
            if (!failed) return;
            check(n, result);
            ASSERT_LT(n, 100U);
        }
    }
};

/// A record over constant codes and buffers of its own.
struct Record : SExtensionMap {
    char name[16] = ".tmx-a";
    char typeBuffer[5] = "PICT";
    char creatorBuffer[5] = "ogle";
    char commentBuffer[256] = "new";
    Record() {
        extension = name;
        type = typeBuffer;
        creator = creatorBuffer;
        comment = commentBuffer;
    }
};

TEST_F(StoreWithFaults, AddLeavesTheOldMappingOrNone) {
    const struct {
        const char* reason;
        int result;
        const char* mapping;
    } rows[] = {{"the key", 0, "TEXT ttxt old"},
                {"the comment does not count", 1, "PICT ogle old"},
                {"the type", 0, "(none) (none) (none)"},
                {"the creator", 0, "(none) (none) (none)"}};
    std::size_t failures = 0;
    const auto add = [] {
        Record record;
        return AddExtMap(&record);
    };
    withEachCallFailing(Kind::registry, add, [&](std::size_t n, int result) {
        failures = n;
        ASSERT_LE(n, std::size(rows));
        EXPECT_EQ(result, rows[n - 1].result) << rows[n - 1].reason;
        EXPECT_EQ(mappingOf(".tmx-a"), rows[n - 1].mapping) << rows[n - 1].reason;
        EXPECT_EQ(exists(".tmx-a"), n < 3) << rows[n - 1].reason;
    });
    EXPECT_EQ(failures, std::size(rows));
}

TEST_F(StoreWithFaults, ReadingGivesWhatCouldBeRead) {
    const auto get = [] {
        Record record;
        return GetExtMap(&record);
    };
    withEachCallFailing(Kind::registry, get,
                        [](std::size_t n, int result) { EXPECT_EQ(result, n == 4) << "only the comment may be lost"; });
    const auto getComment = [] {
        Record record;
        return GetExtMap(&record) && record.comment[0] == 0;
    };
    withEachCallFailing(Kind::registry, getComment, [](std::size_t n, int isEmpty) { EXPECT_EQ(isEmpty, n == 4); });
    const auto has = [] { return HasExtMap(Record().name); };
    withEachCallFailing(Kind::registry, has, [](std::size_t, int result) { EXPECT_EQ(result, 0); });
}

TEST_F(StoreWithFaults, RemoveAlwaysAnswersOneAndNeverTakesAKeyItIsNotSureOf) {
    const auto remove = [] { return RemoveExtMap(Record().name); };
    withEachCallFailing(Kind::registry, remove, [](std::size_t n, int result) {
        EXPECT_EQ(result, 1);
        EXPECT_TRUE(exists(".tmx-a"));
        const char* left[] = {"TEXT ttxt old", "TEXT (none) (none)", "(none) ttxt (none)", "(none) (none) old"};
        EXPECT_EQ(mappingOf(".tmx-a"), n <= 4 ? left[n - 1] : "(none) (none) (none)");
    });
}

TEST_F(StoreWithFaults, AnEnumerationLosesOneMappingAtMost) {
    const auto count = [] {
        Record record;
        int found = 0;
        while (EnumExtMap(&record)) ++found;
        return found;
    };
    withEachCallFailing(Kind::registry, count, [](std::size_t, int found) { EXPECT_GE(found, 1); });
    const auto countMatches = [] {
        Record record;
        int found = 0;
        while (EnumExtMapCT(&record)) ++found;
        EXPECT_STREQ(record.type, "PICT");
        return found;
    };
    withEachCallFailing(Kind::registry, countMatches, [](std::size_t, int found) { EXPECT_LE(found, 1); });
}

TEST_F(StoreWithFaults, DefaultsFallBackTogether) {
    givenDefault("Default Mac Type", std::string_view("BINA", 5));
    givenDefault("Default Mac Creator", std::string_view("hDmp", 5));
    Record record;
    const auto load = [&record] {
        GetDefaultExtMap(&record);
        return 1;
    };
    withEachCallFailing(Kind::registry, load, [&record](std::size_t, int) {
        EXPECT_STREQ(record.type, "TEXT");
        EXPECT_STREQ(record.creator, "dosa");
    });
    EXPECT_STREQ(record.type, "BINA");
}

TEST_F(StoreWithFaults, FlatFunctionsAllocateNothing) {
    standin::clearFaults();
    Record record;
    AddExtMap(&record);
    GetExtMap(&record);
    while (EnumExtMap(&record)) {
    }
    GetDefaultExtMap(&record);
    RemoveExtMap(record.name);
    EXPECT_EQ(standin::calls(Kind::allocation), 0U);
}

char* text(const char* constant) {
    return const_cast<char*>(constant);
}

std::string shown(const char* held) {
    return held ? held : "(none)";
}

std::string heldBy(CExtensionMap& cursor) {
    return shown(cursor.Extension()) + ' ' + shown(cursor.Type()) + ' ' + shown(cursor.Creator()) + ' ' +
           shown(cursor.Comment());
}

void holdNew(CExtensionMap& cursor) {
    cursor.SetExtension(text(".tmx-a"));
    cursor.SetType(text("PICT"));
    cursor.SetCreator(text("ogle"));
    cursor.SetComment(text("new"));
}

class CursorWithFaults : public StoreWithFaults, public testing::WithParamInterface<Kind> {};

INSTANTIATE_TEST_SUITE_P(Store, CursorWithFaults, testing::Values(Kind::registry, Kind::allocation),
                         [](const auto& kind) { return kind.param == Kind::registry ? "calls" : "memory"; });

/// An operation on a new cursor, and what that holds afterwards.
std::function<int()> onNewCursor(std::string& held, int (*operation)(CExtensionMap&)) {
    return [&held, operation] {
        CExtensionMap cursor;
        const int result = operation(cursor);
        held = heldBy(cursor);
        return result;
    };
}

TEST_P(CursorWithFaults, APassFetchesWholeMappingsOnly) {
    std::vector<std::string> found;
    const auto walk = [&found] {
        found.clear();
        CExtensionMap cursor;
        for (int more = cursor.First(); more; more = cursor.Next()) found.push_back(heldBy(cursor));
        EXPECT_EQ(cursor.Next(), 0);
        EXPECT_EQ(heldBy(cursor), found.empty() ? "(none) (none) (none) (none)" : found.back());
        return static_cast<int>(found.size());
    };
    withEachCallFailing(GetParam(), walk, [&found](std::size_t, int) {
        for (const std::string& mapping : found)
            EXPECT_THAT(mapping, AnyOf(".tmx-a TEXT ttxt old", ".tmx-a TEXT ttxt (none)", ".tmx-b PICT ogle (none)"));
    });
    EXPECT_THAT(found, ElementsAre(".tmx-a TEXT ttxt old", ".tmx-b PICT ogle (none)"));
}

TEST_P(CursorWithFaults, FirstCTHoldsTheOldOrTheWantedCodes) {
    std::string held;
    const auto first =
        onNewCursor(held, [](CExtensionMap& cursor) { return cursor.FirstCT(text("ttxt"), text("TEXT")); });
    withEachCallFailing(GetParam(), first, [&held](std::size_t n, int result) {
        if (result)
            EXPECT_THAT(held, AnyOf(".tmx-a TEXT ttxt old", ".tmx-a TEXT ttxt (none)")) << n;
        else
            EXPECT_THAT(held,
                        AnyOf("(none) (none) (none) (none)", "(none) TEXT ttxt (none)", ".tmx-b TEXT ttxt (none)"))
                << n;
    });
    EXPECT_EQ(held, ".tmx-a TEXT ttxt old");
}

TEST_P(CursorWithFaults, FindLoadsBothCodesOrNeither) {
    std::string held;
    const auto find = onNewCursor(held, [](CExtensionMap& cursor) { return cursor.Find(text("tmx-a")); });
    withEachCallFailing(GetParam(), find, [&held](std::size_t, int result) {
        EXPECT_EQ(result, 0);
        EXPECT_EQ(held, "(none) (none) (none) (none)");
    });
    EXPECT_EQ(held, "(none) TEXT ttxt (none)");
}

TEST_P(CursorWithFaults, CreateWritesNoCommentWithoutBothCodes) {
    CExtensionMap cursor;
    holdNew(cursor);
    withEachCallFailing(
        GetParam(), [&cursor] { return cursor.Create(); },
        [](std::size_t, int result) {
            if (result)
                EXPECT_EQ(mappingOf(".tmx-a"), "PICT ogle old") << "only the comment was not written";
            else
                EXPECT_THAT(mappingOf(".tmx-a"), AnyOf("TEXT ttxt old", "TEXT ogle old"));
        });
    EXPECT_EQ(mappingOf(".tmx-a"), "PICT ogle new");
    EXPECT_EQ(heldBy(cursor), ".tmx-a PICT ogle new");
}

TEST_P(CursorWithFaults, DeleteAnswersWhetherTheKeyOpened) {
    CExtensionMap cursor;
    holdNew(cursor);
    withEachCallFailing(
        GetParam(), [&cursor] { return cursor.Delete(); },
        [](std::size_t n, int result) {
            EXPECT_EQ(result, n != 1);
            EXPECT_EQ(mappingOf(".tmx-a") == "TEXT ttxt old", n == 1);
        });
    EXPECT_EQ(mappingOf(".tmx-a"), "(none) (none) (none)");
}

TEST_P(CursorWithFaults, NoStaleCodeIsHeldAfterwards) {
    for (std::size_t n = 1; n <= 6; ++n) {
        CExtensionMap cursor;
        holdNew(cursor);
        standin::clearFaults();
        standin::failNth(GetParam(), n);
        cursor.Default();
        EXPECT_THAT(shown(cursor.Type()), AnyOf("TEXT", "(none)"));
        EXPECT_THAT(shown(cursor.Creator()), AnyOf("dosa", "(none)"));
        standin::clearFaults();
        standin::failNth(Kind::allocation, 1);
        cursor.SetComment(text("newer"));
        EXPECT_EQ(cursor.Comment(), nullptr);
        standin::clearFaults();
    }
}

TEST_F(StoreWithFaults, KeysThatMayNotBeOpenedAreMissing) {
    givenMapping(".tmx-a", "TEXT", "ttxt", "old");
    givenMapping(".tmx-b", "TEXT", "ttxt", "old");
    ASSERT_TRUE(standin::denyAccess(HKEY_CLASSES_ROOT, ".tmx-a"));
    Record record;
    EXPECT_EQ(GetExtMap(&record), 0);
    EXPECT_EQ(HasExtMap(record.name), 0);
    EXPECT_EQ(AddExtMap(&record), 0);
    EXPECT_EQ(RemoveExtMap(record.name), 1);
    EXPECT_EQ(EnumExtMap(&record), 1);
    EXPECT_STREQ(record.extension, "tmx-b");
    EXPECT_EQ(EnumExtMap(&record), 0);
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
    GetDefaultExtMap(&record);
    EXPECT_STREQ(record.type, "TEXT");
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
