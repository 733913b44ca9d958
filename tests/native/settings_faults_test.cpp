// Settings and paths while memory runs out or the platform fails, and what an unknown entry reason shows.
#include <gtest/gtest.h>
#include <standin.h>

#include <algorithm>
#include <set>

#include "dialogs/font_settings.h"
#include "entry/entry.h"
#include "macnames/name_settings.h"
#include "tamrix32/macnames.h"
#include "tamrix32/registry.h"

namespace {

using namespace tamrix;

class Failing : public testing::Test {
protected:
    ~Failing() override {
        standin::clearFaults();
        standin::clearRegistry();
        DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr);
    }
};

TEST_F(Failing, SettingsCountAsNotConfigured) {
    // One setting is missing, or both that are read from the same key.
    const std::set<std::string> allowed = {"74{}Tahoma9", "2[]Tahoma9", "74[]Tahoma9", "2{}-0"};
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
            standin::clearFaults();
            standin::failNth(kind, nth);
            EXPECT_EQ(DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr), 1);
            EXPECT_EQ(standin::openKeys(), 0u);
            hit = standin::faultHit();
            const char* const face = dialogFontSettings.face();
            const std::string summary = std::to_string(std::count(nameRules.inSet, nameRules.inSet + 256, true)) +
                                        static_cast<char>(nameRules.open) + static_cast<char>(nameRules.close) +
                                        (face ? face : "-") + std::to_string(dialogFontSettings.pointSize);
            EXPECT_TRUE(summary == "2{}Tahoma9" || (hit && allowed.count(summary))) << nth << ' ' << summary;
        }
        EXPECT_GT(nth, 4u) << "calls that could fail";
    }
}

TEST_F(Failing, AWorkingCopyThatCannotBeHadClearsTheParts) {
    char outputs[4][16] = {"?", "?", "?", "?"};
    standin::failNth(standin::Kind::allocation, 1);
    EXPECT_EQ(UNCToStrings(R"(\\Z@S\V\r)", outputs[0], outputs[1], outputs[2], outputs[3], 16), 0);
    for (const auto& output : outputs) EXPECT_STREQ(output, "");
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
