// The flat functions of the extension store, on the stand-in's registry and on the real one.
#include "tamrix32/extmap.h"

#include <gmock/gmock.h>

#include <tuple>

#include "extmap_records.h"

namespace {

using namespace extmap_store;
using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;

int remove(const std::string& extension) {
    return RemoveExtMap(text(extension.c_str()));
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

TEST_F(ExtensionStore, ReadsWhatHasABufferAsFarAsItFits) {
    givenMapping(".tmx-a", "TEXT", "ttxt", "12345");
    for (const char* extension : {"tmx-a", ".TMX-A"}) EXPECT_EQ(got(extension), "TEXT ttxt 12345");
    EXPECT_EQ(got(".tmx-missing"), "none");
    EXPECT_EQ(HasExtMap(nullptr), 0);
    for (const unsigned size : {1U, 5U, 6U, 7U, 0U}) {
        Record record("tmx-a");
        record.commentSize = size;
        EXPECT_EQ(GetExtMap(&record), 1);
        EXPECT_STREQ(record.comment, size == 0 || size >= 6 ? "12345" : "") << size;
        EXPECT_EQ(record.comment[size ? size : 256], '~') << "wrote behind " << size << " bytes";
    }
    givenValue(HKEY_CLASSES_ROOT, ".tmx-a", "Mac Creator", REG_BINARY, "ttxt");
    Record record("tmx-a");
    record.creator = nullptr;
    record.comment = nullptr;
    EXPECT_EQ(GetExtMap(&record), 1) << "a malformed creator that nobody asked for";
    EXPECT_STREQ(record.type, "TEXT");
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

TEST_F(ExtensionStore, EnumeratesIntoWhatBuffersThereAre) {
    const auto all = [](SExtensionMap map) {
        int count = 0;
        while (EnumExtMap(&map)) ++count;
        EXPECT_EQ(map.type, nullptr);
        EXPECT_EQ(map.creator, nullptr);
        return count;
    };
    const int before = all(SExtensionMap());
    givenText(".tmx-half", "Mac Creator", "ttxt");
    givenText(".tmx-other", "Mac Type", "TEXT");
    for (const std::size_t length : {16U, 17U}) givenMapping(nameOfLength(length), "TEXT", "ttxt");
    EXPECT_EQ(all(SExtensionMap()) - before, 1) << "without any buffer";
    SExtensionMap atEnd;
    atEnd.index = ~0U;
    EXPECT_EQ(EnumExtMap(&atEnd), 0);
    EXPECT_EQ(atEnd.index, ~0U) << "the count does not begin anew";
    for (const auto& [size, handedOut] : {std::pair(4, "tmx"), std::pair(1, ""), std::pair(-1, "~~~~")}) {
        Record record;
        record.extensionSize = size;
        while (EnumExtMap(&record) && std::string_view(record.type) != "TEXT") {
        }
        EXPECT_EQ(std::string(record.extension).substr(0, 4), handedOut) << size;
    }
}

TEST_F(ExtensionStore, EnumeratesOneCreatorAndTypeByFourBytesOfEach) {
    givenMapping(".tmx-a", "TEXT", "dosa");
    givenMapping(".tmx-b", "TEX\0"s, "dosa");
    EXPECT_THAT(enumerated(EnumExtMapCT, "TEXTS", "dosa behind"), ElementsAre("tmx-a TEXTS dosa behind "));
    EXPECT_THAT(enumerated(EnumExtMapCT, "TEX", "dosa"), IsEmpty());
    EXPECT_THAT(enumerated(EnumExtMapCT), IsEmpty());
    for (char* SExtensionMap::*code : {&SExtensionMap::type, &SExtensionMap::creator}) {
        Record record;
        record.*code = nullptr;
        EXPECT_EQ(EnumExtMapCT(&record), 0);
        EXPECT_EQ(record.index, 0U);
    }
}

TEST_F(ExtensionStore, AKeyDeletedDuringAnEnumerationEndsNothing) {
    for (const char* extension : {".tmx-a", ".tmx-b", ".tmx-c", ".tmx-d"}) givenMapping(extension, "TEXT", "ttxt");
    auto found = enumerated(EnumExtMap, "", "", [](const Record& at) { RemoveExtMap(at.extension); });
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

}  // namespace
