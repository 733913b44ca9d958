// The registry's file by example: the text that is written, what people write, what is refused, and a save that is cut.
#include "properties/registry_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

using namespace std::string_literals;
using testing_support::givenValue;
using testing_support::RegistryText;
using testing_support::registryText;

class RegistryFile : public testing::Test {
protected:
    RegistryFile() {
        testing_support::emptyRegistry();
        standin::clearFaults();
        standin::setCodePages(1252, 437);
    }
    const properties::RegistryFile file;
};

TEST_F(RegistryFile, IsTheTextThatTheRegistryEditorWritesAndPeopleVary) {
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
    ASSERT_TRUE(file.loadText(written).ok);
    EXPECT_EQ(registryText(), content);
    ASSERT_TRUE(standin::saveRegistry(file.path()).ok);
    EXPECT_EQ(file.text(), written);
    ASSERT_TRUE(file.loadText("REGEDIT4\n; mine\n[hkey_classes_root\\.TXT]\n  \"OPEN\" = hex(1): 61,\\\n\t 62\n"
                              "@=\"txtfile\"  \n\n[HKEY_LOCAL_MACHINE\\A]B]\n\"N\"=dword:1")
                    .ok);
    RegistryText merged = content;
    merged["MACHINE\\a]b|N"] = "4:\1\0\0\0"s;
    EXPECT_EQ(registryText(), merged);
}

TEST_F(RegistryFile, IsRefusedWholeWithTheLineAtFault) {
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
        const standin::FileResult result = file.loadText(text);
        EXPECT_TRUE(!result.ok && !result.message.empty() && result.line == line) << text << ": " << result.line;
        EXPECT_EQ(registryText(), before) << text;
    }
    EXPECT_TRUE(standin::loadRegistry(file.path() + ".none").missing);
    EXPECT_NE(standin::loadRegistry("/dev/null").message.find("not a regular file"), std::string::npos);
    EXPECT_NE(standin::saveRegistry(file.path() + "/none").message, "");
}

// Code page 932: katakana so is 83 5C, with a backslash as trail byte; 83 alone is half a character.
TEST_F(RegistryFile, HoldsHalfCharactersOnlyWhereTheyReadBack) {
    standin::setCodePages(932, 932);
    givenValue(HKEY_CLASSES_ROOT, "\x83\x5C\\b", "a\x83", REG_SZ, "\x83\x5C\0"s);
    EXPECT_EQ(registryText(), (RegistryText{{"CLASSES\\\x83\x5C", ""},
                                            {"CLASSES\\\x83\x5C\\b", ""},
                                            {"CLASSES\\\x83\x5C\\b|a\x83", "1:\x83\x5C\0"s}}));
    ASSERT_TRUE(standin::saveRegistry(file.path()).ok);
    HKEY half = nullptr, below = nullptr;
    RegCreateKeyA(HKEY_CLASSES_ROOT, "a\x83", &half);
    RegCreateKeyA(half, "b", &below);
    EXPECT_FALSE(standin::saveRegistry(file.path()).ok) << "written, the two names would read as one";
    RegCloseKey(below);
    RegCloseKey(half);
}

TEST_F(RegistryFile, IsTheOldOneOrTheNewWhereverASaveIsCut) {
    givenValue(HKEY_CLASSES_ROOT, ".old", "v", REG_SZ, "1\0"s);
    ASSERT_TRUE(standin::saveRegistry(file.path()).ok);
    ASSERT_EQ(chmod(file.path().c_str(), 0640), 0);
    const std::string old = file.text();
    givenValue(HKEY_CLASSES_ROOT, ".new", "v", REG_SZ, "2\0"s);
    std::vector<std::string> left;
    bool isSaved = false;
    for (std::size_t n = 1; !isSaved; ++n) {
        std::ofstream(file.path(), std::ios::binary) << old;
        standin::clearFaults();
        standin::failNth(standin::Kind::fileStep, n);
        isSaved = standin::saveRegistry(file.path()).ok;
        EXPECT_NE(isSaved, standin::faultHit());
        left.push_back(file.text());
    }
    EXPECT_EQ(left.size(), left.back().size() + 5) << "open, each byte, flush, rename, flush the folder";
    for (std::size_t i = 0; i + 2 < left.size(); ++i) EXPECT_EQ(left[i], old) << "cut at step " << i + 1;
    EXPECT_EQ(left[left.size() - 2], left.back()) << "only the cut after the rename finds the new file";
    EXPECT_NE(left.back(), old);
    struct stat status {};
    EXPECT_TRUE(stat(file.path().c_str(), &status) == 0 && (status.st_mode & 0777u) == 0640u);
}

}  // namespace
