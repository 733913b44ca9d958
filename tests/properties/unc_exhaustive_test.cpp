// Every UNC path of up to six bytes that matter after the prefix, every joining of short parts, and the lengths at
// which a path is refused.
#include <gtest/gtest.h>

#include "properties/unc.h"

namespace {

class UncPaths : public testing::TestWithParam<UINT> {
protected:
    void SetUp() override { ASSERT_TRUE(testing_support::useCodePage(GetParam())); }
    void TearDown() override { testing_support::useCodePage(1252); }
};

TEST_P(UncPaths, SplitAsTheGrammarSays) {
    const auto leads = properties::leadBytesOf(GetParam());
    const std::string alphabet = "a@`\\\x83";
    for (std::size_t number = 1; number < 78125 && !HasFailure(); ++number) {
        std::string path = "\\\\";
        for (std::size_t left = number; left; left /= 5) path += alphabet[left % 5];
        const auto index = static_cast<unsigned>(number);
        try {
            properties::holdSplit(leads, path, number % 3 ? 15 : index / 3, index % 7);
        } catch (const properties::Disagreement& found) {
            FAIL() << found.what() << " of " << properties::hexadecimal(path);
        }
    }
}

TEST_P(UncPaths, JoinAsTheGrammarSays) {
    const char* const parts[] = {nullptr, "", "*", "*x", "Mercury", "\x83\x60", "\x95\x5C\x83\x40", "\x83", "a\x83"};
    for (const int kind : {0, 1, 2, 3})
        for (const char* zone : parts)
            for (const char* name : parts)
                for (const char* share : parts)
                    ASSERT_NO_THROW(properties::holdJoin(kind, zone, name, share))
                        << kind << ' ' << (zone ? zone : "none") << ' ' << (name ? name : "none");
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(UncPaths);  // under other languages' code pages
INSTANTIATE_TEST_SUITE_P(CodePages, UncPaths, testing::ValuesIn(testing_support::codePagesAmong({1252u, 932u})),
                         [](const auto& page) { return std::to_string(page.param); });

TEST(UncExamples, AServerAndAPrinter) {
    char path[32], zone[32], name[32], share[32], rest[32];
    EXPECT_EQ(UNCLength(1, "*", "Mercury", "Projects"), 19);
    EXPECT_EQ(StringsToUNC(1, path, 25, "Sales", "Mercury", "Projects"), 1);
    EXPECT_STREQ(path, "\\\\Sales@Mercury\\Projects");
    EXPECT_EQ(UNCToStrings("\\\\Sales@Mercury\\Projects\\Docs\\a.txt", zone, name, share, rest, 5), 1);
    EXPECT_EQ(zone + std::string(name) + share + rest, "SalesMercuryProjectsDocs");
    EXPECT_EQ(UNCToStrings("\\\\`Laser\\Queue", zone, name, share, rest, 5), 2);
    EXPECT_EQ(zone + std::string(name) + share + rest, "*LaserQueue");
    EXPECT_EQ(UNCToStrings("\\\\Srv\\A@B", zone, name, share, rest, 5), 1) << "the first @ anywhere";
    EXPECT_EQ(zone + std::string("|") + name + "|" + share, "Srv|B|A");
    EXPECT_EQ(ZoneSrvDelimiter() + std::string(ZonePrnDelimiter()), "@`");
    EXPECT_EQ(UNCToStrings(nullptr, zone, name, share, rest, 5), 0);
    EXPECT_EQ(zone + std::string(name) + share + rest, "");
}

TEST(UncExamples, PathsOverSixteenBitsAreRefused) {
    std::vector<char> path(70000);
    for (const std::size_t length : {32764u, 32765u, 65533u, 65536u}) {
        const std::string name(length, 'n');
        EXPECT_EQ(UNCLength(1, nullptr, name.c_str(), nullptr), length == 32764 ? 32767 : 0) << length;
        EXPECT_EQ(StringsToUNC(1, path.data(), 65535, nullptr, name.c_str(), nullptr), length == 32764) << length;
    }
    const std::string third(22000, 'n');
    for (const int kind : {1, 2})
        EXPECT_EQ(UNCLength(kind, third.c_str(), third.c_str(), third.c_str()), 0) << "66,005 would wrap to 469";
}

}  // namespace
