// Lines of the mapping editor's list, put together and taken apart.
#include "dialogs/mapping_lines.h"

#include <gmock/gmock.h>

#include <string>

#include "code_pages.h"

namespace tamrix {
namespace {

struct LineRow {
    const char* reason;
    std::string line;
    const char* extension;
    const char* comment;  // null: none is written
};

TEST(MappingLines, AreSplitAtTheFirstTab) {
    const std::string longText(5000, 'x');
    const std::string longExtension = "." + longText;
    const std::string longLine = longExtension + "\t" + longText;
    const LineRow rows[] = {
        {"with a comment", ".txt\tPlain text", ".txt", "Plain text"},
        {"read from the store without a comment", ".txt", ".txt", nullptr},
        {"added with an empty comment", ".txt\t", ".txt", nullptr},
        {"a tab in the comment stays", ".txt\ta\tb", ".txt", "a\tb"},
        {"code page 932: the trail byte of U+8868 is a backslash", ".\x95\x5C\t\x95\x5C", ".\x95\x5C", "\x95\x5C"},
        {"a lead byte before the tab takes no tab with it", ".a\x95\tb", ".a\x95", "b"},
        {"any length", longLine, longExtension.c_str(), longText.c_str()},
    };
    for (const LineRow& row : rows) {
        OwnedText text(new char[row.line.size() + 1]);
        row.line.copy(text.get(), row.line.size());
        text[row.line.size()] = '\0';
        const MappingLine mapping = splitLine(std::move(text));
        EXPECT_STREQ(mapping.extension, row.extension) << row.reason;
        EXPECT_STREQ(mapping.comment, row.comment) << row.reason;
    }
    EXPECT_EQ(splitLine(nullptr).extension, nullptr);
}

TEST(MappingLines, CarryATabForEveryCommentThatIsThere) {
    EXPECT_STREQ(joinedLine(".txt", "Plain text").get(), ".txt\tPlain text");
    EXPECT_STREQ(joinedLine(".txt", "").get(), ".txt\t");
    EXPECT_STREQ(joinedLine(".txt", nullptr).get(), ".txt");
    const std::string longText(300, 'x');
    EXPECT_EQ(joinedLine(longText.c_str(), longText.c_str()).get(), longText + "\t" + longText);
}

TEST(MappingLines, GiveATypedExtensionItsDot) {
    EXPECT_STREQ(dottedExtension("txt").get(), ".txt");
    EXPECT_STREQ(dottedExtension(".txt").get(), ".txt");
    EXPECT_STREQ(dottedExtension("..txt").get(), "..txt");
    EXPECT_STREQ(dottedExtension("tar.gz").get(), ".tar.gz");
}

TEST(MappingLines, TakeExtensionsOfOneToFifteenBytes) {
    EXPECT_FALSE(isAcceptedLength(0));
    EXPECT_TRUE(isAcceptedLength(1));
    EXPECT_TRUE(isAcceptedLength(15));
    EXPECT_FALSE(isAcceptedLength(16));
    EXPECT_FALSE(isAcceptedLength(19)) << "all that the field's buffer can say";
}

TEST(MappingLines, AreStoredForCodesThatAMappingCanHold) {
    EXPECT_TRUE(canBeStored("dosa", "TEXT"));
    EXPECT_TRUE(canBeStored("", "abc"));
    EXPECT_FALSE(canBeStored("dosax", "TEXT"));
    EXPECT_FALSE(canBeStored("dosa", "TEXTx"));
    if (testing_support::useCodePage(932)) {
        EXPECT_FALSE(canBeStored("dosa", "TEXT\x83")) << "half a character is a byte";
    }
    testing_support::useCodePage(1252);
}

}  // namespace
}  // namespace tamrix
