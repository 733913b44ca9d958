// The registry's text by example: what is written, however it was typed, and what is refused.
#include "properties/registry_file.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

TEST(RegistryFile, IsWrittenAsTheRegistryEditorWritesItHoweverItWasTyped) {
    testing_support::emptyRegistry();
    standin::setCodePages(1252, 437);
    std::string row;
    for (int i = 0; i < 24; ++i) row += "fe,";
    const std::string typed =
        "REGEDIT4\n; a comment\n[hkey_local_machine\\A]b]\n\"long\"=hex:" + row +
        "fe\n[HKEY_CLASSES_ROOT\\.txt]\n@=\"replaced below\"\n\"a \\\"b\\\" \\\\c\"=hex(1):80,5c,22,0\n"
        "\t\"n\" = hex(4): 2A,00,\\\n\t "
        "00,80\n\"one\"=dword:1\n\"open\"=hex(00000001):61,62\n\"line\"=hex(1):0d,a,00\r\n\n"
        "[HKEY_CLASSES_ROOT\\.TXT\\]\n@=\"txtfile\"  \n[HKEY_CURRENT_USER]";
    const std::string written =
        "REGEDIT4\r\n\r\n[HKEY_CLASSES_ROOT]\r\n\r\n[HKEY_CLASSES_ROOT\\.txt]\r\n@=\"txtfile\"\r\n"
        "\"a \\\"b\\\" \\\\c\"=\"\x80\\\\\\\"\"\r\n\"n\"=dword:8000002a\r\n\"one\"=dword:00000001\r\n"
        "\"open\"=hex(1):61,62\r\n\"line\"=hex(1):0d,0a,00\r\n\r\n"
        "[HKEY_LOCAL_MACHINE]\r\n\r\n[HKEY_LOCAL_MACHINE\\A]b]\r\n\"long\"=hex:" +
        row + "\\\r\n  fe\r\n\r\n";
    std::string reason;
    EXPECT_FALSE(standin::mergeRegistry(typed));
    EXPECT_EQ(standin::registryAsText(reason), written);
}

TEST(RegistryFile, IsRefusedWithTheLineAtFaultWhichIsTheLastOneHere) {
    std::string deep = "[HKEY_CURRENT_USER";
    for (int depth = 1; depth <= 513; ++depth) deep += "\\k";
    std::vector<std::string> texts = {"", "Windows Registry Editor Version 5.00", "REGEDIT4\n\"a\"=\"b\""};
    for (const std::string& line : {deep + "]", "[HKEY_CURRENT_USER\\" + std::string(256, 'k') + "]",
                                    "\"" + std::string(16384, 'v') + "\"=\"d\"", "\"c\0\"=\"d\""s})
        texts.push_back("REGEDIT4\n[HKEY_CURRENT_USER]\n" + line);
    for (const char* line :
         {"[HKEY_CURRENT_USER\\x", "[HKEY_NOBODY\\x]", "[-HKEY_CURRENT_USER\\x]", "c=\"d\"", "\"c\"=\"d",
          "\"c\"=\"d\\n\"", "\"c\"=\"d\" e", "\"c\"", "\"c\"=-", "\"c\"=dword:xyz", "\"c\"=dword:012345678",
          "\"c\"=hex:01,\\", "\"c\"=hex:01,\\\n 0g", "\"c\"=hex(:01", "\"c\"=hex:0g", "\"c\"=hex:01 02"})
        texts.push_back("REGEDIT4\n[HKEY_CURRENT_USER]\n\"a\"=\"b\"\n" + std::string(line));
    for (const std::string& text : texts) {
        const auto error = standin::mergeRegistry(text);
        const long lines = std::ranges::count(text, '\n') + !text.empty();
        EXPECT_TRUE(error && !error->message.empty() && static_cast<long>(error->line) == lines) << text;
    }
}

}  // namespace
