// What OK in the mapping editor does to the store.
#include "dialogs/mapping_changes.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "code_pages.h"

namespace tamrix {
namespace {

using Lines = std::vector<std::string>;

std::vector<KeyedLine> keyed(const Lines& texts) {
    std::vector<KeyedLine> lines;
    for (const auto& text : texts) lines.push_back(keyedLine(copiedText(text.c_str()), foldKeyName));
    return lines;
}

TEST(MappingChanges, WriteAddedLinesThenRemoveMissingKeys) {
    const struct {
        Lines listed, now;
        Lines done;
        const char* reason;
    } rows[] = {
        {{".a", ".b\tx"}, {".a", ".b\tx"}, {}, "nothing was touched"},
        {{".a", ".b\tx"}, {".a\t", ".b\tx"}, {"+.a\t"}, "a comment that could not be read, added anew"},
        {{".a\tx"}, {".a\tw", ".a\tx"}, {}, "the lower line is the old one"},
        {{".a\tx"}, {".a\tx", ".A\ty"}, {"+.A\ty"}, "the lower line is the new one"},
        {{".b", ".d\tx"}, {".a\t1", ".A\t2", ".c\t"}, {"+.A\t2", "+.c\t", "-.b", "-.d\tx"}, "all at once"},
        {{".b\tx"}, {"B\tz"}, {"+B\tz"}, "a name without its dot"},
    };
    for (const auto& row : rows) {
        const auto listed = keyed(row.listed), now = keyed(row.now);
        Lines done;
        for (std::size_t i = 0; i < now.size(); ++i)
            if (isToBeWritten(now, i, listed)) done.push_back("+" + row.now[i]);
        for (const auto& line : listed)
            if (isToBeRemoved(line, now)) done.push_back(std::string("-") + line.line.get());
        EXPECT_EQ(done, row.done) << row.reason;
    }
}

TEST(MappingChanges, CompareNamesAsTheRegistryDoes) {
    EXPECT_EQ(keyedLine(copiedText(".txt"), [](char*) { return false; }).key, nullptr);
    EXPECT_EQ(keyedLine(nullptr, foldKeyName).key, nullptr);
    if (testing_support::useCodePage(932)) {
        EXPECT_STREQ(keyed({".\x83\x61\x82\x81"})[0].key.get(), ".\x83\x61\x82\x60") << "a trail byte, a wide a";
    }
    if (!testing_support::useCodePage(1252)) return;
    EXPECT_STREQ(keyed({"tar.\xE4\tx"})[0].key.get(), ".TAR.\xC4");
}

}  // namespace
}  // namespace tamrix
