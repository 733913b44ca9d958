// Settings, names and strings while memory runs out or the platform fails, and what an unknown entry reason shows.
#include <gtest/gtest.h>
#include <standin.h>

#include <set>

#include "code_pages.h"
#include "frame/entry.h"
#include "frame/settings.h"
#include "tamrix32/macnames.h"
#include "tamrix32/registry.h"
#include "tamrix32/strings.h"

namespace {

using namespace tamrix;

class Failing : public testing::Test {
protected:
    ~Failing() override {
        standin::clearFaults();
        standin::clearRegistry();
        testing_support::useCodePage(1252);
        DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr);
    }
};

TEST_F(Failing, SettingsCountAsNotConfigured) {
    // One setting is missing, or both that are read from the same key.
    const std::set<std::string> allowed = {"74{}Tahoma9", "0{}Tahoma9", "2[]Tahoma9", "74[]Tahoma9", "2{}-0", "2{}-9"};
    for (const auto kind : {standin::Kind::allocation, standin::Kind::registry}) {
        std::size_t nth = 1;
        for (bool hit = true; hit; ++nth) {
            {
                RegKey key(HKEY_LOCAL_MACHINE, "Software\\Quillon Systems, Inc.\\File Client");
                key.SetString("QuoteChars", "#");
                key.SetString("QuoteBracketChars", "{}");
                key.SetString("DialogFont", "Tahoma");
                key.SetDword("DialogFontSize", 9);
            }
            delete[] std::exchange(dialogFontSettings.faceName, nullptr);
            dialogFontSettings.pointSize = 0;
            standin::clearFaults();
            standin::failNth(kind, nth);
            EXPECT_EQ(DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr), 1);
            EXPECT_EQ(standin::openKeys(), 0u);
            hit = standin::faultHit();
            const char* const face = dialogFontSettings.faceName;
            const std::string summary = std::to_string(std::count(nameRules.inSet, nameRules.inSet + 256, true)) +
                                        static_cast<char>(nameRules.open) + static_cast<char>(nameRules.close) +
                                        (face ? face : "-") + std::to_string(dialogFontSettings.pointSize);
            EXPECT_TRUE(summary == "2{}Tahoma9" || (hit && allowed.count(summary))) << nth << ' ' << summary;
        }
        EXPECT_GT(nth, 4u) << "calls that could fail";
    }
}

TEST_F(Failing, NamesAndPathsAreLeftAlone) {
    char name[40] = "a:b", outputs[4][16] = {"?", "?", "?", "?"};
    for (const auto translation : {&AFPtoOS, &OStoAFP}) {
        standin::failNth(standin::Kind::allocation, 1);
        EXPECT_EQ(translation(name, sizeof name), -1);
        EXPECT_STREQ(name, "a:b");
    }
    standin::failNth(standin::Kind::allocation, 1);
    EXPECT_EQ(UNCToStrings(R"(\\Z@S\V\r)", outputs[0], outputs[1], outputs[2], outputs[3], 16), 0);
    for (const auto& output : outputs) EXPECT_STREQ(output, "");
}

TEST_F(Failing, CaseChangesUpToTheCharacterThatCannotBeMapped) {
    testing_support::useCodePage(932);
    // Full-width a and b, each asked for there and back.
    const char* const after[] = {"X\x82\x81y\x82\x82z", "X\x82\x81y\x82\x82z", "X\x82\x60Y\x82\x82z",
                                 "X\x82\x60Y\x82\x82z"};
    for (std::size_t n = 1; n <= 4; ++n) {
        char text[] = "x\x82\x81y\x82\x82z";
        standin::clearFaults();
        standin::failNth(standin::Kind::conversion, n);
        EXPECT_EQ(dbcs_strupr(text), nullptr) << n;
        EXPECT_STREQ(text, after[n - 1]) << n;
    }
    standin::failNth(standin::Kind::conversion, 1);
    EXPECT_NE(dbcs_stricmp("\x82\x60", "\x82\x81"), 0) << "what can't be mapped compares as it is";
}

TEST_F(Failing, AnUnknownReasonIsShownOnce) {
    standin::takeMessageBoxes();
    EXPECT_EQ(DllMain(nullptr, 4, nullptr), 1);
    const auto boxes = standin::takeMessageBoxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].owner, nullptr);
    EXPECT_EQ(boxes[0].text + '|' + boxes[0].caption, "Unknown DLL entry reason|Error:");
    EXPECT_EQ(boxes[0].style, 0x00010000u);
}

}  // namespace
