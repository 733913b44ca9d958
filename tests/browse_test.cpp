// Paths and filters of the file dialog, under a table without lead bytes and under that of code page 932, where a trail
// byte may be a backslash (0x5C) or a bar (0x7C).
#include <gmock/gmock.h>

#include <cstring>
#include <string>

#include "dialogs/browse_paths.h"

namespace {

using namespace std::string_literals;

tamrix::LeadByteTable tableOf932() {
    tamrix::LeadByteTable table = {};
    for (int byte = 0x81; byte <= 0xFC; ++byte) table.isLead[byte] = byte <= 0x9F || byte >= 0xE0;
    table.hasLeadBytes = 1;
    return table;
}

const tamrix::LeadByteTable kSingleByte = {};
const tamrix::LeadByteTable kJapanese = tableOf932();

TEST(Browse, SplitsTheInitialPath) {
    const struct {
        const char* reason;
        std::string path;
        const char* folder;
        const char* name;  // null: none
        const tamrix::LeadByteTable& table = kSingleByte;
    } rows[] = {
        {"folder and file", "D:\\Data\\old.txt", "D:\\Data", "old.txt"},
        {"a root's file", "D:\\old.txt", "D:", "old.txt"},
        {"ends in a backslash", "D:\\Data\\", "D:\\Data", ""},
        {"no backslash", "old.txt", "", nullptr},
        {"empty", "", "", nullptr},
        {"hyo and so end in a backslash byte", "D:\\\x95\\\x83\\.txt", "D:", "\x95\\\x83\\.txt", kJapanese},
        {"nothing but such bytes", "\x95\\\x83\\", "", nullptr, kJapanese},
        {"the same bytes in a single-byte code page", "\x95\\\x83\\x", "\x95\\\x83", "x"},
    };
    for (auto row : rows) {
        SCOPED_TRACE(row.reason);
        EXPECT_STREQ(tamrix::splitInitialPath(row.path.data(), row.table), row.name);
        EXPECT_STREQ(row.path.c_str(), row.folder);
    }
}

TEST(Browse, CutsThePlaceholder) {
    constexpr char kPlaceholder[] = "{Selecting a folder}";
    const struct {
        const char* reason;
        std::string path;
        const char* result;
        const tamrix::LeadByteTable& table = kSingleByte;
    } rows[] = {
        {"a folder", "D:\\Data\\Sub\\"s + kPlaceholder, "D:\\Data\\Sub"},
        {"a drive's root", "D:\\"s + kPlaceholder, "D:\\"},
        {"a share's root", "\\\\server\\share\\"s + kPlaceholder, "\\\\server\\share"},
        {"another name", "D:\\Data\\report.txt", "D:\\Data\\report.txt"},
        {"another letter case", "D:\\Data\\{selecting a folder}", "D:\\Data\\{selecting a folder}"},
        {"longer than the placeholder", "D:\\Data\\"s + kPlaceholder + ".txt", "D:\\Data\\{Selecting a folder}.txt"},
        {"no backslash", kPlaceholder, kPlaceholder},
        {"a folder named so, that ends in a backslash byte", "D:\\\x83\\\\"s + kPlaceholder, "D:\\\x83\\", kJapanese},
        {"only a trail byte before it", "\x83\\"s + kPlaceholder, "\x83\\{Selecting a folder}", kJapanese},
    };
    for (auto row : rows) {
        SCOPED_TRACE(row.reason);
        tamrix::cutPlaceholder(row.path.data(), kPlaceholder, row.table);
        EXPECT_STREQ(row.path.c_str(), row.result);
    }
}

TEST(Browse, SplitsFilters) {
    const struct {
        const char* reason;
        std::string filter;
        std::string list;
        const tamrix::LeadByteTable& table = kSingleByte;
    } rows[] = {
        {"two pairs", "Text|*.txt|All|*.*|", "Text\0*.txt\0All\0*.*\0"s},
        {"no closing bar", "Text|*.txt", "Text\0*.txt"s},
        {"empty", "", ""},
        {"zeros from the start, and a bar behind one", "Text\0*.txt\0A|l\0*.*\0"s, "Text\0*.txt\0A|l\0*.*\0"s},
        {"a bar as a trail byte", "\x83|a|*.*|", "\x83|a\0*.*\0"s, kJapanese},
        {"the same bytes in a single-byte code page", "\x83|a|", "\x83\0a\0"s},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        std::string filter = row.filter;
        filter.resize(24);
        std::string expected = row.list;
        expected.resize(24);
        tamrix::splitFilter(filter.data(), 24, row.table);
        EXPECT_EQ(filter, expected);
    }
}

// Whatever follows in memory, the list ends inside its buffer, at a character.
TEST(Browse, ClosesAFilterThatFillsItsBuffer) {
    const struct {
        std::string filter;  // seven bytes and the terminator
        std::string list;
        const tamrix::LeadByteTable& table;
    } rows[] = {
        {"A|*.abc", "A\0*.ab\0\0"s, kSingleByte},     {"A|*.ab|", "A\0*.ab\0\0"s, kSingleByte},
        {"A|*.a\x83|", "A\0*.a\0\0\0"s, kJapanese},   {"A|*.\x83||", "A\0*.\x83|\0\0"s, kJapanese},
        {"A\0*.a\x83|"s, "A\0*.a\0\0\0"s, kJapanese},
    };
    for (const auto& row : rows) {
        std::string buffer = row.filter;
        buffer.resize(8);
        tamrix::splitFilter(buffer.data(), 8, row.table);
        EXPECT_EQ(buffer, row.list);
    }
}

}  // namespace
