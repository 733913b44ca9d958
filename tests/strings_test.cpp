// The dbcs_ family under a single-byte and four double-byte code pages. Natively all of them run in one process; under
// Wine there are those of the process's own code page, which ends each test's name.
#include "tamrix32/strings.h"

#include <gmock/gmock.h>

#include <cstring>
#include <random>
#include <string>

#include "code_pages.h"
#include "published_tables.h"
#include "string_model.h"

namespace {

using namespace std::string_literals;
using testing_support::Exact;

class CodePages : public testing::TestWithParam<UINT> {
protected:
    void SetUp() override { ASSERT_TRUE(testing_support::useCodePage(GetParam())); }
    void TearDown() override { testing_support::useCodePage(1252); }

    const tamrix::LeadByteTable leads_ = testing_support::leadBytesOf(static_cast<int>(GetParam()));

    /// Mostly bytes that matter: leads, trails that look like leads or like ASCII, letters of both cases.
    std::string randomText(std::size_t most) {
        static constexpr char kBytes[] = "\x81\x9F\xE0\xFC\xFE\x5C\x41\x61\x7A\x5A\xA1\xB1\x40\x80\xFF\x83";
        std::string text(random_() % (most + 1), 0);
        for (char& byte : text)
            byte = random_() % 3 ? kBytes[random_() % (sizeof kBytes - 1)] : static_cast<char>(1 + random_() % 255);
        return text;
    }

private:
    std::mt19937 random_{20240617};
};

TEST_P(CodePages, KnowsTheLeadBytes) {
    for (unsigned byte = 0; byte < 256; ++byte)
        EXPECT_EQ(isdbchar(static_cast<char>(byte)), leads_.isLead[byte]) << byte;
}

TEST_P(CodePages, AcceptsNullEverywhere) {
    char text[] = "x";
    EXPECT_EQ(dbcs_strcmp(nullptr, text), -1);
    EXPECT_EQ(dbcs_strcmp(text, nullptr), -1);
    EXPECT_EQ(dbcs_strcmp(nullptr, nullptr), -1);
    EXPECT_EQ(dbcs_stricmp(nullptr, text), -1);
    EXPECT_EQ(dbcs_stricmp(nullptr, nullptr), -1);
    EXPECT_EQ(dbcs_strlen(nullptr), 0);
    for (auto* copy : {dbcs_strcpy, dbcs_strcat}) {
        EXPECT_EQ(copy(nullptr, text), nullptr);
        EXPECT_EQ(copy(text, nullptr), text);
    }
    EXPECT_EQ(dbcs_strncpy(nullptr, text, 1), nullptr);
    EXPECT_EQ(dbcs_strncpy(text, nullptr, 1), text);
    EXPECT_EQ(dbcs_strchr(nullptr, 'x'), nullptr);
    EXPECT_EQ(dbcs_strrchr(nullptr, 'x'), nullptr);
    EXPECT_EQ(dbcs_prevchar(nullptr, text), nullptr);
    EXPECT_EQ(dbcs_prevchar(text, nullptr), nullptr);
    EXPECT_EQ(dbcs_prevchar(text, text), nullptr);
    EXPECT_EQ(dbcs_trunc(nullptr, 1, 1), 0);
    EXPECT_EQ(dbcs_trunc(text, -3, 1), -3);
    EXPECT_EQ(dbcs_strupr(nullptr), nullptr);
    EXPECT_EQ(dbcs_strlwr(nullptr), nullptr);
    EXPECT_EQ(BufStrCpy(nullptr, text, 2), 0);
    EXPECT_EQ(BufStrCpy(text, text, 0), 0);
    EXPECT_EQ(BufStrCpy(text, text, -1), 0);
    EXPECT_STREQ(text, "x");
    EXPECT_EQ(BufStrCpy(text, nullptr, 2), 0);
    EXPECT_STREQ(text, "");
}

TEST_P(CodePages, AgreeWithTheirModelOnRandomStrings) {
    for (int round = 0; round < 2000; ++round) {
        const std::string text = randomText(12), other = round % 3 ? randomText(4) : text + randomText(1);
        const char* const disagreement = testing_support::StringModel(leads_, text).disagreement(other);
        ASSERT_EQ(disagreement, nullptr) << disagreement << " of " << testing::PrintToString(text) << " and "
                                         << testing::PrintToString(other);
    }
}

TEST_P(CodePages, FoldLettersOnly) {
    EXPECT_EQ(dbcs_stricmp("Read Me", "rEAD mE"), 0);
    EXPECT_LT(dbcs_stricmp("_", "A"), 0) << "letters compare as small ones";
    EXPECT_LT(dbcs_stricmp("a", "AB"), 0);
    EXPECT_GT(dbcs_stricmp("[", "@"), 0) << "the neighbours of the letters don't fold";
    EXPECT_NE(dbcs_stricmp("{", "["), 0);
    if (leads_.hasLeadBytes) {
        EXPECT_NE(dbcs_stricmp("\x81\x61", "\x81\x41"), 0) << "trail bytes are no letters";
        EXPECT_LT(dbcs_stricmp("A", "a\x81\x40"), 0);
    } else {
        EXPECT_NE(dbcs_stricmp("\xC9", "\xE9"), 0) << "E acute, capital and small";
    }
}

TEST_P(CodePages, MeetTheTrapsOfDoubleByteText) {
    if (!leads_.hasLeadBytes) return;
    char text[8] = "a\x81", buffer[4];
    EXPECT_STREQ(dbcs_strcat(text, "bc"), "abc") << "a lone lead byte would swallow what follows it";
    EXPECT_STREQ(dbcs_strchr("\x81\\a\\b\\", '\\'), "\\b\\") << "a trail byte that is no backslash";
    EXPECT_EQ(dbcs_strrchr("a\\\x81\\", '\x81'), nullptr) << "the last single byte is looked for";
    EXPECT_EQ(BufStrCpy(buffer, "a\x81\x40\x81\x41", 4), 3);
    EXPECT_STREQ(buffer, "a\x81\x40");
    EXPECT_EQ(dbcs_trunc("\x81\x40\x81\x41", 3, 0), 2);
    EXPECT_GT(dbcs_strcmp("\x81\x40", "\xFF"), 0) << "two bytes rank above one, whatever its value";
}

// Going through Unicode and back turns what is not assigned into a default character, and the second of two codes of a
// character into the first.
TEST_P(CodePages, PairTheirLettersAndKeepTheRest) {
    const struct {
        UINT page;  // 0: each double-byte one
        const char* letter;
        const char* lower;
        const char* upper;
    } rows[] = {
        {932, "full-width Latin A", "\x82\x81", "\x82\x60"}, {932, "Greek alpha", "\x83\xBF", "\x83\x9F"},
        {932, "Cyrillic A", "\x84\x70", "\x84\x40"},         {936, "full-width Latin A", "\xA3\xE1", "\xA3\xC1"},
        {936, "Greek alpha", "\xA6\xC1", "\xA6\xA1"},        {936, "Cyrillic A", "\xA7\xD1", "\xA7\xA1"},
        {949, "full-width Latin A", "\xA3\xE1", "\xA3\xC1"}, {949, "Greek alpha", "\xA5\xE1", "\xA5\xC1"},
        {949, "Cyrillic A", "\xAC\xD1", "\xAC\xA1"},         {950, "full-width Latin A", "\xA2\xE9", "\xA2\xCF"},
        {950, "Greek alpha", "\xA3\x5C", "\xA3\x44"},        {932, "the not sign's second", "\xFA\x54", "\xFA\x54"},
        {932, "a kanji's second", "\xED\x40", "\xED\x40"},   {932, "Roman I's second", "\xFA\x4A", "\xFA\x4A"},
        {0, "not assigned", "\x81\xAD", "\x81\xAD"},         {0, "with a space", "\x81\x20", "\x81\x20"},
    };
    for (const auto& row : rows) {
        if (row.page != GetParam() && !(row.page == 0 && leads_.hasLeadBytes)) continue;
        SCOPED_TRACE(row.letter);
        const Exact lower("x"s + row.upper + "Y"), upper("x"s + row.lower + "Y");
        EXPECT_EQ(dbcs_stricmp(lower, upper), 0);
        EXPECT_STREQ(dbcs_strupr(upper), ("X"s + row.upper + "Y").c_str());
        EXPECT_STREQ(dbcs_strlwr(lower), ("x"s + row.lower + "y").c_str());
    }
}

INSTANTIATE_TEST_SUITE_P(Strings, CodePages,
                         testing::ValuesIn(testing_support::codePagesAmong({1252u, 1251u, 932u, 936u, 949u, 950u})),
                         [](const auto& page) { return std::to_string(page.param); });

}  // namespace
