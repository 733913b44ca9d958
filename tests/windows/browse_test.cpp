// CBrowseDlg: the record that it hands to the platform, what it makes of the answer, and its help.
#include "windows/scenario.h"

namespace {

using namespace scenarios;
using shipped::member;
using testing::ElementsAre;

constexpr int kTitle = 3001, kFilter = 3002, kHelpTopic = 41;
constexpr char kQuits[] = "the program quits";
std::string answer;  // empty when the user cancels
char helpFile[] = "test.hlp", path[260];
char* givenHelpFile = helpFile;
shipped::Storage<24> dialog;

UINT& helpMessage() {
    return *shipped::function<UINT>("?m_HelpMessage@CBrowseDlg@@0IA");
}

/// Replaces the platform's dialog. The object is overwritten meanwhile, as if it had been deleted.
template <bool isSave>
BOOL WINAPI choose(OPENFILENAMEA* record) {
    const auto* const words = reinterpret_cast<const DWORD*>(record);
    for (const int unused : {2, 4, 5, 9, 10, 14, 15, 16, 17, 18}) EXPECT_EQ(words[unused], 0u) << unused;
    EXPECT_TRUE(record->lStructSize == 76 && record->nMaxFile == sizeof path && record->lpstrFile == path);
    const auto orNone = [](const char* text) { return text ? std::string(text) : "-"; };
    char flags[16];
    std::snprintf(flags, sizeof flags, " %lX ", record->Flags);
    noted.push_back((isSave ? "save" : "open") + (flags + orNone(record->lpstrInitialDir)) + " " + path + " " +
                    orNone(record->lpstrTitle) + " " + orNone(record->lpstrFilter) +
                    std::to_string(record->nFilterIndex));
    if (record->Flags & OFN_SHOWHELP) {
        SendMessageA(record->hwndOwner, helpMessage(), 0, 0);
        if (IsWindow(record->hwndOwner)) noted.push_back(IsWindowVisible(record->hwndOwner) ? "shown" : "hidden");
    }
    std::memset(dialog.bytes + 4, 0, 20);
    if (answer == kQuits) PostQuitMessage(7);
    if (!answer.empty()) lstrcpyA(path, answer.c_str());
    return !answer.empty();
}

bool isHelpRegistered() {
    WNDCLASSA found;
    return GetClassInfoA(shipped::dll(), "browseHelper", &found);
}

/// Browses with these arguments of the constructor from an initial path.
Scenario browsing(int save, int folder, std::string initial, int title = 0, int filter = 0, int help = 0) {
    calls::replace("GetOpenFileNameA", reinterpret_cast<const void*>(choose<false>));
    calls::replace("GetSaveFileNameA", reinterpret_cast<const void*>(choose<true>));
    return {[=]() mutable {
        helpMessage() = 0;  // so that each run registers the window class of the help again
        lstrcpyA(path, "before.txt");
        member("??0CBrowseDlg@@QAE@HHPAXHHHPAD@Z", dialog, save, folder, static_cast<void*>(GetModuleHandleA(nullptr)),
               title, filter, help, givenHelpFile);
        const int result =
            member<int>("?invoke@CBrowseDlg@@UAEHPAXPAD1@Z", dialog, static_cast<void*>(nullptr), path, initial.data());
        member("??1CBrowseDlg@@UAE@XZ", dialog);
        shipped::enter(DLL_PROCESS_DETACH, path);  // as at the end of the process, where nothing is called
        noted.push_back(std::to_string(result) + " " + path + (isHelpRegistered() ? " with help" : ""));
        shipped::enter(DLL_PROCESS_DETACH);
        EXPECT_FALSE(isHelpRegistered());
        for (int i = 0; i < 2; ++i) shipped::enter(DLL_PROCESS_ATTACH);
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
                                   "help test.hlp 1 41", "hidden", "1 D:\\Sub with help"));
    givenHelpFile = nullptr;
    play(browsing(0, 0, "old.txt", 0, 0, kHelpTopic));
    EXPECT_EQ(noted.front(), "open 9180C  before.txt - -0") << "without a file there is no help";
    givenHelpFile = helpFile;
    answer = kQuits;
    play(browsing(1, 0, ""));
    EXPECT_THAT(noted, ElementsAre("save 9080E  before.txt - -0", "0 the program quits", "quit"));
}

}  // namespace

Scenario scenarios::choosing(bool folder) {
    answer = "D:\\Sub\\{Selecting a folder}";
    return browsing(0, folder, "D:\\", kTitle, kFilter, kHelpTopic);
}
