// The dbcs_ family on every string of up to two bytes under each code page, what it makes of null, and the traps of
// double-byte text one by one.
#include <gtest/gtest.h>

#include "properties/strings.h"

namespace {

using properties::Exact;

class Strings : public testing::TestWithParam<UINT> {
protected:
    void SetUp() override { ASSERT_TRUE(testing_support::useCodePage(GetParam())); }
    void TearDown() override { testing_support::useCodePage(1252); }
};

TEST_P(Strings, OfUpToTwoBytesFollowTheModel) {
    // What begins with ASCII is the same under all double-byte code pages, and under all single-byte ones.
    const bool isFirst = GetParam() == 1252 || GetParam() == 932;
    for (int bytes = isFirst ? 0x100 : 0x8000; bytes < 0x10000; ++bytes) {
        const std::string text = std::string{char(bytes >> 8), char(bytes)}.substr(0, bytes & 0xFF ? 2 : 1);
        try {
            properties::StringModel(GetParam(), text).hold({text.back(), text.front()});
        } catch (const properties::Disagreement& found) {
            FAIL() << found.what() << " of " << properties::hexadecimal(text);
        }
    }
}

TEST_P(Strings, AcceptNullEverywhere) {
    char text[] = "x";
    for (auto* compare : {dbcs_strcmp, dbcs_stricmp}) {
        EXPECT_EQ(compare(nullptr, text), -1);
        EXPECT_EQ(compare(text, nullptr), -1);
        EXPECT_EQ(compare(nullptr, nullptr), -1);
    }
    for (auto* copy : {dbcs_strcpy, dbcs_strcat}) {
        EXPECT_EQ(copy(nullptr, text), nullptr);
        EXPECT_EQ(copy(text, nullptr), text);
    }
    for (auto* change : {dbcs_strupr, dbcs_strlwr}) EXPECT_EQ(change(nullptr), nullptr);
    for (auto* find : {dbcs_strchr, dbcs_strrchr}) EXPECT_EQ(find(nullptr, 'x'), nullptr);
    EXPECT_EQ(dbcs_strlen(nullptr), 0);
    EXPECT_EQ(dbcs_strncpy(nullptr, text, 1), nullptr);
    EXPECT_EQ(dbcs_strncpy(text, nullptr, 1), text);
    EXPECT_EQ(dbcs_prevchar(nullptr, text), nullptr);
    EXPECT_EQ(dbcs_prevchar(text, nullptr), nullptr);
    EXPECT_EQ(dbcs_prevchar(text, text), nullptr);
    EXPECT_EQ(dbcs_trunc(nullptr, 1, 1), 0);
    EXPECT_EQ(dbcs_trunc(text, -3, 1), -3);
    EXPECT_EQ(BufStrCpy(nullptr, text, 2), 0);
    EXPECT_EQ(BufStrCpy(text, text, -1), 0);
    EXPECT_STREQ(text, "x");
    EXPECT_EQ(BufStrCpy(text, nullptr, 2), 0);
    EXPECT_STREQ(text, "");
}

TEST_P(Strings, MeetTheTrapsOfDoubleByteText) {
    if (!isdbchar('\x81')) return;
    char buffer[4];
    EXPECT_STREQ(dbcs_strchr("\x81\\a\\b\\", '\\'), "\\b\\") << "a trail byte that is no backslash";
    EXPECT_EQ(dbcs_strrchr("a\\\x81\\", '\x81'), nullptr) << "the last single byte is looked for";
    EXPECT_EQ(BufStrCpy(buffer, "a\x81\x40\x81\x41", 4), 3);
    EXPECT_STREQ(buffer, "a\x81\x40");
    EXPECT_EQ(dbcs_trunc("\x81\x40\x81\x41", 3, 0), 2);
    EXPECT_GT(dbcs_strcmp("\x81\x40", "\xFF"), 0) << "two bytes rank above one, whatever its value";
    EXPECT_NE(dbcs_stricmp("\x81\x61", "\x81\x41"), 0) << "trail bytes are no letters";
}

INSTANTIATE_TEST_SUITE_P(CodePages, Strings,
                         testing::ValuesIn(testing_support::codePagesAmong({1252u, 1251u, 932u, 936u, 949u, 950u})),
                         [](const auto& page) { return std::to_string(page.param); });

}  // namespace
