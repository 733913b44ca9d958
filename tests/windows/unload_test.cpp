// What the library leaves to the platform when it is unloaded, and when its process ends.
#include <gtest/gtest.h>

#include "entry/entry.h"
#include "tamrix32/browse.h"
#include "tamrix32/frame.h"

namespace {

TEST(Unloading, TakesTheHelpWindowsClassAlongWhileTheProcessGoesOn) {
    HINSTANCE const own = TamrixResourceInstance();
    char file[] = "help.hlp";
    const CBrowseDlg dialog(0, 0, nullptr, 0, 0, 7, file);
    WNDCLASSA found;
    ASSERT_TRUE(GetClassInfoA(own, "browseHelper", &found));
    DllMain(own, DLL_PROCESS_DETACH, file);
    EXPECT_TRUE(GetClassInfoA(own, "browseHelper", &found)) << "when the process ends nothing is called";
    DllMain(own, DLL_PROCESS_DETACH, nullptr);
    EXPECT_FALSE(GetClassInfoA(own, "browseHelper", &found));
    for (int attachments = 0; attachments < 2; ++attachments) DllMain(own, DLL_PROCESS_ATTACH, nullptr);
}

}  // namespace
