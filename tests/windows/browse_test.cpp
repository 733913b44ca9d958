// CBrowseDlg: the record that it hands to the platform, what it makes of the answer, and its help.
#include "windows/scenario.h"

namespace {

using namespace scenarios;
using shipped::member;
using testing::ElementsAre;

constexpr int kTitle = 3001, kFilter = 3002, kHelpTopic = 41;
char helpFile[] = "test.hlp";
char* helpName = helpFile;
std::string answer;
char path[260];
shipped::Storage<24> dialog;
std::function<void()> during = [] {};

std::string orNone(const char* text) {
    return text ? text : "-";
}

BOOL choose(const char* mode, OPENFILENAMEA* record) {
    const auto helpMessage = *reinterpret_cast<UINT*>(GetProcAddress(shipped::dll(), "?m_HelpMessage@CBrowseDlg@@0IA"));
    OPENFILENAMEA rest = *record;
    rest.lStructSize = rest.Flags = rest.nFilterIndex = rest.nMaxFile = 0;
    rest.hwndOwner = nullptr;
    rest.lpstrFile = nullptr;
    rest.lpstrFilter = rest.lpstrInitialDir = rest.lpstrTitle = nullptr;
    EXPECT_EQ(std::string(reinterpret_cast<char*>(&rest), 76), std::string(76, '\0')) << "every other field is zero";
    EXPECT_EQ(record->lStructSize, 76u);
    EXPECT_EQ(record->nMaxFile, 260u);
    EXPECT_EQ(record->lpstrFile, path);
    char text[16];
    std::snprintf(text, sizeof text, " %lX ", record->Flags);
    noted.push_back(mode + (text + orNone(record->lpstrInitialDir)) + " " + record->lpstrFile + " " +
                    orNone(record->lpstrTitle) + " " + orNone(record->lpstrFilter) +
                    std::to_string(record->nFilterIndex));
    if (record->Flags & OFN_SHOWHELP) {
        SendMessageA(record->hwndOwner, helpMessage, 0, 0);
        if (IsWindow(record->hwndOwner)) noted.push_back(IsWindowVisible(record->hwndOwner) ? "shown" : "hidden");
    }
    during();
    if (!answer.empty()) lstrcpyA(path, answer.c_str());
    return !answer.empty();
}

BOOL WINAPI chooseOpen(OPENFILENAMEA* record) {
    return choose("open", record);
}

BOOL WINAPI chooseSave(OPENFILENAMEA* record) {
    return choose("save", record);
}

/// Browses with these arguments of the constructor from an initial path.
Scenario browsing(int save, int folder, std::string initial, int title = 0, int filter = 0, int help = 0) {
    calls::replace("GetOpenFileNameA", reinterpret_cast<const void*>(chooseOpen));
    calls::replace("GetSaveFileNameA", reinterpret_cast<const void*>(chooseSave));
    return {[=]() mutable {
        // So that each run registers them anew.
        UnregisterClassA("browseHelper", shipped::dll());
        *reinterpret_cast<UINT*>(GetProcAddress(shipped::dll(), "?m_HelpMessage@CBrowseDlg@@0IA")) = 0;
        lstrcpyA(path, "before.txt");
        member("??0CBrowseDlg@@QAE@HHPAXHHHPAD@Z", dialog, save, folder, static_cast<void*>(GetModuleHandleA(nullptr)),
               title, filter, help, helpName);
        const int result =
            member<int>("?invoke@CBrowseDlg@@UAEHPAXPAD1@Z", dialog, static_cast<void*>(nullptr), path, initial.data());
        noted.push_back(std::to_string(result) + " " + path);
        member("??1CBrowseDlg@@UAE@XZ", dialog);
    }};
}

TEST(Browser, AsksThePlatformInThreeModes) {
    answer = "";
    play(browsing(0, 0, "D:\\Data\\old.txt", kTitle, kFilter));
    EXPECT_THAT(noted, ElementsAre("open 9180C D:\\Data before.txt Choose for the test Text files1", "0 before.txt"));
    answer = "D:\\Sub\\{Selecting a folder}";
    play(browsing(1, 0, "D:\\Data\\old.txt"));
    EXPECT_THAT(noted, ElementsAre("save 9080E D:\\Data old.txt - -0", "1 " + answer));
    play(browsing(0, 1, std::string(300, 'x'), 0, 0, kHelpTopic));
    EXPECT_THAT(noted, ElementsAre("save 9091C " + std::string(259, 'x') + " {Selecting a folder} - -0",
                                   "help test.hlp 1 41", "hidden", "1 D:\\Sub"));
    helpName = nullptr;
    play(browsing(0, 0, "old.txt", 0, 0, kHelpTopic));
    EXPECT_EQ(noted.front(), "open 9180C  before.txt - -0") << "without a file there is no help";
    helpName = helpFile;
}

TEST(Browser, NeedsItsObjectNoMoreAndTakesNoAnswerFromAQuit) {
    answer = "D:\\Sub\\{Selecting a folder}";
    during = [] { std::memset(dialog.bytes + 4, 0, 20); };
    play(browsing(0, 1, ""));
    EXPECT_EQ(noted.back(), "1 D:\\Sub");
    during = [] { PostQuitMessage(7); };
    play(browsing(1, 0, ""));
    EXPECT_THAT(noted, ElementsAre(testing::_, testing::StartsWith("0 "), "quit"));
    during = [] {};
}

TEST(Browser, CanBeLeftWhicheverCallFails) {
    answer = "D:\\Sub\\{Selecting a folder}";
    for (const int folder : {0, 1}) sweep(browsing(0, folder, "D:\\", kTitle, kFilter, kHelpTopic));
}

}  // namespace
