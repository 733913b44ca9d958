// The flat functions of the extension store, on the stand-in's registry and on the real one.
#include "tamrix32/extmap.h"

#include <gmock/gmock.h>

#include <tuple>

#include "extmap/extension_key.h"
#include "extmap_store.h"

namespace {

using namespace extmap_store;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

/// A record with buffers of its own, each followed by bytes that nobody may touch.
struct Record : SExtensionMap {
    char extensionBuffer[24];
    char typeBuffer[8];
    char creatorBuffer[8];
    char commentBuffer[264];

    Record() {
        for (auto [buffer, size] :
             {std::pair(extensionBuffer, sizeof extensionBuffer), std::pair(typeBuffer, sizeof typeBuffer),
              std::pair(creatorBuffer, sizeof creatorBuffer), std::pair(commentBuffer, sizeof commentBuffer)})
            std::fill_n(buffer, size, '~');
        type = typeBuffer;
        creator = creatorBuffer;
        comment = commentBuffer;
    }
    ~Record() {
        EXPECT_EQ(std::string(typeBuffer + 5, 3), "~~~");
        EXPECT_EQ(std::string(creatorBuffer + 5, 3), "~~~");
        EXPECT_EQ(std::string(extensionBuffer + 16, 8), "~~~~~~~~");
        EXPECT_EQ(std::string(commentBuffer + 256, 8), "~~~~~~~~");
    }
};

int add(const char* extension, const char* type, const char* creator, const char* comment = nullptr) {
    SExtensionMap map;
    map.extension = const_cast<char*>(extension);
    map.type = const_cast<char*>(type);
    map.creator = const_cast<char*>(creator);
    map.comment = const_cast<char*>(comment);
    return AddExtMap(&map);
}

/// "type creator comment" of a complete mapping, else "none".
std::string got(const std::string& extension) {
    Record record;
    record.extension = const_cast<char*>(extension.c_str());
    if (!GetExtMap(&record)) return "none";
    return std::string(record.type) + ' ' + record.creator + ' ' + record.comment;
}

int has(const std::string& extension) {
    return HasExtMap(const_cast<char*>(extension.c_str()));
}

int remove(const std::string& extension) {
    return RemoveExtMap(const_cast<char*>(extension.c_str()));
}

/// Our extensions as an enumeration hands them out.
std::vector<std::string> enumerated() {
    Record record;
    record.extension = record.extensionBuffer;
    std::vector<std::string> extensions;
    while (EnumExtMap(&record))
        // A name that lost a letter for its dot would be ours, too.
        if (isOurs(record.extension) || isOurs(std::string("t") + record.extension))
            extensions.emplace_back(record.extension);
    EXPECT_EQ(record.extension, record.extensionBuffer);
    EXPECT_EQ(record.type, record.typeBuffer);
    return extensions;
}

using ExtensionStore = StoreTest;

TEST_F(ExtensionStore, AddsUnderTheExtensionsKey) {
    EXPECT_EQ(add("tmx-a", "TEXT", "ttxt", "a comment"), 1);
    EXPECT_EQ(mappingOf(".tmx-a"), "TEXT ttxt a comment");
    EXPECT_EQ(add(".tmx-a", "PICT", "\x80\xFF z"), 1);
    EXPECT_EQ(mappingOf(".tmx-a"), "PICT \x80\xFF z a comment") << "an absent comment leaves the old one";
    EXPECT_EQ(add("tmx-45678901234567890", "TEXT", "ttxt"), 1);
    EXPECT_TRUE(exists(".tmx-45678901234")) << "a dot and the first 15 bytes";
    EXPECT_EQ(add(".tmx-45678901234567890", "TEXT", "ttxt"), 1);
    EXPECT_TRUE(exists(".tmx-45678901234567890")) << "with a dot it is the key's name at any length";
}

TEST_F(ExtensionStore, AddRefusesBeforeItTouchesAnything) {
    EXPECT_EQ(add("tmx-a", "TEX", "ttxt"), 0);
    EXPECT_EQ(add("tmx-a", "TEXTS", "ttxt"), 0);
    EXPECT_EQ(add("tmx-a", "TEXT", ""), 0);
    EXPECT_EQ(add("tmx-a", nullptr, "ttxt"), 0);
    EXPECT_EQ(add("tmx-a", "TEXT", nullptr), 0);
    EXPECT_EQ(add("", "TEXT", "ttxt"), 0);
    EXPECT_EQ(add(nullptr, "TEXT", "ttxt"), 0);
    EXPECT_FALSE(exists(".tmx-a"));
    EXPECT_FALSE(exists("."));
}

TEST_F(ExtensionStore, ReadsCompleteMappingsOnly) {
    givenMapping(".tmx-a", "TEXT", "ttxt", "note");
    EXPECT_EQ(got("tmx-a"), "TEXT ttxt note");
    EXPECT_EQ(got(".TMX-A"), "TEXT ttxt note") << "the registry matches names in any case";
    givenMapping(".tmx-b", "TEXT", "ttxt");
    EXPECT_EQ(got(".tmx-b"), "TEXT ttxt ");
    EXPECT_EQ(has("tmx-b"), 1);
    givenText(".tmx-half", "Mac Type", "TEXT");
    EXPECT_EQ(got(".tmx-half"), "none");
    EXPECT_EQ(has(".tmx-half"), 0);
    EXPECT_EQ(got(".tmx-missing"), "none");
    EXPECT_EQ(HasExtMap(nullptr), 0);
    Record record;
    EXPECT_EQ(GetExtMap(&record), 0) << "no extension";
}

TEST_F(ExtensionStore, ReadsWithoutSomeBuffers) {
    givenMapping(".tmx-a", "TEXT", "ttxt", "note");
    givenValue(HKEY_CLASSES_ROOT, ".tmx-a", "Mac Creator", REG_BINARY, "ttxt");
    Record record;
    record.extension = const_cast<char*>("tmx-a");
    record.creator = nullptr;
    record.comment = nullptr;
    EXPECT_EQ(GetExtMap(&record), 1) << "only what has a buffer is asked for";
    EXPECT_STREQ(record.type, "TEXT");
}

struct HostileCode {
    const char* reason;
    DWORD type;
    std::string bytes;
    bool isComplete;
};

TEST_F(ExtensionStore, HostileCodesAreNoMapping) {
    using namespace std::string_literals;
    const HostileCode rows[] = {
        {"two bytes and the terminator", REG_SZ, "TE\0"s, false},
        {"five bytes and the terminator", REG_SZ, "TEXTS\0"s, false},
        {"128 bytes", REG_SZ, std::string(127, 'T') + '\0', false},
        {"129 bytes", REG_SZ, std::string(128, 'T') + '\0', false},
        {"nothing", REG_SZ, "", false},
        {"four bytes without a terminator", REG_SZ, "TEXT", false},
        {"five bytes without a terminator give the first four", REG_SZ, "TEXTS", true},
        {"bytes", REG_BINARY, "TEXT\0"s, false},
        {"a number", REG_DWORD, "TEXT", false},
        {"an expandable string", REG_EXPAND_SZ, "TEXT\0"s, false},
        {"a list of strings", REG_MULTI_SZ, "TEX\0\0"s, false},
    };
    for (const HostileCode& row : rows) {
        givenMapping(".tmx-a", "TEXT", "TEXT");
        givenValue(HKEY_CLASSES_ROOT, ".tmx-a", "Mac Type", row.type, row.bytes);
        EXPECT_EQ(got(".tmx-a"), row.isComplete ? "TEXT TEXT " : "none") << row.reason << ", as the type";
        EXPECT_EQ(has(".tmx-a"), row.isComplete) << row.reason << ", as the type";
        givenMapping(".tmx-a", "TEXT", "TEXT");
        givenValue(HKEY_CLASSES_ROOT, ".tmx-a", "Mac Creator", row.type, row.bytes);
        EXPECT_EQ(got(".tmx-a"), row.isComplete ? "TEXT TEXT " : "none") << row.reason << ", as the creator";
        EXPECT_EQ(enumerated().size(), row.isComplete) << row.reason;
    }
}

TEST_F(ExtensionStore, CommentsComeWholeOrNotAtAll) {
    givenMapping(".tmx-a", "TEXT", "ttxt", "12345");
    for (const unsigned size : {1U, 5U, 6U, 7U, 0U}) {
        Record record;
        record.extension = const_cast<char*>("tmx-a");
        record.commentSize = size;
        EXPECT_EQ(GetExtMap(&record), 1);
        EXPECT_STREQ(record.comment, size == 0 || size >= 6 ? "12345" : "") << size;
        EXPECT_EQ(record.comment[size ? size : 256], '~') << "wrote behind " << size << " bytes";
    }
    givenText(".tmx-a", "Mac Comment", std::string(255, 'c'));
    EXPECT_EQ(got(".tmx-a"), "TEXT ttxt " + std::string(255, 'c'));
    givenText(".tmx-a", "Mac Comment", std::string(256, 'c'));
    EXPECT_EQ(got(".tmx-a"), "TEXT ttxt ");
    givenValue(HKEY_CLASSES_ROOT, ".tmx-a", "Mac Comment", REG_SZ, "no terminator");
    EXPECT_EQ(got(".tmx-a"), "TEXT ttxt no terminator");
    givenValue(HKEY_CLASSES_ROOT, ".tmx-a", "Mac Comment", REG_SZ, std::string(256, 'c'));
    EXPECT_EQ(got(".tmx-a"), "TEXT ttxt ") << "fills the buffer without a terminator";
    givenValue(HKEY_CLASSES_ROOT, ".tmx-a", "Mac Comment", REG_BINARY, "bytes");
    EXPECT_EQ(got(".tmx-a"), "TEXT ttxt ");
}

TEST_F(ExtensionStore, RemovesTheMappingAndAnEmptyKey) {
    givenMapping(".tmx-a", "TEXT", "ttxt", "note");
    EXPECT_EQ(remove("tmx-a"), 1);
    EXPECT_FALSE(exists(".tmx-a"));
    EXPECT_EQ(remove(".tmx-a"), 1) << "nothing to remove";
    EXPECT_EQ(RemoveExtMap(nullptr), 1);
}

TEST_F(ExtensionStore, RemoveLeavesWhateverElseAKeyHolds) {
    const auto removeFrom = [](const char* reason) {
        EXPECT_EQ(remove(".tmx-a"), 1);
        EXPECT_TRUE(exists(".tmx-a")) << reason;
        EXPECT_EQ(mappingOf(".tmx-a"), "(none) (none) (none)") << reason;
        removeOurKeys();
        givenMapping(".tmx-a", "TEXT", "ttxt", "note");
    };
    givenMapping(".tmx-a", "TEXT", "ttxt", "note");
    givenText(".tmx-a", "", "txtfile");
    removeFrom("a file class");
    givenText(".tmx-a", "", std::string(40, 'c'));
    removeFrom("a file class longer than the buffer");
    givenText(".tmx-a", "", "");
    removeFrom("an empty unnamed value is a value");
    givenText(".tmx-a", std::string(40, 'n').c_str(), "");
    removeFrom("a value with a name longer than the buffer");
    givenValue(HKEY_CLASSES_ROOT, ".tmx-a\\below", "", REG_SZ, "");
    removeFrom("a subkey");
}

TEST_F(ExtensionStore, EnumeratesEachCompleteMappingOnce) {
    givenMapping(".tmx-a", "TEXT", "ttxt");
    givenMapping(".TMX-B", "PICT", "ogle");
    givenMapping("tmx-nodot", "TEXT", "ttxt");
    givenMapping(".tmx-nodot", "TEXT", "ttxt");
    givenText(".tmx-half", "Mac Creator", "ttxt");
    for (const std::size_t length : {16U, 17U, 127U, 128U, 255U}) givenMapping(nameOfLength(length), "TEXT", "ttxt");
    EXPECT_THAT(enumerated(), UnorderedElementsAre("tmx-a", "TMX-B", "tmx-nodot", nameOfLength(16).substr(1)));
}

TEST_F(ExtensionStore, EnumerationWorksWithoutBuffers) {
    givenMapping(".tmx-a", "TEXT", "ttxt");
    givenText(".tmx-half", "Mac Type", "TEXT");
    SExtensionMap bare;
    const auto all = [](SExtensionMap map) {
        int count = 0;
        while (EnumExtMap(&map)) ++count;
        EXPECT_EQ(map.type, nullptr);
        EXPECT_EQ(map.creator, nullptr);
        return count;
    };
    const int with = all(bare);
    remove("tmx-a");
    EXPECT_EQ(with - all(bare), 1);
}

TEST_F(ExtensionStore, HandsOutAsMuchOfAnExtensionAsFits) {
    givenMapping(nameOfLength(16), "TEXT", "ttxt");
    for (const auto& [size, text] :
         {std::pair(4, "tmx"), std::pair(1, ""), std::pair(0, "tmx-xxxxxxxxxxx"), std::pair(-1, "~~~~")}) {
        Record record;
        record.extension = record.extensionBuffer;
        record.extensionSize = size;
        while (EnumExtMap(&record) && std::string_view(record.type) != "TEXT") {
        }
        EXPECT_EQ(std::string(record.extension).substr(0, size < 0 ? 4 : 16), text) << size;
    }
}

TEST_F(ExtensionStore, EnumeratesOneCreatorAndType) {
    givenMapping(".tmx-a", "TEXT", "dosa", "first");
    givenMapping(".tmx-b", "text", "dosa");
    givenMapping(".tmx-c", "TEXT", "DOSA");
    givenMapping(".tmx-d", "TEXT", "dosa");
    givenMapping(".tmx-e", std::string("TEX\0", 4), "dosa");
    const auto matches = [](const char* type, const char* creator) {
        Record record;
        record.extension = record.extensionBuffer;
        std::string wantedType = type;
        std::string wantedCreator = creator;
        record.type = wantedType.data();
        record.creator = wantedCreator.data();
        std::vector<std::string> found;
        while (EnumExtMapCT(&record)) {
            EXPECT_STREQ(record.comment, record.extension == std::string("tmx-a") ? "first" : "");
            if (isOurs(record.extension)) found.emplace_back(record.extension);
            EXPECT_EQ(wantedType, type);
        }
        EXPECT_EQ(record.type, wantedType.data());
        EXPECT_EQ(record.creator, wantedCreator.data());
        return found;
    };
    EXPECT_THAT(matches("TEXT", "dosa"), UnorderedElementsAre("tmx-a", "tmx-d"));
    EXPECT_THAT(matches("TEXTS", "dosa behind"), UnorderedElementsAre("tmx-a", "tmx-d")) << "four bytes count";
    EXPECT_THAT(matches("text", "dosa"), ElementsAre("tmx-b"));
    EXPECT_THAT(matches("TEX", "dosa"), IsEmpty());
    EXPECT_THAT(matches("", ""), IsEmpty());
    Record record;
    record.creator = nullptr;
    EXPECT_EQ(EnumExtMapCT(&record), 0);
    EXPECT_EQ(record.index, 0U);
}

TEST_F(ExtensionStore, AKeyDeletedDuringAnEnumerationEndsNothing) {
    for (const char* extension : {".tmx-a", ".tmx-b", ".tmx-c", ".tmx-d"}) givenMapping(extension, "TEXT", "ttxt");
    Record record;
    record.extension = record.extensionBuffer;
    std::vector<std::string> found;
    while (EnumExtMap(&record)) {
        if (!isOurs(record.extension)) continue;
        found.emplace_back(record.extension);
        remove(record.extension);
    }
    std::sort(found.begin(), found.end());
    EXPECT_EQ(std::unique(found.begin(), found.end()), found.end());
    EXPECT_GE(found.size(), 2U) << "the list moves up by one at each removal, no more";
}

TEST_F(ExtensionStore, DefaultsComeTogetherOrFallBackTogether) {
    using namespace std::string_literals;
    const auto defaults = [] {
        Record record;
        GetDefaultExtMap(&record);
        return std::string(record.type) + ' ' + record.creator;
    };
    EXPECT_EQ(defaults(), "TEXT dosa") << "none configured";
    givenDefault("Default Mac Type", "BINA\0"s);
    EXPECT_EQ(defaults(), "TEXT dosa") << "no creator";
    givenDefault("Default Mac Creator", "hDmp\0"s);
    EXPECT_EQ(defaults(), "BINA hDmp");
    givenDefault("Default Mac Type", "BI\0"s);
    EXPECT_EQ(defaults(), "TEXT dosa") << "a type of 3 bytes";
    givenDefault("Default Mac Type", "BINA\0"s, REG_BINARY);
    EXPECT_EQ(defaults(), "TEXT dosa") << "bytes instead of a string";

    SExtensionMap map;
    GetDefaultExtMap(&map);
    char creator[5];
    map.creator = creator;
    GetDefaultExtMap(&map);
    EXPECT_STREQ(creator, "hDmp") << "a malformed type that nobody asked for doesn't matter";
    EXPECT_EQ(map.type, nullptr);
}

TEST_F(ExtensionStore, TheRecordBeginsEmptyAndCopiesPointers) {
    alignas(SExtensionMap) unsigned char bytes[sizeof(SExtensionMap)];
    std::fill_n(bytes, sizeof bytes, static_cast<unsigned char>(0xFF));
    auto* map = new (bytes) SExtensionMap;
    EXPECT_EQ(map->index, 0U);
    EXPECT_EQ(map->extension, nullptr);
    EXPECT_EQ(map->type, nullptr);
    EXPECT_EQ(map->creator, nullptr);
    EXPECT_EQ(map->comment, nullptr);
    EXPECT_EQ(map->extensionSize, 0);
    EXPECT_EQ(map->commentSize, 0U);

    char buffers[4][5] = {};
    SExtensionMap full;
    full.index = 1;
    full.extension = buffers[0];
    full.type = buffers[1];
    full.creator = buffers[2];
    full.comment = buffers[3];
    full.extensionSize = 5;
    full.commentSize = 6;
    *map = full;
    const auto fields = [](const SExtensionMap& m) {
        return std::tie(m.index, m.extension, m.type, m.creator, m.comment, m.extensionSize, m.commentSize);
    };
    EXPECT_TRUE(fields(*map) == fields(full));
}

TEST(ExtensionKeyName, CutsOnlyWhatItPutsADotBefore) {
    tamrix::KeyNameBuffer buffer;
    EXPECT_STREQ(tamrix::extensionKeyName("txt", buffer), ".txt");
    EXPECT_STREQ(tamrix::extensionKeyName("", buffer), ".");
    EXPECT_STREQ(tamrix::extensionKeyName("123456789012345", buffer), ".123456789012345");
    EXPECT_STREQ(tamrix::extensionKeyName("1234567890123456", buffer), ".123456789012345");
    const char* dotted = ".1234567890123456";
    EXPECT_EQ(tamrix::extensionKeyName(dotted, buffer), dotted);
    EXPECT_EQ(tamrix::extensionKeyName(nullptr, buffer), nullptr);
}

}  // namespace
