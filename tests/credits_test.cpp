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
    EXPECT_THAT(linesOf("A\r\nB"), ElementsAre("A", "B"));
    EXPECT_THAT(linesOf("A\r\nB\r\n"), ElementsAre("A", "B", "")) << "what follows the last end is a line";
    EXPECT_THAT(linesOf("A\nB"), ElementsAre("AB")) << "a line feed alone joins";
    EXPECT_THAT(linesOf("\n\nA\n\r\n\r"), ElementsAre("A", "", ""));
    EXPECT_THAT(linesOf(""), ElementsAre(""));
    EXPECT_THAT(linesOf("\r\r"), ElementsAre("", "", ""));
    EXPECT_THAT(linesOf(std::string("A\r\0B\r", 5)), ElementsAre("A", "")) << "a zero byte ends the text";
}

TEST(CreditsLines, SecondBytesOfCharactersAreNotLineEnds) {
    // 0x83 leads in code page 932; behind it CR, LF and % are no characters of their own.
    EXPECT_THAT(linesOf("\x83\r\nB", japanese()), ElementsAre("\x83\rB"));
    EXPECT_THAT(linesOf("\x83\nA\r\nB", japanese()), ElementsAre("\x83\nA", "B"));
    EXPECT_THAT(linesOf("A\x83\x83\rB", japanese()), ElementsAre("A\x83\x83", "B")) << "a trail byte leads nothing";
    EXPECT_THAT(linesOf("\xB1\rB", japanese()), ElementsAre("\xB1", "B")) << "half-width katakana is a single byte";
    EXPECT_THAT(linesOf("A\r\nB\x83", japanese()), ElementsAre("A", "B")) << "a lone lead byte ends the text";
    EXPECT_THAT(linesOf("\x83", japanese()), ElementsAre(""));
    EXPECT_THAT(linesOf("\x83\r\nB", kSingleByte), ElementsAre("\x83", "B"));
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
    struct {
        const char* line;
        CreditsFont font;
        const char* shown;
    } const rows[] = {
        {"*Title", CreditsFont::bold, "Title"},
        {"/Partner", CreditsFont::italic, "Partner"},
        {"_Heading", CreditsFont::underlined, "Heading"},
        {"Name", CreditsFont::regular, "Name"},
        {" *x", CreditsFont::regular, " *x"},
        {"*", CreditsFont::bold, ""},
        {"**", CreditsFont::bold, "*"},
        {"", CreditsFont::regular, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        const MarkedLine marked = takeMarker(row.line, all);
        EXPECT_EQ(marked.font, row.font);
        EXPECT_EQ(marked.text, row.shown);
    }
}

TEST(CreditsMarkers, AFailedFontTakesItsMarkerAndTheLaterOnesAway) {
    struct {
        MarkedFonts fonts;
        const char* known;
    } const rows[] = {{{false, true, true}, ""},
                      {{true, false, true}, "*"},
                      {{true, true, false}, "*/"},
                      {{true, true, true}, "*/_"}};
    for (const auto& row : rows)
        for (const char marker : std::string("*/_")) {
            SCOPED_TRACE(testing::Message() << marker << " while known are " << row.known);
            const std::string line = marker + std::string("x");
            const bool known = std::string(row.known).find(marker) != std::string::npos;
            EXPECT_EQ(takeMarker(line, row.fonts).font != CreditsFont::regular, known);
            EXPECT_EQ(takeMarker(line, row.fonts).text, known ? "x" : line);
        }
}

std::string expanded(const std::string& line, const LeadByteTable& leadBytes = kSingleByte) {
    std::array<char, kExpandedCapacity> buffer;
    return std::string(expandPlaceholders(line, leadBytes, buffer));
}

TEST(CreditsPlaceholders, AreReplaced) {
    struct {
        const char* line;
        const char* shown;
    } const rows[] = {
        {"v%v", "v6.1"},
        {"Years %y", "Years 1995-97"},
        {"100%% sure", "100% sure"},
        {"50%x", "50 x"},
        {"trailing%", "trailing "},
        {"%%v", "%v"},
        {"%%%v", "%6.1"},
        {"%x%v", " x6.1"},
        {"%v%y%%", "6.11995-97%"},
        {"%V", " V"},
        {"% %", "   "},
        {"no sign", "no sign"},
    };
    for (const auto& row : rows) EXPECT_EQ(expanded(row.line), row.shown) << row.line;
    EXPECT_EQ(expanded("\x83%v", japanese()), "\x83%v") << "a per cent sign as second byte";
    EXPECT_EQ(expanded("%\x83v", japanese()), " \x83v") << "an unknown one before a double-byte character";
    EXPECT_FALSE(hasPlaceholder("\x83%v", japanese()));
    EXPECT_TRUE(hasPlaceholder("\x83%v", kSingleByte));
    EXPECT_TRUE(hasPlaceholder("\x83\x83%", japanese()));
}

TEST(CreditsPlaceholders, StopWhereTheLineIsFull) {
    const auto filler = [](std::size_t size) { return std::string(size, 'x'); };
    EXPECT_EQ(expanded(filler(300)), filler(255));
    EXPECT_EQ(expanded(filler(252) + "%v!"), filler(252) + "6.1") << "fits exactly";
    EXPECT_EQ(expanded(filler(253) + "%v!"), filler(253)) << "one byte short: the replacement is left out whole";
    EXPECT_EQ(expanded(filler(254) + "\x83"
                                     "A",
                       japanese()),
              filler(254))
        << "half a character";
    EXPECT_EQ(expanded(filler(253) + "\x83"
                                     "A",
                       japanese()),
              filler(253) +
                  "\x83"
                  "A");
    std::string signs;
    for (int i = 0; i < 200; ++i) signs += "%%";
    EXPECT_EQ(expanded(signs), std::string(200, '%')) << "what counts is the line as it is shown";
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
