// The stand-in's code pages: characters that need special care, and conversions that fill their buffers.
#include <gtest/gtest.h>
#include <standin.h>

#include <string>

namespace {

TEST(CodePageCalls, ConvertAndFoldAsPublished) {
    const struct {
        UINT page;
        std::string bytes;
        std::u16string units;
        std::string capitals = {};  // if they differ
    } rows[] = {
        // The euro sign; y diaeresis, whose capital lies elsewhere; an undefined byte is a control; no letter.
        {1252, "\x80\xFF\x81\xB5", u"\u20AC\u00FF\u0081\u00B5", "\x80\x9F\x81\xB5"},
        {850, "\xD5", u"\u0131"},           // the dotless i, which is no partner of I
        {1251, "\xFF", u"\u044F", "\xDF"},  // Cyrillic ya
        // The wave dash, the platform's way; a katakana of a single byte; the first character of the user's own.
        {932, "\x81\x60\xB1\xF0\x40", u"\uFF5E\uFF71\uE000"},
        // The first Hangul syllable; of two double lines, the one that comes back; the last ones of the user's own.
        {949, "\xB0\xA1\xC9\xFE\xFE\xFE", u"\uAC00\uE05D\uE0BB"},
        {936, "\xAF\xFE\xFE\xFE\xA7\xA0", u"\uE233\uE4C5\uE765"},
        {950, "\xF9\xF9\x8D\xFE\xA0\xFE\xFE\xFE", u"\u2550\uF6B0\uEEB7\uE310"},
    };
    for (const auto& [page, bytes, units, capitals] : rows) {
        ASSERT_TRUE(standin::setCodePages(page, page));
        SCOPED_TRACE(page);
        const int size = static_cast<int>(bytes.size()), count = static_cast<int>(units.size());
        std::u16string wide(units.size(), u'?');
        std::string back(bytes), upper(bytes), lower(bytes);
        EXPECT_EQ(MultiByteToWideChar(CP_ACP, MB_PRECOMPOSED, bytes.data(), size, wide.data(), count), count);
        EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, wide.data(), count, back.data(), size, nullptr, nullptr), size);
        EXPECT_EQ(LCMapStringA(LOCALE_SYSTEM_DEFAULT, LCMAP_UPPERCASE, bytes.data(), size, upper.data(), size), size);
        EXPECT_EQ(LCMapStringA(LOCALE_SYSTEM_DEFAULT, LCMAP_LOWERCASE, upper.data(), size, lower.data(), size), size);
        EXPECT_TRUE(wide == units && back == bytes && upper == (capitals.empty() ? bytes : capitals) && lower == bytes);
    }
    EXPECT_TRUE(!standin::setCodePages(1234, 437) && GetACP() == 950);
}

TEST(CodePageCalls, KeepToTheirBuffers) {
    standin::setCodePages(932, 932);
    WCHAR wide[4] = {1, 1, 1, 1};
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "a\x82\xA0", -1, nullptr, 0), 3) << "the terminator counts";
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "a\x82\xA0", -1, wide, 2), 0);
    EXPECT_EQ(wide[2], 1);
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "a\x82", -1, wide, 4), 3) << "a lone lead byte keeps the terminator";
    EXPECT_EQ(std::u16string(wide), u"a\u30FB");
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, "\x81\x20", 2, wide, 4), 0);
    char text[4];
    BOOL missing = FALSE;
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, u"\u00E9", -1, text, 4, nullptr, &missing), 2);
    EXPECT_TRUE(missing && std::string(text) == "?");
}

}  // namespace
