#include <gmock/gmock.h>

#include <array>
#include <string>
#include <vector>

#include "about/credits_text.h"
#include "about/perspective.h"

namespace {

using namespace tamrix;
using testing::ElementsAre;

constexpr LeadByteTable kSingleByte{};

/// Code page 932's lead bytes.
LeadByteTable japanese() {
    LeadByteTable table{};
    for (int lead = 0x81; lead <= 0xFC; ++lead) table.isLead[lead] = lead < 0xA0 || lead >= 0xE0;
    table.hasLeadBytes = 1;
    return table;
}

/// The lines that a text is split into, after checking what the table promises.
std::vector<std::string> linesOf(std::string text, const LeadByteTable& leadBytes = kSingleByte) {
    std::vector<char> block(text.begin(), text.end());
    block.push_back('\0');
    std::vector<AboutLine> table(static_cast<std::size_t>(compactCredits(block, leadBytes)));
    splitCredits(block, leadBytes, table);
    std::vector<std::string> lines;
    std::uint32_t next = 0;
    for (const AboutLine& line : table) {
        EXPECT_EQ(line.offset, next) << "a line begins behind the terminator of the one before";
        next = line.offset + static_cast<std::uint32_t>(line.length) + 1;
        if (next > block.size() || block[next - 1] != '\0') {
            ADD_FAILURE() << "line " << lines.size() << " has no terminator";
            break;
        }
        lines.emplace_back(&block[line.offset], static_cast<std::size_t>(line.length));
    }
    return lines;
}

TEST(CreditsLines, EndAtCarriageReturnsAndLoseLineFeeds) {
    // 0x83 leads in code page 932; behind it CR and LF are no characters of their own.
    const LeadByteTable two = japanese();
    const struct {
        const char* reason;
        std::string text;
        std::vector<std::string> lines;
        const LeadByteTable& leadBytes = kSingleByte;
    } rows[] = {
        {"what follows the last end is a line", "A\r\nB\r\n", {"A", "B", ""}},
        {"a line feed alone joins", "A\nB", {"AB"}},
        {"line feeds anywhere", "\n\nA\n\r\n\r", {"A", "", ""}},
        {"empty", "", {""}},
        {"a zero byte ends the text", std::string("A\r\0B\r", 5), {"A", ""}},
        {"CR as a second byte", "\x83\r\nB", {"\x83\rB"}, two},
        {"LF as a second byte", "\x83\nA\r\nB", {"\x83\nA", "B"}, two},
        {"a trail byte leads nothing", "A\x83\x83\rB", {"A\x83\x83", "B"}, two},
        {"half-width katakana is a single byte", "\xB1\rB", {"\xB1", "B"}, two},
        {"a lone lead byte ends the text", "A\r\nB\x83", {"A", "B"}, two},
        {"nothing but a lone lead byte", "\x83", {""}, two},
        {"no lead byte in this code page", "\x83\r\nB", {"\x83", "B"}},
    };
    for (const auto& row : rows) EXPECT_EQ(linesOf(row.text, row.leadBytes), row.lines) << row.reason;
}

TEST(CreditsLines, StayInsideABlockWithoutATerminator) {
    std::array<char, 4> block{'A', '\r', 'B', 'C'};
    std::array<AboutLine, 2> table{};
    ASSERT_EQ(compactCredits(block, kSingleByte), 2);
    splitCredits(block, kSingleByte, table);
    EXPECT_EQ(table[1].length, 1) << "the last byte gives way to the terminator";
    std::array<char, 2> lead{'\x83', 'A'};
    EXPECT_EQ(compactCredits(lead, japanese()), 1);
    EXPECT_EQ(lead[0], '\0');
}

TEST(CreditsMarkers, ChooseTheFontAndAreNotShown) {
    const MarkedFonts all{true, true, true};
    const struct {
        const char* line;
        MarkedFonts made;
        CreditsFont font;
        const char* shown;
    } rows[] = {
        {"*Title", all, CreditsFont::bold, "Title"},
        {"/Partner", all, CreditsFont::italic, "Partner"},
        {"_Heading", all, CreditsFont::underlined, "Heading"},
        {" *x", all, CreditsFont::regular, " *x"},
        {"**", all, CreditsFont::bold, "*"},
        {"", all, CreditsFont::regular, ""},
        // A failed font takes its marker and the later ones away.
        {"*x", {false, true, true}, CreditsFont::regular, "*x"},
        {"/x", {false, true, true}, CreditsFont::regular, "/x"},
        {"_x", {false, true, true}, CreditsFont::regular, "_x"},
        {"*x", {true, false, true}, CreditsFont::bold, "x"},
        {"/x", {true, false, true}, CreditsFont::regular, "/x"},
        {"_x", {true, false, true}, CreditsFont::regular, "_x"},
        {"/x", {true, true, false}, CreditsFont::italic, "x"},
        {"_x", {true, true, false}, CreditsFont::regular, "_x"},
    };
    for (const auto& row : rows) {
        const MarkedLine marked = takeMarker(row.line, row.made);
        EXPECT_EQ(marked.font, row.font) << row.line;
        EXPECT_EQ(marked.text, row.shown) << row.line;
    }
}

TEST(CreditsPlaceholders, AreReplacedUntilTheLineIsFull) {
    const LeadByteTable two = japanese();
    const auto filler = [](std::size_t size) { return std::string(size, 'x'); };
    std::string signs;
    for (int i = 0; i < 200; ++i) signs += "%%";
    const struct {
        std::string line, shown;
        const LeadByteTable& leadBytes = kSingleByte;
    } rows[] = {
        {"Years %y, 100%% sure", "Years 1995-97, 100% sure"},
        {"50%x", "50 x"},
        {"trailing%", "trailing "},
        {"%%v", "%v"},
        {"%%%v", "%6.1"},
        {"%v%y%%", "6.11995-97%"},
        {"%V", " V"},
        {"% %", "   "},
        {"\x83%v", "\x83%v", two},  // a per cent sign as second byte
        {"%\x83v", " \x83v", two},  // an unknown one before a double-byte character
        {filler(300), filler(255)},
        {filler(252) + "%v!", filler(252) + "6.1"},  // fits exactly
        {filler(253) + "%v!", filler(253)},          // one byte short: the replacement is left out whole
        {filler(254) + "\x83z", filler(254), two},   // half a character
        {filler(253) + "\x83z", filler(253) + "\x83z", two},
        {signs, std::string(200, '%')},  // what counts is the line as it is shown
    };
    for (const auto& row : rows) {
        std::array<char, kExpandedCapacity> buffer;
        EXPECT_EQ(expandPlaceholders(row.line, row.leadBytes, buffer), row.shown) << row.line;
    }
    EXPECT_FALSE(hasPlaceholder("\x83%v", two));
    EXPECT_TRUE(hasPlaceholder("\x83%v", kSingleByte));
    EXPECT_TRUE(hasPlaceholder("\x83\x83%", two));
}

TEST(Perspective, GivesTheTenLinesOfAFrame) {
    struct {
        int top;
        int height;
        std::array<std::array<int, 2>, 3> slices;  // x and width
    } const lines[] = {
        {245, 1, {{{137, 137}, {136, 139}, {135, 141}}}}, {248, 2, {{{134, 143}, {133, 145}, {132, 147}}}},
        {254, 3, {{{128, 155}, {127, 157}, {126, 159}}}}, {263, 4, {{{119, 173}, {118, 175}, {117, 177}}}},
        {275, 5, {{{107, 197}, {106, 199}, {105, 201}}}}, {290, 6, {{{92, 227}, {91, 229}, {90, 231}}}},
        {308, 7, {{{74, 263}, {73, 265}, {72, 267}}}},    {329, 8, {{{53, 305}, {52, 307}, {51, 309}}}},
        {353, 9, {{{29, 353}, {28, 355}, {27, 357}}}},    {380, 10, {{{2, 407}, {1, 409}, {0, 411}}}},
    };
    Perspective perspective(411, 245, 33);
    int k = 0;
    for (const auto& line : lines) {
        SCOPED_TRACE(k++);
        ASSERT_TRUE(perspective.reaches(397));
        EXPECT_EQ(perspective.isFar(), line.height <= 5) << "of eleven rows";
        for (int i = 0; i < kSlicesPerLine; ++i) {
            const Slice slice = perspective.nextSlice(i);
            EXPECT_THAT((std::array{slice.sourceTop, slice.sourceHeight, slice.x, slice.y, slice.width, slice.height}),
                        ElementsAre(11 * i, 11, line.slices[static_cast<std::size_t>(i)][0], line.top + i * line.height,
                                    line.slices[static_cast<std::size_t>(i)][1], line.height));
        }
        perspective.endLine();
    }
    EXPECT_FALSE(perspective.reaches(397));
    EXPECT_TRUE(Perspective(411, 245, 33).reaches(0)) << "the first line is drawn whatever room there is";
}

TEST(Cycle, ShowsEachPictureInTurnAndMovesTheCreditsEverySecondFrame) {
    for (const int lineCount : {1, 2, 7}) {
        SCOPED_TRACE(lineCount);
        int picture = 0;
        int topLine = 0;
        for (int frame = 0; frame < 4 * lineCount; ++frame) {
            EXPECT_EQ(picture, frame % 4);
            EXPECT_EQ(topLine, frame / 2 % lineCount);
            topLine = nextTopLine(topLine, lineCount, picture);
            picture = nextPicture(picture);
        }
        EXPECT_EQ(topLine, 0);
    }
}

}  // namespace
