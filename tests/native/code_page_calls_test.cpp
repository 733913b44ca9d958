// The stand-in's code pages: characters of which something is to be said, and conversions at the ends of their buffers.
#include <gtest/gtest.h>
#include <standin.h>

#include <string>

namespace {

TEST(CodePageCalls, ConvertAndFoldAsPublished) {
    const struct {
        UINT page;
        std::string bytes;
        WCHAR unit;
        std::string upper;
        const char* reason;
    } rows[] = {
        {1252, "\x80", 0x20AC, "\x80", "the euro sign"},
        {1252, "\xFF", 0x00FF, "\x9F", "y diaeresis, whose capital lies elsewhere"},
        {1252, "\x81", 0x0081, "\x81", "an undefined byte is a control"},
        {1252, "\xB5", 0x00B5, "\xB5", "the micro sign is no letter"},
        {850, "\xD5", 0x0131, "\xD5", "the dotless i, which is no partner of I"},
        {1251, "\xFF", 0x044F, "\xDF", "Cyrillic ya"},
        {932, "\x81\x60", 0xFF5E, "\x81\x60", "the wave dash, the platform's way"},
        {932, "\xB1", 0xFF71, "\xB1", "half-width katakana a is a single byte"},
        {932, "\xF0\x40", 0xE000, "\xF0\x40", "the first character of the user's own"},
        {949, "\xB0\xA1", 0xAC00, "\xB0\xA1", "the first Hangul syllable"},
        {950, "\xF9\xF9", 0x2550, "\xF9\xF9", "of two double lines, the one that comes back"},
    };
    for (const auto& row : rows) {
        ASSERT_TRUE(standin::setCodePages(row.page, row.page));
        SCOPED_TRACE(std::to_string(row.page) + ": " + row.reason);
        const int size = static_cast<int>(row.bytes.size());
        WCHAR unit = 0;
        std::string back(row.bytes), upper(back), lower(back);
        EXPECT_EQ(IsDBCSLeadByte(static_cast<BYTE>(row.bytes[0])), size == 2);
        EXPECT_EQ(MultiByteToWideChar(CP_ACP, MB_PRECOMPOSED, row.bytes.data(), size, &unit, 1), 1);
        EXPECT_EQ(unit, row.unit);
        EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, &unit, 1, back.data(), size, nullptr, nullptr), size);
        EXPECT_EQ(back, row.bytes);
        EXPECT_EQ(LCMapStringA(LOCALE_SYSTEM_DEFAULT, LCMAP_UPPERCASE, row.bytes.data(), size, upper.data(), 2), size);
        EXPECT_EQ(LCMapStringA(LOCALE_SYSTEM_DEFAULT, LCMAP_LOWERCASE, upper.data(), size, lower.data(), 2), size);
        EXPECT_EQ(upper + lower, row.upper + row.bytes);
    }
    EXPECT_FALSE(standin::setCodePages(1234, 437));
    EXPECT_EQ(GetACP(), 950u);
}

TEST(CodePageCalls, KeepToTheirBuffers) {
    standin::setCodePages(932, 932);
    WCHAR wide[4] = {1, 1, 1, 1};
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "a\x82\xA0", -1, nullptr, 0), 3) << "the terminator counts";
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "a\x82\xA0", -1, wide, 2), 0);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
    EXPECT_EQ(wide[2], 1);
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "a\x82", -1, wide, 4), 3) << "a lone lead byte leaves the terminator";
    EXPECT_EQ(std::u16string(wide), u"a\u30FB");
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, "\x81\x20", 2, wide, 4), 0);
    char text[4];
    BOOL missing = FALSE;
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, u"\u00E9", -1, text, 4, nullptr, &missing), 2);
    EXPECT_TRUE(missing && std::string(text) == "?");
}

}  // namespace
