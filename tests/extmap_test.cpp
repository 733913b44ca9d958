// The flat functions of the extension store, on the stand-in's registry and on the real one.
#include "tamrix32/extmap.h"

#include <gmock/gmock.h>

#include <tuple>

#include "extmap/extension_key.h"
#include "extmap_records.h"

namespace {

using namespace extmap_store;
using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

int remove(const std::string& extension) {
    return RemoveExtMap(text(extension.c_str()));
}

/// Our extensions as an enumeration hands them out; each is heard of while the enumeration stands at it.
std::vector<std::string> enumerated(
    Record& record, int (*next)(SExtensionMap*) = EnumExtMap, void (*hear)(const Record&) = [](const Record&) {}) {
    const SExtensionMap given = record;
    std::vector<std::string> extensions;
    while (next(&record)) {
        // A name that lost a letter for its dot would be ours, too.
        if (!isOurs(record.extension) && !isOurs("t"s + record.extension)) continue;
        extensions.emplace_back(record.extension);
        hear(record);
    }
    EXPECT_EQ(record.extension, given.extension);
    EXPECT_EQ(record.type, given.type);
    EXPECT_EQ(record.creator, given.creator);
    return extensions;
}

using ExtensionStore = StoreTest;

TEST_F(ExtensionStore, AddsUnderTheExtensionsKeyAndRefusesBeforeItTouchesAnything) {
    const struct {
        const char *extension, *type, *creator;
    } refused[] = {{"tmx-a", "TEX", "ttxt"},   {"tmx-a", "TEXTS", "ttxt"}, {"tmx-a", "TEXT", ""},
                   {"tmx-a", nullptr, "ttxt"}, {"tmx-a", "TEXT", nullptr}, {"", "TEXT", "ttxt"},
                   {nullptr, "TEXT", "ttxt"}};
    for (const auto& row : refused) EXPECT_EQ(add(row.extension, row.type, row.creator), 0) << &row - refused;
    EXPECT_FALSE(exists(".tmx-a"));
    EXPECT_FALSE(exists("."));
    EXPECT_EQ(add("tmx-a", "TEXT", "ttxt", "a comment"), 1);
    EXPECT_EQ(mappingOf(".tmx-a"), "TEXT ttxt a comment");
    EXPECT_EQ(add(".tmx-a", "PICT", "\x80\xFF z"), 1);
    EXPECT_EQ(mappingOf(".tmx-a"), "PICT \x80\xFF z a comment") << "an absent comment leaves the old one";
    EXPECT_EQ(add("tmx-45678901234567890", "TEXT", "ttxt"), 1);
    EXPECT_TRUE(exists(".tmx-45678901234")) << "a dot and the first 15 bytes";
    EXPECT_EQ(add(".tmx-45678901234567890", "TEXT", "ttxt"), 1);
    EXPECT_TRUE(exists(".tmx-45678901234567890")) << "with a dot it is the key's name at any length";
}

TEST_F(ExtensionStore, ReadsCompleteMappingsAndWhatHasABuffer) {
    givenMapping(".tmx-a", "TEXT", "ttxt", "note");
    EXPECT_EQ(got("tmx-a"), "TEXT ttxt note");
    EXPECT_EQ(got(".TMX-A"), "TEXT ttxt note") << "the registry matches names in any case";
    givenValue(HKEY_CLASSES_ROOT, ".tmx-a", "Mac Creator", REG_BINARY, "ttxt");
    Record record("tmx-a");
    record.creator = nullptr;
    record.comment = nullptr;
    EXPECT_EQ(GetExtMap(&record), 1) << "only what has a buffer is asked for";
    EXPECT_STREQ(record.type, "TEXT");
    givenText(".tmx-half", "Mac Type", "TEXT");
    for (const char* extension : {".tmx-half", ".tmx-missing"}) {
        EXPECT_EQ(got(extension), "none");
        EXPECT_EQ(HasExtMap(text(extension)), 0);
    }
    EXPECT_EQ(HasExtMap(nullptr), 0);
}

TEST_F(ExtensionStore, CommentsComeWholeOrNotAtAll) {
    givenMapping(".tmx-a", "TEXT", "ttxt", "12345");
    for (const unsigned size : {1U, 5U, 6U, 7U, 0U}) {
        Record record("tmx-a");
        record.commentSize = size;
        EXPECT_EQ(GetExtMap(&record), 1);
        EXPECT_STREQ(record.comment, size == 0 || size >= 6 ? "12345" : "") << size;
        EXPECT_EQ(record.comment[size ? size : 256], '~') << "wrote behind " << size << " bytes";
    }
    const std::string full(255, 'c');
    const struct {
        const char* reason;
        DWORD type;
        std::string bytes, comment;
    } rows[] = {{"as long as the buffer", REG_SZ, full + '\0', full},
                {"too long", REG_SZ, full + "c\0"s, ""},
                {"without a terminator", REG_SZ, "unended", "unended"},
                {"fills the buffer without a terminator", REG_SZ, full + 'c', ""},
                {"bytes", REG_BINARY, "bytes", ""}};
    for (const auto& row : rows) {
        givenValue(HKEY_CLASSES_ROOT, ".tmx-a", "Mac Comment", row.type, row.bytes);
        EXPECT_EQ(got(".tmx-a"), "TEXT ttxt " + row.comment) << row.reason;
    }
}

TEST_F(ExtensionStore, RemovesTheMappingAndAKeyThatHoldsNothingElse) {
    const std::string longText(40, 'c');  // longer than the buffers that look for content
    const struct {
        const char* reason;
        std::string path, name, value;
    } rows[] = {{"a file class", ".tmx-a", "", "txtfile"},
                {"a long file class", ".tmx-a", "", longText},
                {"an empty unnamed value is a value", ".tmx-a", "", ""},
                {"a value with a long name", ".tmx-a", longText, ""},
                {"a subkey", ".tmx-a\\below", "", ""}};
    for (const auto& row : rows) {
        removeOurKeys();
        givenMapping(".tmx-a", "TEXT", "ttxt", "note");
        givenText(row.path, row.name.c_str(), row.value);
        EXPECT_EQ(remove(".tmx-a"), 1);
        EXPECT_TRUE(exists(".tmx-a")) << row.reason;
        EXPECT_EQ(mappingOf(".tmx-a"), "(none) (none) (none)") << row.reason;
    }
    removeOurKeys();
    givenMapping(".tmx-a", "TEXT", "ttxt", "note");
    for (const char* reason : {"removed", "nothing to remove"}) {
        EXPECT_EQ(remove("tmx-a"), 1) << reason;
        EXPECT_FALSE(exists(".tmx-a")) << reason;
    }
    EXPECT_EQ(RemoveExtMap(nullptr), 1);
}

TEST_F(ExtensionStore, EnumeratesEachCompleteMappingOnceAsFarAsItFits) {
    givenText(".tmx-half", "Mac Creator", "ttxt");
    const auto all = [](SExtensionMap map) {
        int count = 0;
        while (EnumExtMap(&map)) ++count;
        EXPECT_EQ(map.type, nullptr);
        EXPECT_EQ(map.creator, nullptr);
        return count;
    };
    const int before = all(SExtensionMap());
    for (const char* name : {".tmx-a", ".TMX-B", "tmx-nodot", ".tmx-nodot"}) givenMapping(name, "TEXT", "ttxt");
    for (const std::size_t length : {16U, 17U, 127U, 128U, 255U}) givenMapping(nameOfLength(length), "TEXT", "ttxt");
    EXPECT_EQ(all(SExtensionMap()) - before, 4) << "without any buffer";
    Record whole;
    EXPECT_THAT(enumerated(whole), UnorderedElementsAre("tmx-a", "TMX-B", "tmx-nodot", nameOfLength(16).substr(1)));
    removeOurKeys();
    givenMapping(nameOfLength(16), "TEXT", "ttxt");
    for (const auto& [size, handedOut] : {std::pair(4, "tmx"), std::pair(1, ""), std::pair(-1, "~~~~")}) {
        Record record;
        record.extensionSize = size;
        while (EnumExtMap(&record) && std::string_view(record.type) != "TEXT") {
        }
        EXPECT_EQ(std::string(record.extension).substr(0, 4), handedOut) << size;
    }
}

TEST_F(ExtensionStore, EnumeratesOneCreatorAndType) {
    givenMapping(".tmx-a", "TEXT", "dosa", "first");
    givenMapping(".tmx-b", "text", "dosa");
    givenMapping(".tmx-c", "TEXT", "DOSA");
    givenMapping(".tmx-d", "TEXT", "dosa");
    givenMapping(".tmx-e", "TEX\0"s, "dosa");
    const auto matches = [](std::string type, std::string creator) {
        Record record;
        record.type = type.data();
        record.creator = creator.data();
        return enumerated(record, EnumExtMapCT, [](const Record& found) {
            EXPECT_STREQ(found.comment, found.extension == "tmx-a"s ? "first" : "");
        });
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
    std::vector<std::string> found =
        enumerated(record, EnumExtMap, [](const Record& at) { RemoveExtMap(at.extension); });
    std::sort(found.begin(), found.end());
    EXPECT_EQ(std::unique(found.begin(), found.end()), found.end());
    EXPECT_GE(found.size(), 2U) << "the list moves up by one at each removal, no more";
}

TEST_F(ExtensionStore, DefaultsComeTogetherOrFallBackTogether) {
    const struct {
        const char *reason, *name;
        DWORD type;
        std::string bytes;
        const char* expected;
    } rows[] = {{"no creator", "Default Mac Type", REG_SZ, "BINA\0"s, "TEXT dosa"},
                {"both", "Default Mac Creator", REG_SZ, "hDmp\0"s, "BINA hDmp"},
                {"a type of 2 bytes", "Default Mac Type", REG_SZ, "BI\0"s, "TEXT dosa"},
                {"bytes instead of a string", "Default Mac Type", REG_BINARY, "BINA\0"s, "TEXT dosa"}};
    for (const auto& row : rows) {
        givenDefault(row.name, row.bytes, row.type);
        Record record;
        GetDefaultExtMap(&record);
        EXPECT_EQ(record.codes(), row.expected) << row.reason;
    }
    Record record;
    record.type = nullptr;
    GetDefaultExtMap(&record);
    EXPECT_STREQ(record.creator, "hDmp") << "a malformed type that nobody asked for doesn't matter";
    EXPECT_EQ(record.type, nullptr);
    record.creator = nullptr;
    GetDefaultExtMap(&record);
}

TEST_F(ExtensionStore, TheRecordBeginsEmptyAndCopiesPointers) {
    const auto fields = [](const SExtensionMap& m) {
        return std::tie(m.index, m.extension, m.type, m.creator, m.comment, m.extensionSize, m.commentSize);
    };
    alignas(SExtensionMap) unsigned char bytes[sizeof(SExtensionMap)];
    std::fill_n(bytes, sizeof bytes, static_cast<unsigned char>(0xFF));
    auto* map = new (bytes) SExtensionMap;
    char* const none = nullptr;
    EXPECT_TRUE(fields(*map) == std::tuple(0U, none, none, none, none, 0, 0U));
    Record full;
    full.index = 1;
    full.extensionSize = 5;
    full.commentSize = 6;
    *map = full;
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
