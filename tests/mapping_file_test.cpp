// The text form of mappings: what a reader sees, what comes back, and which line is blamed.
#include "client/mapping_file.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>
#include <random>

#include "code_pages.h"

namespace tamrix::client {

void PrintTo(const Mapping& mapping, std::ostream* out) {
    *out << writeMappings({&mapping, 1});
}

namespace {

std::string firstError(std::string_view text) {
    const MappingFile file = parseMappings(text);
    if (!file.error) return "none";
    EXPECT_TRUE(file.mappings.empty()) << "a bad file gives no mapping at all";
    return std::to_string(file.error->line) + ": " + file.error->message;
}

TEST(MappingFile, WritesWhatAPersonCanEdit) {
    const Mapping mappings[] = {
        {".txt", "TEXT", "ttxt", "Plain text"},
        {".hqx", "TEXT", "BnH ", std::nullopt},
        {".q", "\xA5\"\\\t", "a\r\nb", ""},
        {".#", "#pag", "C\\PP", "#1"},
    };
    EXPECT_EQ(writeMappings(mappings),
              ".txt\tTEXT\tttxt\t\"Plain text\"\n"
              ".hqx\tTEXT\t\"BnH \"\n"
              ".q\t\"\\xA5\\\"\\\\\\t\"\t\"a\\r\\nb\"\t\"\"\n"
              ".#\t\"#pag\"\tC\\PP\t\"#1\"\n");
    EXPECT_THAT(parseMappings(writeMappings(mappings)).mappings, testing::ElementsAreArray(mappings));
}

TEST(MappingFile, ReadsWhatAPersonTypes) {
    const MappingFile file = parseMappings(
        "# heading\r\n"
        "\r\n"
        "txt\tTEXT\tttxt\tPlain text, \"as is\" \\x41\r\n"
        "\"\\x2Ehqx\"\tTEXT\tBnH \n"
        "..\t\x80\x81\x82\x83\t\"\\x80\\xfF\\x7f\\x20\"");
    ASSERT_FALSE(file.error) << file.error->message;
    EXPECT_THAT(file.mappings, testing::ElementsAre(Mapping{".txt", "TEXT", "ttxt", "Plain text, \"as is\" \\x41"},
                                                    Mapping{".hqx", "TEXT", "BnH ", std::nullopt},
                                                    Mapping{"..", "\x80\x81\x82\x83", "\x80\xFF\x7F ", std::nullopt}));
}

TEST(MappingFile, AnEditorsByteOrderMarkIsNoPartOfTheFirstLine) {
    EXPECT_THAT(parseMappings("\xEF\xBB\xBF.a\tTEXT\tttxt").mappings,
                testing::ElementsAre(Mapping{".a", "TEXT", "ttxt", std::nullopt}));
    EXPECT_EQ(firstError("\xEF\xBB\xBF# \xC3\xA9\n.a\tTEXT\tttxt\tcaf\xC3\xA9"),
              "2: a character beyond ASCII in UTF-8: \\xHH in quotes says its byte");
    EXPECT_EQ(firstError("# \n\xEF\xBB\xBF.a\tTEXT\tttxt\n"), "none") << "bytes of the code page further on";
}

TEST(MappingFile, NamesTheFirstBadLine) {
    EXPECT_EQ(firstError("# 1\n\n.a\tTEXT\n.b\tTEXT"),
              "3: an extension, a type and a creator are needed, separated by tabs");
    EXPECT_EQ(firstError(".a\tTEXT\tttxt\n.b\tTEXTS\tttxt\n"), "2: the type has 5 bytes instead of 4");
    EXPECT_EQ(firstError(".a\tTEXT\t\n"), "1: the creator has 0 bytes instead of 4");
    EXPECT_EQ(firstError("\tTEXT\tttxt"), "1: the extension is empty");
    EXPECT_EQ(firstError("1234567890123456\tTEXT\tttxt"), "1: the extension has more than 15 bytes");
    EXPECT_EQ(firstError(".a\\b\tTEXT\tttxt"), "1: the extension holds a backslash");
    EXPECT_EQ(firstError(".a\tTEXT\tttxt\tc\t"), "1: more than four fields");
    EXPECT_EQ(firstError(".a\tTEXT\tttxt\t\"c\"d"), "1: text after the closing quote");
    EXPECT_EQ(firstError(".a\tTEXT\tttxt\t\"c\n"), "1: a quote that is never closed");
    for (const char* escape : {"\\q", "\\x4", "\\x4G", "\\"})
        EXPECT_EQ(firstError(std::string(".a\tTEXT\tttxt\t\"") + escape + "\""),
                  *escape && escape[1] ? "1: an escape that is none of \\\\ \\\" \\t \\n \\r \\xHH"
                                       : "1: a quote that is never closed");
    EXPECT_EQ(firstError(".a\tTEXT\tttxt\t\"\\x00\""), "1: a zero byte");
    EXPECT_EQ(firstError(std::string(".a\tTEXT\tttxt\tc\0", 16)), "1: a zero byte");
}

TEST(MappingFile, RefusesAnExtensionMappedTwice) {
    EXPECT_EQ(firstError(".b\tTEXT\tttxt\n.a\tTEXT\tttxt\nB\tTEXT\tttxt\n.A\tTEXT\tttxt\nb\tTEXT\tttxt"),
              "3: .b is mapped in line 1 already");
    EXPECT_EQ(firstError(".a\tTEXT\tttxt\n..a\tTEXT\tttxt\n"), "none") << "a second dot is part of the extension";
    if (testing_support::useCodePage(932)) {
        EXPECT_EQ(firstError(".\x83\x41\tTEXT\tttxt\n.\x83\x61\tTEXT\tttxt"), "none") << "trail bytes are no letters";
    }
    if (testing_support::useCodePage(1252)) {
        EXPECT_EQ(firstError(".\xC9\tTEXT\tttxt\n.\xE9\tTEXT\tttxt"), "2: .\xE9 is mapped in line 1 already");
    }
}

TEST(MappingFile, TheStarterSetIsAMappingFile) {
    std::ifstream in(TAMRIX_STARTER_MAPPINGS, std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(in), {});
    const MappingFile file = parseMappings(text);
    ASSERT_FALSE(file.error) << file.error->line << ": " << file.error->message;
    EXPECT_THAT(file.mappings, testing::Contains(Mapping{".txt", "TEXT", "ttxt", "Plain text"}));
    for (const Mapping& mapping : file.mappings)
        EXPECT_NE(text.find('\n' + writeMappings({&mapping, 1})), std::string::npos)
            << mapping.extension << " is not written as the writer would";
}

std::string randomBytes(std::mt19937& random, std::size_t length) {
    std::uniform_int_distribution<int> byte(1, 255);
    std::string bytes(length, ' ');
    for (char& each : bytes) each = static_cast<char>(byte(random));
    return bytes;
}

TEST(MappingFile, AnyBytesComeBack) {
    std::mt19937 random(20);
    for (int round = 0; round < 2000; ++round) {
        Mapping mapping{'.' + randomBytes(random, 1 + random() % 15), randomBytes(random, 4), randomBytes(random, 4),
                        std::nullopt};
        if (mapping.extension.find('\\') != std::string::npos) continue;
        if (random() % 2) mapping.comment = randomBytes(random, random() % 40);
        const std::string text = writeMappings({&mapping, 1});
        const MappingFile file = parseMappings(text);
        ASSERT_FALSE(file.error) << file.error->message << " in " << text;
        ASSERT_THAT(file.mappings, testing::ElementsAre(mapping));
    }
}

}  // namespace
}  // namespace tamrix::client
