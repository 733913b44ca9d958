// What the dialogs decide without a window: templates typed by hand, fonts, lines of the mapping editor and what is
// saved of them, paths and filters of the file dialog.
#include <gmock/gmock.h>

#include <vector>

#include "code_pages.h"
#include "dialogs/browse_paths.h"
#include "dialogs/font_choice.h"
#include "dialogs/mapping_changes.h"
#include "properties/templates.h"

namespace {

using namespace tamrix;
using namespace std::string_literals;
using properties::Exact;
using properties::Parsed;
using properties::wide;
using testing::ElementsAre;

const std::string kStandard(
    "\xC0\x20\xC8\x90\x01\x00\x02\x00"          // style with DS_SETFONT, extended style
    "\x02\x00\xFE\xFF\x28\x00\xB4\x00\x52\x00"  // two controls, x -2, y 40, 180 by 82
    "\xFF\xFF\x07\x00\x00\x00H\0i\0!\0\0\0"     // menu 7, the default class, "Hi!"
    "\x08\x00\x41\x00\x00\x00\x00\x00"          // 8 points, "A", two bytes to the next boundary
    "\x00\x00\x01\x50\x00\x00\x00\x00"          // a control's styles
    "\x5C\x00\x3F\x00\x28\x00\x0E\x00\x01\x00"  // its place and id
    "\xFF\xFF\x80\x00\x00\x00\x03\x00w\0"       // a button without a title, one byte of data, one to the boundary
    "\x00\x00\x01\x50\x00\x00\x00\x00"          // the next one
    "\x5C\x00\x3F\x00\x28\x00\x0E\x00\x02\x00"
    "\xFF\xFF\x82\x00\x00\x00\x01",  // whose data counts one byte: half of the word that says so
    93);

const std::string kExtended(
    "\x01\x00\xFF\xFF\x9A\x01\x00\x00\x00\x04\x00\x00"          // version, signature, help 410, extended style
    "\x48\x00\xC8\x80\x01\x00\x01\x00\x02\x00\x03\x00\x04\x00"  // style, one control, place and size
    "\x00\x00\x43\x00\x00\x00\x54\x00\x00\x00"                  // no menu, class "C", "T"
    "\x0A\x00\xBC\x02\x01\x80\x41\x00\x00\x00\x00\x00"  // 10 points, bold, italic, Shift-JIS, "A", two bytes more
    "\x2C\x01\x00\x00\x00\x00\x00\x00\x00\x00\x01\x50"  // a control's help id and styles
    "\x05\x00\x06\x00\x07\x00\x08\x00\x70\x11\x01\x00"  // its place and 32-bit id
    "\x58\x00\x00\x00\xFF\xFF\x02\x00\x01\x00w",        // class "X", title 2, one byte of data
    83);

TEST(DialogTemplate, IsReadAndWrittenAsThePlatformLaysItOut) {
    const struct {
        std::string bytes;
        int points, cx, cy;
    } rows[] = {{kStandard, 8, 180, 82}, {kExtended, 10, 3, 4}};
    for (const auto& row : rows) {
        const Parsed parsed(row.bytes + '\0');  // the platform reads all of the last word
        ASSERT_TRUE(parsed.dialog);
        const DialogTemplate& dialog = *parsed.dialog;
        EXPECT_THAT((std::vector<int>{dialog.pointSize, dialog.cx, dialog.cy}),
                    ElementsAre(row.points, row.cx, row.cy));
        EXPECT_THAT(dialog.face, ElementsAre('A', 0, 0, 0));
        EXPECT_EQ(parsed.written(), row.bytes);
    }
}

struct Font {
    std::string face;
    std::uint16_t points;
};

/// "face points", then "s" where the size may follow; "-" for what the template has.
std::string chosen(const char* face, std::uint32_t points, const Font& carried, const FontChoice& candidate) {
    const DialogTemplate dialog{.face = properties::bytesOf(carried.face), .pointSize = carried.points};
    const FontDecision decision = chooseFont(face, points, dialog, candidate);
    const auto& font = decision.font;
    return (font.face ? font.face + std::to_string(font.points) : "-") + (decision.sizeMayFollow ? " s" : "");
}

TEST(FontChoice, GoesFromConfiguredToDefaultToWhatTheTemplateCarries) {
    const FontChoice gui = {"Tahoma", 9}, none = {nullptr, 0};
    const Font authored = {wide("MS Sans Serif"), 8}, other = {wide("Courier"), 12}, missing = {"", 0};
    for (const auto& carried : {authored, other, missing})
        EXPECT_EQ(chosen("Arial", 10 + 65536, carried, gui), "Arial10 s") << "configured; the low 16 bits of its size";
    EXPECT_EQ(chosen("Arial", 65536, missing, gui), "Arial0 s") << "a size whose low 16 bits are zero is still one";
    for (const auto& carried : {authored, missing}) {
        EXPECT_EQ(chosen("Arial", 0, carried, gui), "Tahoma9 s") << "a face without a size";
        EXPECT_EQ(chosen(nullptr, 10, carried, none), "- s") << "a size without a face, no candidate";
    }
    for (const auto& carried :
         {other, {wide("MS Sans Serif"), 10}, {wide("ms sans serif"), 8}, {wide("MS Sans Serif X"), 8}})
        EXPECT_EQ(chosen(nullptr, 10, carried, gui), "-") << "a font of its own";
}

TEST(FontChoice, ScalesTheSizeByTheTwoFontsMetrics) {
    const auto scaled = [](DialogSize size, FontMetrics newFont, FontMetrics reference) {
        const DialogSize result = adjustedSize(size, newFont, reference);
        return std::vector<int>{result.cx, result.cy};
    };
    EXPECT_THAT(scaled({310, 108}, {6, 13}, {7, 13}), ElementsAre(310, 108)) << "the added pixel keeps the width";
    EXPECT_THAT(scaled({310, -101}, {8, 20}, {6, 13}), ElementsAre(465, -155)) << "cut toward zero";
    EXPECT_THAT(scaled({30000, 30000}, {20, 30}, {7, 10}), ElementsAre(24464, 24464)) << "low 16 bits";
    EXPECT_THAT(scaled({310, 108}, {8, 20}, {0, 13}), ElementsAre(310, 108)) << "a reference without width";
    EXPECT_THAT(scaled({310, 108}, {8, 20}, {6, 0}), ElementsAre(310, 108)) << "a reference without height";
    const FontMetrics largest = {0x7FFFFFFF, 0x7FFFFFFF};
    EXPECT_THAT(scaled({32767, 32767}, largest, {1, 1}), ElementsAre(0, -32767));
}

TEST(MappingLines, AreJoinedAndSplitAtTheFirstTab) {
    testing_support::useCodePage(932);
    const std::string longText(5000, 'x');
    const struct {
        std::string extension;
        const char *comment, *kept;  // what is read and what is written again; null for none
        std::string line;
    } rows[] = {{".txt", "Plain\ttext", "Plain\ttext", ".txt\tPlain\ttext"},
                {".txt", nullptr, nullptr, ".txt"},
                {".txt", "", nullptr, ".txt\t"},
                {".a\x95", "\x95\x5C", "\x95\x5C", ".a\x95\t\x95\x5C"},  // a lead byte takes no tab with it
                {"." + longText, longText.c_str(), longText.c_str(), "." + longText + "\t" + longText}};
    for (const auto& row : rows) {
        OwnedText line = joinedLine(row.extension.c_str(), row.comment);
        EXPECT_EQ(line.get(), row.line);
        const MappingLine mapping = splitLine(std::move(line));
        EXPECT_EQ(mapping.extension, row.extension);
        EXPECT_STREQ(mapping.comment, row.kept);
    }
    EXPECT_STREQ(dottedExtension("tar.gz").get(), ".tar.gz");
    EXPECT_STREQ(dottedExtension("..txt").get(), "..txt");
    for (const int length : {0, 1, 15, 16}) EXPECT_EQ(isAcceptedLength(length), length == 1 || length == 15);
    // Half a character is a byte.
    EXPECT_TRUE(canBeStored("", "abcd") && canBeStored("abc\x83", ""));
    EXPECT_FALSE(canBeStored("dosa", "TEXT\x83") || canBeStored("dosax", "TEXT"));
    testing_support::useCodePage(1252);
}

TEST(MappingChanges, WriteAddedLinesThenRemoveMissingKeys) {
    using Lines = std::vector<std::string>;
    const auto keyed = [](const Lines& texts) {
        std::vector<KeyedLine> lines;
        for (const auto& text : texts) lines.push_back(keyedLine(copiedText(text.c_str()), foldKeyName));
        return lines;
    };
    const struct {
        Lines listed, now, done;
        const char* reason;
    } rows[] = {
        {{".a", ".b\tx"}, {".a", ".b\tx"}, {}, "nothing was touched"},
        {{".a", ".b\tx"}, {".a\t", ".b\tx"}, {"+.a\t"}, "a comment that could not be read, added anew"},
        {{".a\tx"}, {".a\tw", ".a\tx"}, {}, "the lower line is the old one"},
        {{".\xE4\tx"}, {".\xE4\tx", ".\xC4\ty"}, {"+.\xC4\ty"}, "the lower line is the new one"},
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
    EXPECT_EQ(keyedLine(copiedText(".txt"), [](char*) { return false; }).key, nullptr);
    EXPECT_EQ(keyedLine(nullptr, foldKeyName).key, nullptr);
}

// Under code page 932 a trail byte may be a backslash (0x5C) or a bar (0x7C).
const LeadByteTable kWestern = {};
const LeadByteTable kJapanese = properties::Input("\x01").leadBytes();

TEST(BrowsePaths, AreSplitAndLoseThePlaceholderAtTheLastBackslash) {
    const struct {
        std::string path;
        const char *folder, *name;  // a null name: none
        const char* cut;            // the path without the placeholder "{s}"; null where it stays
        const LeadByteTable& table = kWestern;
    } rows[] = {
        {"D:\\Data\\{s}", "D:\\Data", "{s}", "D:\\Data"},
        {"D:\\{s}", "D:", "{s}", "D:\\"},
        {"\\\\server\\share\\{s}", "\\\\server\\share", "{s}", "\\\\server\\share"},
        {"D:\\Data\\{S}", "D:\\Data", "{S}", nullptr},
        {"D:\\Data\\{s}.txt", "D:\\Data", "{s}.txt", nullptr},
        {"{s}", "", nullptr, nullptr},
        {"", "", nullptr, nullptr},
        {"D:\\Data\\", "D:\\Data", "", nullptr},
        {"D:\\\x95\\\\{s}", "D:\\\x95\\", "{s}", "D:\\\x95\\", kJapanese},  // so ends in a backslash byte
        {"D:\\\x95\\\x83\\.txt", "D:", "\x95\\\x83\\.txt", nullptr, kJapanese},
        {"\x95\\{s}", "", nullptr, nullptr, kJapanese},
        {"\x95\\{s}", "\x95", "{s}", "\x95"},
    };
    for (const auto& row : rows) {
        const Exact split(row.path), cut(row.path);
        EXPECT_STREQ(splitInitialPath(split, row.table), row.name) << row.path;
        EXPECT_STREQ(split, row.folder) << row.path;
        cutPlaceholder(cut, "{s}", row.table);
        EXPECT_STREQ(cut, row.cut ? row.cut : row.path.c_str()) << row.path;
    }
}

// Whatever follows in memory, the list ends inside its buffer, at a character.
TEST(BrowsePaths, TakeFiltersApartAtTheirBars) {
    const struct {
        std::string filter, list;  // both without the zeros that fill the buffer of 8 bytes
        const LeadByteTable& table = kWestern;
    } rows[] = {
        {"A|*.b|", "A\0*.b"s},
        {"A|b", "A\0b"s},
        {"", ""},
        {"A\0b\0C|"s, "A\0b\0C|"s},  // a bar after a zero of its own
        {"\x83|a|", "\x83\0a"s},
        {"\x83|a|", "\x83|a"s, kJapanese},
        {"A|*.abc", "A\0*.ab"s},
        {"A|*.ab|", "A\0*.ab"s},
        {"A|*.a\x83|", "A\0*.a"s, kJapanese},
        {"A|*.\x83||", "A\0*.\x83|"s, kJapanese},
        {"A\0*.a\x83|"s, "A\0*.a"s, kJapanese},
    };
    for (auto [filter, list, table] : rows) {
        filter.resize(8);
        list.resize(8);
        const Exact buffer(filter.substr(0, 7));
        splitFilter(buffer, 8, table);
        EXPECT_EQ(std::string(buffer, 8), list);
    }
}

}  // namespace
