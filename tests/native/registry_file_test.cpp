// The registry's text by example: what is written, what people write, and what is refused.
#include "properties/registry_file.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;
using testing_support::givenValue;
using testing_support::RegistryText;
using testing_support::registryText;

TEST(RegistryFile, IsTheTextThatTheRegistryEditorWritesAndPeopleVary) {
    testing_support::emptyRegistry();
    standin::setCodePages(1252, 437);
    std::string row = "\"long\"=hex:fe";
    for (int i = 1; i < 24; ++i) row += ",fe";
    const std::string written =
        "REGEDIT4\r\n\r\n[HKEY_CLASSES_ROOT]\r\n\r\n[HKEY_CLASSES_ROOT\\.txt]\r\n@=\"txtfile\"\r\n"
        "\"a \\\"b\\\" \\\\c\"=\"\x80\\\\\\\"\"\r\n\"n\"=dword:8000002a\r\n\"open\"=hex(1):61,62\r\n"
        "\"line\"=hex(1):0d,0a,00\r\n\r\n[HKEY_LOCAL_MACHINE]\r\n\r\n[HKEY_LOCAL_MACHINE\\a]b]\r\n" +
        row + ",\\\r\n  fe\r\n\r\n";
    const RegistryText content = {{"CLASSES\\.txt", ""},
                                  {"CLASSES\\.txt|", "1:txtfile\0"s},
                                  {"CLASSES\\.txt|a \"b\" \\c", "1:\x80\\\"\0"s},
                                  {"CLASSES\\.txt|n", "4:\x2A\0\0\x80"s},
                                  {"CLASSES\\.txt|open", "1:ab"},
                                  {"CLASSES\\.txt|line", "1:\r\n\0"s},
                                  {"MACHINE\\a]b", ""},
                                  {"MACHINE\\a]b|long", "3:" + std::string(25, '\xFE')}};
    ASSERT_FALSE(standin::mergeRegistry(written));
    EXPECT_EQ(registryText(), content);
    std::string reason;
    EXPECT_EQ(standin::registryAsText(reason), written);
    ASSERT_FALSE(
        standin::mergeRegistry("REGEDIT4\n; mine\n[hkey_classes_root\\.TXT]\n  \"OPEN\" = hex(1): 61,\\\n\t 62\n"
                               "@=\"txtfile\"  \n\n[HKEY_LOCAL_MACHINE\\A]B]\n\"N\"=dword:1"));
    RegistryText merged = content;
    merged["MACHINE\\a]b|N"] = "4:\1\0\0\0"s;
    EXPECT_EQ(registryText(), merged);
}

TEST(RegistryFile, IsRefusedWholeWithTheLineAtFault) {
    testing_support::emptyRegistry();
    givenValue(HKEY_CURRENT_USER, "Before", "v", REG_SZ, "x");
    const RegistryText before = registryText();
    std::string deep = "[HKEY_CURRENT_USER\\k";
    for (int depth = 1; depth <= 512; ++depth) deep += "\\k";
    const std::string lines[] = {"[HKEY_CURRENT_USER\\x",
                                 "[HKEY_NOBODY\\x]",
                                 "[-HKEY_CURRENT_USER\\x]",
                                 deep + "]",
                                 "[HKEY_CURRENT_USER\\" + std::string(256, 'k') + "]",
                                 "\"c\"=\"d",
                                 R"("c"="d\n")",
                                 R"("c"="d" e)",
                                 "\"c\"",
                                 "\"c\"=-",
                                 "\"c\"=dword:xyz",
                                 "\"c\"=dword:123456789",
                                 "\"c\"=hex:01,\\",
                                 "\"c\"=hex(:01",
                                 "\"c\"=hex:0g",
                                 "\"c\0\"=\"d\""s,
                                 "\"" + std::string(16384, 'v') + "\"=\"d\""};
    std::vector<std::pair<std::string, std::size_t>> texts = {
        {"", 0},
        {"Windows Registry Editor Version 5.00\n", 1},
        {"REGEDIT4\n\"a\"=\"b\"\n", 2},
        {"REGEDIT4\n[HKEY_CURRENT_USER\\n]\n\"c\"=hex:01,\\\n  0g", 4}};
    for (const std::string& line : lines)
        texts.emplace_back("REGEDIT4\n[HKEY_CURRENT_USER\\n]\n\"a\"=\"b\"\n" + line + '\n', 4);
    for (const auto& [text, line] : texts) {
        const auto error = standin::mergeRegistry(text);
        EXPECT_TRUE(error && !error->message.empty() && error->line == line) << text;
        EXPECT_EQ(registryText(), before) << text;
    }
}

}  // namespace
