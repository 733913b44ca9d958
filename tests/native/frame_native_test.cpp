// What the entry point does when calls fail, and what it shows, where the platform can be told and asked.
#include <gtest/gtest.h>
#include <standin.h>

#include <set>
#include <string>
#include <utility>

#include "frame/entry.h"
#include "frame/settings.h"
#include "tamrix32/registry.h"

namespace {

using namespace tamrix;

constexpr char kKey[] = "Software\\Quillon Systems, Inc.\\File Client";

class Loading : public testing::Test {
protected:
    Loading() { forget(); }
    ~Loading() override {
        forget();
        loadQuoteSettings();
    }

    static void forget() {
        standin::clearFaults();
        standin::clearRegistry();
        delete[] std::exchange(dialogFontSettings.faceName, nullptr);
        dialogFontSettings.pointSize = 0;
    }
    static void givenSettings() {
        RegKey key(HKEY_LOCAL_MACHINE, kKey);
        key.SetString("QuoteChars", "#");
        key.SetString("QuoteBracketChars", "{}");
        key.SetString("DialogFont", "Tahoma");
        key.SetDword("DialogFontSize", 9);
    }

    /// The settings in short: bytes in the quote set, the brackets, the face, the size.
    static std::string summary() {
        const char* face = dialogFontSettings.faceName;
        return std::to_string(quoteSettings.count) + static_cast<char>(quoteSettings.open) +
               static_cast<char>(quoteSettings.close) + (face ? face : "-") +
               std::to_string(dialogFontSettings.pointSize);
    }

    /// Attaches with the 1st, 2nd, ... call of the kind failing until none does; what the settings came to each time.
    static std::set<std::string> outcomesOfFailing(standin::Kind kind) {
        std::set<std::string> outcomes;
        for (std::size_t nth = 1;; ++nth) {
            forget();
            givenSettings();
            standin::clearFaults();
            standin::failNth(kind, nth);
            EXPECT_EQ(DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr), 1);
            EXPECT_EQ(standin::openKeys(), 0u);
            EXPECT_EQ(quoteSettings.count > 0, quoteSettings.chars != nullptr);
            if (!standin::faultHit()) break;
            outcomes.insert(summary());
        }
        EXPECT_EQ(summary(), "2{}Tahoma9") << "nothing failed";
        return outcomes;
    }
};

TEST_F(Loading, NeverFails) {
    const std::set<std::string> outcomes = outcomesOfFailing(standin::Kind::allocation);
    EXPECT_EQ(outcomes.count("0{}Tahoma9"), 1u) << "no memory for the configured set: it is empty";
    EXPECT_EQ(outcomes.count("2{}-9"), 1u) << "no memory for the face: the size is set alone";
    const std::set<std::string> expected = {"74[]Tahoma9", "74{}Tahoma9", "2[]Tahoma9", "2{}-0"};
    EXPECT_EQ(outcomesOfFailing(standin::Kind::registry), expected);

    ASSERT_TRUE(standin::denyAccess(HKEY_LOCAL_MACHINE, kKey));
    dialogFontSettings.pointSize = 0;
    delete[] std::exchange(dialogFontSettings.faceName, nullptr);
    DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr);
    EXPECT_EQ(summary(), "74[]-0") << "a denied key counts as absent";
    standin::failNth(standin::Kind::allocation, 1);
    DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr);
    EXPECT_EQ(summary(), "0[]-0") << "no memory for the default set";
    EXPECT_EQ(nameRules.mac[static_cast<unsigned char>(':')].role(), ByteRole::plain);
}

TEST_F(Loading, AnUnknownReasonIsShownOnce) {
    standin::takeMessageBoxes();
    EXPECT_EQ(DllMain(nullptr, 4, nullptr), 1);
    const auto boxes = standin::takeMessageBoxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].owner, nullptr);
    EXPECT_EQ(boxes[0].text, "Unknown DLL entry reason");
    EXPECT_EQ(boxes[0].caption, "Error:");
    EXPECT_EQ(boxes[0].style, 0x00010000u);
}

}  // namespace
