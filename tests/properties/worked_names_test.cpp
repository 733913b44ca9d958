// A few names worked by hand, under the settings that loading the library finds.
#include <gtest/gtest.h>

#include "code_pages.h"
#include "entry/entry.h"
#include "tamrix32/macnames.h"

namespace {

TEST(WorkedNames, GoToWindowsAndBack) {
    const struct {
        const char* reason;
        unsigned page;
        std::string mac, windows, back = mac;
    } rows[] = {
        {"colon and question mark", 1252, "Q1: Budget?", "Q1[058] Budget[063]"},
        {"a final period is dropped by Windows", 1252, "Report.", "Report[046]"},
        {"so is a final space", 1252, "ab ", "ab[032]"},
        {"periods and spaces within a name stay", 1252, " a.b c", " a.b c"},
        {"0x87 is in the set, 0x88 is translated", 1252, "\x87\x88", "[135]\xE0"},
        {"a digit is in no default set", 1252, "a[048]b", "a[048]b"},
        {"over 255, too short, not closed, cut off", 1252, "[300][04][058[05", "[300][04][058[05"},
        {"932: trail byte 0x5C is no backslash", 932, "\x95\x5C:", "\x95\x5C[058]"},
        {"932: a period after the value of a lead byte stays", 932, "\x95\x81.", "\x95\x81."},
        {"932: a lone lead byte ends the name", 932, "ab \x81", "ab[032]", "ab "},
    };
    for (const auto& row : rows) {
        if (!testing_support::useCodePage(row.page)) continue;
        tamrix::loadProcess();
        char windows[32], back[32];
        EXPECT_EQ(AFPtoOSCopy(windows, row.mac.c_str(), 32), int(row.windows.size() + 1)) << row.reason;
        EXPECT_EQ(windows, row.windows) << row.reason;
        EXPECT_EQ(OStoAFPCopy(back, windows, 32), int(row.back.size() + 1)) << row.reason;
        EXPECT_EQ(back, row.back) << row.reason;
    }
    testing_support::useCodePage(1252);
}

}  // namespace
