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

class DoubleByte : public CodePages {};
class SingleByte : public CodePages {};
// A process with one code page for good has one of the two.
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(DoubleByte);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(SingleByte);

std::string pageName(const testing::TestParamInfo<UINT>& page) {
    return std::to_string(page.param);
}

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

INSTANTIATE_TEST_SUITE_P(Strings, CodePages,
                         testing::ValuesIn(testing_support::codePagesAmong({1252u, 932u, 936u, 949u, 950u})), pageName);

TEST_P(SingleByte, CutsWhereItIsTold) {
    EXPECT_EQ(dbcs_trunc("ab", -3, 1), -3);
}

TEST_P(SingleByte, FoldsAsciiLettersOnly) {
    EXPECT_EQ(dbcs_stricmp("Read Me", "rEAD mE"), 0);
    EXPECT_NE(dbcs_stricmp("\xC9", "\xE9"), 0) << "E acute, capital and small";
    EXPECT_LT(dbcs_stricmp("_", "A"), 0) << "letters compare as small ones";
    EXPECT_LT(dbcs_stricmp("a", "AB"), 0);
    EXPECT_GT(dbcs_stricmp("[", "@"), 0) << "the neighbours of the letters don't fold";
    EXPECT_NE(dbcs_stricmp("{", "["), 0);
}

INSTANTIATE_TEST_SUITE_P(Strings, SingleByte, testing::ValuesIn(testing_support::codePagesAmong({1252u})), pageName);

TEST_P(DoubleByte, FindsCharactersAndNoTrailBytes) {
    const struct {
        const char* reason;
        const char* text;
        int c;
        int first;  // offset, -1: none
        int last;
    } rows[] = {
        {"a trail byte that is a backslash", "\x81\\a\\b\\", '\\', 3, 5},
        {"only as a trail byte", "\x81\\\x81\\", '\\', -1, -1},
        {"a lead byte, sign-extended", "a\x81\x40", static_cast<signed char>(0x81), 1, -1},
        {"a lead byte as a positive number", "a\x81\x40", 0x81, -1, -1},
        {"a trail byte that has a lead byte's value", "\x81\x81\x40", '\x40', 2, 2},
        {"the terminator", "abc", 0, -1, -1},
        {"an empty string", "", 'a', -1, -1},
        {"a lone lead byte at the end", "ab\x81", static_cast<signed char>(0x81), -1, -1},
        {"a single byte above 0x7F", "\x80\x80", static_cast<signed char>(0x80), 0, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        const Exact text(row.text);
        const auto offset = [&text](const char* found) { return found ? found - text : -1; };
        EXPECT_EQ(offset(dbcs_strchr(text, row.c)), row.first);
        EXPECT_EQ(offset(dbcs_strrchr(text, row.c)), row.last);
    }
}

TEST_P(DoubleByte, LeavesOutWhatDoesNotFit) {
    const std::string text = "a\x81\x40\x81\x41";
    const struct {
        int size;
        const char* buffer;
    } rows[] = {{1, ""}, {2, "a"}, {3, "a"}, {4, "a\x81\x40"}, {5, "a\x81\x40"}, {6, "a\x81\x40\x81\x41"}};
    for (const auto& row : rows) {
        char buffer[8];
        EXPECT_EQ(BufStrCpy(buffer, text.c_str(), row.size), int(std::strlen(row.buffer))) << row.size;
        EXPECT_STREQ(buffer, row.buffer) << row.size;
    }
    char bounded[] = "????";
    EXPECT_EQ(std::string(dbcs_strncpy(bounded, "a\x81\x40", 2), 4), "a\0??"s);
    EXPECT_EQ(std::string(dbcs_strncpy(bounded, "a\x81\x40", 3), 4), "a\x81\x40?");
    EXPECT_EQ(dbcs_trunc("\x81\x40\x81\x41", 3, 0), 2);
    EXPECT_EQ(dbcs_trunc("\x81\x40\x81\x41", 10, 1), 4);
}

TEST_P(DoubleByte, AppendsBehindWholeCharacters) {
    char text[8] = "a\x81";
    EXPECT_STREQ(dbcs_strcat(text, "bc"), "abc") << "a lone lead byte would swallow what follows it";
}

TEST_P(DoubleByte, ComparesDoubleByteCharactersAsNumbers) {
    EXPECT_GT(dbcs_strcmp("\x81\x40", "\xFF"), 0) << "two bytes rank above one, whatever its value";
    EXPECT_LT(dbcs_strcmp("\x81\x40", "\x81\x41"), 0);
    EXPECT_LT(dbcs_strcmp("\x81\x61", "\x81\x62"), 0);
    EXPECT_NE(dbcs_stricmp("\x81\x61", "\x81\x41"), 0) << "trail bytes are no letters";
    EXPECT_EQ(dbcs_strcmp("a", "a\x81"), 0) << "a lone lead byte ends the string";
    EXPECT_LT(dbcs_stricmp("A", "a\x81\x40"), 0);
}

TEST_P(DoubleByte, PairsTheLettersOfTheCodePage) {
    const struct {
        UINT page;
        const char* letter;
        const char* lower;
        const char* upper;
    } rows[] = {
        {932, "full-width Latin A", "\x82\x81", "\x82\x60"}, {932, "Greek alpha", "\x83\xBF", "\x83\x9F"},
        {932, "Cyrillic A", "\x84\x70", "\x84\x40"},         {936, "full-width Latin A", "\xA3\xE1", "\xA3\xC1"},
        {936, "Greek alpha", "\xA6\xC1", "\xA6\xA1"},        {936, "Cyrillic A", "\xA7\xD1", "\xA7\xA1"},
        {949, "full-width Latin A", "\xA3\xE1", "\xA3\xC1"}, {949, "Greek alpha", "\xA5\xE1", "\xA5\xC1"},
        {949, "Cyrillic A", "\xAC\xD1", "\xAC\xA1"},         {950, "full-width Latin A", "\xA2\xE9", "\xA2\xCF"},
        {950, "Greek alpha", "\xA3\x5C", "\xA3\x44"},
    };
    for (const auto& row : rows) {
        if (row.page != GetParam()) continue;
        SCOPED_TRACE(row.letter);
        const Exact lower("x"s + row.upper + "Y"), upper("x"s + row.lower + "Y");
        EXPECT_EQ(dbcs_stricmp(lower, upper), 0);
        EXPECT_STREQ(dbcs_strupr(upper), ("X"s + row.upper + "Y").c_str());
        EXPECT_STREQ(dbcs_strlwr(lower), ("x"s + row.lower + "y").c_str());
    }
}

// Going through Unicode and back turns the one into a default character and the other into its first code.
TEST_P(DoubleByte, KeepsWhatIsNoLetter) {
    const Exact notAssigned("\x81\xAD\x81\x20");
    EXPECT_STREQ(dbcs_strupr(notAssigned), "\x81\xAD\x81\x20");
    if (GetParam() != 932) return;
    const Exact second("\xFA\x54\xED\x40\xFA\x4A");
    EXPECT_STREQ(dbcs_strupr(second), "\xFA\x54\xED\x40\xFA\x4A") << "the not sign, a kanji, Roman I, each coded twice";
}

INSTANTIATE_TEST_SUITE_P(Strings, DoubleByte,
                         testing::ValuesIn(testing_support::codePagesAmong({932u, 936u, 949u, 950u})), pageName);

}  // namespace
