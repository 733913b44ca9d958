// CBrowseDlg: the record that it hands to the platform, seen at the import, and the platform's own dialog in all modes,
// used as by a person.
#include <gmock/gmock.h>
#include <windows.h>

#include <cstring>
#include <functional>
#include <string>

#include "code_pages.h"
#include "tamrix32/browse.h"
#include "windows/allocations.h"
#include "windows/call_watch.h"
#include "windows/import_hook.h"
#include "windows/soak.h"
#include "windows/user.h"

struct BrowseLayout {
    static unsigned helpMessage() { return CBrowseDlg::m_HelpMessage; }
    static int helpId() { return CBrowseDlg::m_nHelpID; }
    static char* helpFile() { return CBrowseDlg::m_pcHelpFile; }
};

namespace {

using namespace std::string_literals;
using namespace testing_support;

constexpr char kPlaceholder[] = "{Selecting a folder}";
constexpr int kTitle = 3001, kFilter = 3002, kLongTitle = 3003, kLongFilter = 3004, kZeroFilter = 3005;
char helpFile[] = "test.hlp";

HINSTANCE program() {
    return GetModuleHandleA(nullptr);
}

/// What the platform was asked, and what it is to answer.
struct Asked {
    OPENFILENAMEA record;
    std::string initialFolder;
    std::string file;
    std::string title;
    std::string filter;  // all its bytes
    bool forSave;
    BOOL answer = FALSE;
    std::string answeredPath;
    void (*during)(HWND owner) = nullptr;
} asked;

BOOL answer(OPENFILENAMEA* record, bool forSave) {
    asked.record = *record;
    asked.forSave = forSave;
    asked.initialFolder = record->lpstrInitialDir;
    asked.file = record->lpstrFile;
    asked.title = record->lpstrTitle ? record->lpstrTitle : "(none)";
    asked.filter = record->lpstrFilter ? std::string(record->lpstrFilter, 128) : "(none)";
    if (asked.during) asked.during(record->hwndOwner);
    if (!asked.answeredPath.empty()) lstrcpyA(record->lpstrFile, asked.answeredPath.c_str());
    return asked.answer;
}

template <bool forSave>
BOOL WINAPI answerFor(OPENFILENAMEA* record) {
    return answer(record, forSave);
}

class BrowseRecord : public testing::Test {
protected:
    BrowseRecord() {
        asked = {};
        EXPECT_TRUE(open_.installed() && save_.installed());
    }

    char path[260] = "before.txt";

private:
    ImportHook open_{nullptr, "comdlg32.dll", "GetOpenFileNameA", reinterpret_cast<void*>(answerFor<false>)};
    ImportHook save_{nullptr, "comdlg32.dll", "GetSaveFileNameA", reinterpret_cast<void*>(answerFor<true>)};
};

TEST_F(BrowseRecord, DiffersByMode) {
    struct Row {
        const char* reason;
        CBrowseDlg dialog;
        std::string initial;
        bool forSave;
        DWORD flags;
        std::string folder;
        std::string file;
    } rows[] = {
        {"open", CBrowseDlg(), "D:\\Data\\old.txt", false, 0x9180C, "D:\\Data", "before.txt"},
        {"save", CBrowseDlg(1), "D:\\Data\\old.txt", true, 0x9080E, "D:\\Data", "old.txt"},
        {"save without a folder", CBrowseDlg(1), "old.txt", true, 0x9080E, "", "before.txt"},
        {"folder", CBrowseDlg(1, 1), "D:\\Data", true, 0x9090C, "D:\\Data", kPlaceholder},
        {"folder, always by saving", CBrowseDlg(0, 1), "D:\\", true, 0x9090C, "D:\\", kPlaceholder},
        {"a path that fills the buffer", CBrowseDlg(0, 1), std::string(300, 'x'), true, 0x9090C, std::string(259, 'x'),
         kPlaceholder},
    };
    const HWND owner = GetDesktopWindow();
    for (Row& row : rows) {
        SCOPED_TRACE(row.reason);
        lstrcpyA(path, "before.txt");
        EXPECT_EQ(row.dialog.invoke(owner, path, row.initial.data()), 0);
        EXPECT_EQ(asked.forSave, row.forSave);
        EXPECT_EQ(asked.initialFolder, row.folder);
        EXPECT_EQ(asked.file, row.file);
        EXPECT_EQ(asked.record.lpstrFile, path);

        OPENFILENAMEA expected = {};
        expected.lStructSize = 76;
        expected.hwndOwner = owner;
        expected.nMaxFile = 260;
        expected.Flags = row.flags;
        expected.lpstrFile = path;
        expected.lpstrInitialDir = asked.record.lpstrInitialDir;
        EXPECT_EQ(std::memcmp(&asked.record, &expected, 76), 0) << "every other field is zero";
    }
}

TEST_F(BrowseRecord, TakesNoTrailByteForABackslash) {
    if (!useCodePage(932)) GTEST_SKIP() << "needs code page 932";
    char initial[] = "D:\\\x95\\.txt";  // hyo, whose second byte is a backslash's
    CBrowseDlg(1).invoke(nullptr, path, initial);
    EXPECT_EQ(asked.initialFolder, "D:");
    EXPECT_EQ(asked.file, initial + 3);
    asked.answer = 1;
    asked.answeredPath = "D:\\\x95\\\\"s + kPlaceholder;
    CBrowseDlg(0, 1).invoke(nullptr, path, initial);
    EXPECT_EQ(asked.initialFolder, initial);
    EXPECT_STREQ(path, "D:\\\x95\\");
}

TEST_F(BrowseRecord, CarriesTitleAndFilter) {
    const struct {
        const char* reason;
        HINSTANCE module;
        int title;
        int filter;
        std::string seenTitle;
        std::string seenFilter;
    } rows[] = {
        {"none", program(), 0, 0, "(none)", "(none)"},
        {"both", program(), kTitle, kFilter, "Choose for the test", "Text files\0*.txt\0All files\0*.*\0"s},
        {"a filter with zeros", program(), 0, kZeroFilter, "(none)", "Text files\0*.txt\0"s},
        {"ids without a module", nullptr, kTitle, kFilter, "", ""},
        {"missing strings", program(), 9999, 9998, "", ""},
        {"cut", program(), kLongTitle, 0, "A title of more than sixty-three characters, of which the dialo", "(none)"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        CBrowseDlg(0, 0, row.module, row.title, row.filter).invoke(nullptr, path, nullptr);
        EXPECT_EQ(asked.title, row.seenTitle);
        EXPECT_EQ(asked.filter.substr(0, row.seenFilter.size()), row.seenFilter);
        EXPECT_EQ(asked.record.nFilterIndex, row.filter ? 1u : 0u);
        if (asked.record.lpstrFilter) {
            EXPECT_EQ(asked.filter.find_first_not_of('\0', row.seenFilter.size()), std::string::npos);
        }
    }
    CBrowseDlg(0, 0, program(), 0, kLongFilter).invoke(nullptr, path, nullptr);
    EXPECT_EQ(asked.filter.find('\0'), 126u) << "both closing zeros are inside the buffer";
    EXPECT_EQ(asked.filter[127], 0);
}

TEST_F(BrowseRecord, CutsThePlaceholderOffAnAcceptedFolderOnly) {
    const struct {
        const char* reason;
        CBrowseDlg dialog;
        BOOL answer;
        std::string chosen;
        std::string expected;
    } rows[] = {
        {"accepted", CBrowseDlg(0, 1), 1, "D:\\Sub\\"s + kPlaceholder, "D:\\Sub"},
        {"a root", CBrowseDlg(0, 1), 7, "D:\\"s + kPlaceholder, "D:\\"},
        {"failed", CBrowseDlg(0, 1), 0, "D:\\Sub\\"s + kPlaceholder, "D:\\Sub\\"s + kPlaceholder},
        {"no folder mode", CBrowseDlg(1, 0), 1, "D:\\Sub\\"s + kPlaceholder, "D:\\Sub\\"s + kPlaceholder},
    };
    for (auto row : rows) {
        asked.answer = row.answer;
        asked.answeredPath = row.chosen;
        EXPECT_EQ(row.dialog.invoke(nullptr, path, nullptr), row.answer) << row.reason;
        EXPECT_EQ(path, row.expected) << row.reason;
    }
}

struct Helped {
    HWND window;
    std::string file;
    UINT command;
    ULONG_PTR data;
} helped;

BOOL WINAPI seeHelp(HWND window, LPCSTR file, UINT command, ULONG_PTR data) {
    helped = {window, file, command, data};
    return TRUE;
}

TEST_F(BrowseRecord, OwnsTheDialogByAWindowThatOpensTheHelp) {
    const ImportHook help(nullptr, "user32.dll", "WinHelpA", reinterpret_cast<void*>(seeHelp));
    ASSERT_TRUE(help.installed());
    CBrowseDlg first(0, 0, nullptr, 0, 0, 41, helpFile);
    CBrowseDlg last(0, 0, nullptr, 0, 0, 42, helpFile);
    EXPECT_EQ(BrowseLayout::helpMessage(), RegisterWindowMessageA("commdlg_help"));
    const HWND frame = CreateWindowExA(0, "STATIC", "", WS_OVERLAPPED, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    for (const HWND owner : {HWND(nullptr), frame}) {
        asked.during = [](HWND window) {
            char name[32] = "";
            GetClassNameA(window, name, sizeof name);
            EXPECT_STREQ(name, "browseHelper");
            EXPECT_FALSE(IsWindowVisible(window));
            EXPECT_EQ(SendMessageA(window, BrowseLayout::helpMessage(), 1, 2), 0);
            EXPECT_EQ(helped.window, window);
            EXPECT_EQ(helped.file, helpFile);
            EXPECT_EQ(helped.command, UINT(HELP_CONTEXT));
            EXPECT_EQ(helped.data, 42u) << "the settings are those of the object made last";
            const auto wanted = GetParent(window) ? WS_CHILD : WS_OVERLAPPEDWINDOW;
            EXPECT_EQ(GetWindowLongA(window, GWL_STYLE) & (WS_CHILD | WS_OVERLAPPEDWINDOW), wanted);
        };
        first.invoke(owner, path, nullptr);
        EXPECT_EQ(asked.record.Flags, 0x9180Cu | OFN_SHOWHELP);
        EXPECT_FALSE(IsWindow(asked.record.hwndOwner));
        EXPECT_NE(asked.record.hwndOwner, owner);
    }
    DestroyWindow(frame);

    TAMRIX_WATCH("user32.dll", CreateWindowExA);
    watchCreateWindowExA.failNth(1);
    asked = {};
    asked.answer = 1;
    EXPECT_EQ(last.invoke(GetDesktopWindow(), path, nullptr), 1) << "without the window";
    EXPECT_TRUE(watchCreateWindowExA.failed());
    EXPECT_EQ(asked.record.hwndOwner, nullptr);
    EXPECT_TRUE(asked.record.Flags & OFN_SHOWHELP);
}

TEST_F(BrowseRecord, HasNoHelpWithoutAFileAndATopic) {
    for (const auto& [id, file] : {std::pair<int, char*>(41, nullptr), {0, helpFile}}) {
        CBrowseDlg shown(0, 0, nullptr, 0, 0, 41, helpFile);
        CBrowseDlg none(0, 0, nullptr, 0, 0, id, file);
        EXPECT_EQ(BrowseLayout::helpId(), 0);
        EXPECT_EQ(BrowseLayout::helpFile(), file);
        shown.invoke(GetDesktopWindow(), path, nullptr);
        EXPECT_EQ(asked.record.Flags, 0x9180Cu);
        EXPECT_EQ(asked.record.hwndOwner, GetDesktopWindow());
    }
}

TEST_F(BrowseRecord, ShowsNothingWithoutMemory) {
    failAllocations(true);
    const int result = CBrowseDlg().invoke(nullptr, path, nullptr);
    failAllocations(false);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(asked.record.lStructSize, 0u) << "nothing was asked";
}

/// A folder with the folder Sub and the file old.txt in it.
class BrowseDialog : public testing::Test {
protected:
    BrowseDialog() {
        char temp[200];
        GetTempPathA(sizeof temp, temp);
        home = temp + "tamrix browse test"s;
        CreateDirectoryA(home.c_str(), nullptr);
        CreateDirectoryA((home + "\\Sub").c_str(), nullptr);
        const HANDLE file =
            CreateFileA((home + "\\old.txt").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        CloseHandle(file);
    }
    ~BrowseDialog() override {
        DeleteFileA((home + "\\old.txt").c_str());
        RemoveDirectoryA((home + "\\Sub").c_str());
        RemoveDirectoryA(home.c_str());
    }

    /// Shows the dialog to a user, under the title of the test.
    int shown(bool save, bool folder, std::string initial, const std::function<void(HWND)>& user) {
        CBrowseDlg dialog(save, folder, program(), kTitle, kFilter, 41, helpFile);
        return withUser("Choose for the test", user, [&] { return dialog.invoke(nullptr, path, initial.data()); });
    }

    std::string home;
    char path[260] = "";
};

// Controls of the platform's dialog, and the two messages of its list that are used here.
constexpr int kFolderBox = 0x471, kFileView = 0x461, kNameBox = 0x47C;
constexpr UINT kGetItemCount = 0x1004, kGetItemRect = 0x100E;
constexpr LONG kLabelOnly = 2;

HWND nameOf(HWND dialog) {
    return GetDlgItem(dialog, kNameBox);
}

void push(HWND dialog, int button) {
    click(GetDlgItem(dialog, button));
}

void pressOk(HWND dialog) {
    push(dialog, IDOK);
}
void cancel(HWND dialog) {
    PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
}

/// Goes into the first folder of the list, as a double click does.
void enterFirstFolder(HWND dialog) {
    const HWND list = FindWindowExA(GetDlgItem(dialog, kFileView), nullptr, "SysListView32", nullptr);
    ASSERT_TRUE(waitUntil([&] { return SendMessageA(list, kGetItemCount, 0, 0) > 0; }));
    RECT label = {kLabelOnly, 0, 0, 0};
    SendMessageA(list, kGetItemRect, 0, reinterpret_cast<LPARAM>(&label));
    for (int i = 0; i < 2; ++i) clickAt(list, (label.left + label.right) / 2, (label.top + label.bottom) / 2);
    ASSERT_TRUE(waitUntil([&] { return textOf(GetDlgItem(dialog, kFolderBox)) == "Sub"; }));
}

std::function<void(HWND)> typeAndAccept(const char* name) {
    return [name](HWND dialog) {
        SendMessageA(nameOf(dialog), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name));
        pressOk(dialog);
    };
}

void enterAndAccept(HWND dialog) {
    enterFirstFolder(dialog);
    pressOk(dialog);
}

TEST_F(BrowseDialog, PicksAFolder) {
    const struct {
        const char* reason;
        std::string initial;
        std::function<void(HWND)> user;
        int result;
        std::string chosen;
    } rows[] = {
        {"as it opens", home, pressOk, 1, home},
        {"moved into another", home, enterAndAccept, 1, home + "\\Sub"},
        {"the root of a drive", "C:\\", pressOk, 1, "C:\\"},
        {"another name typed", home, typeAndAccept("report.txt"), 1, home + "\\report.txt"},
        {"the placeholder in another case", home, typeAndAccept("{selecting a folder}"), 1,
         home + "\\{selecting a folder}"},
        {"cancelled", home, cancel, 0, kPlaceholder},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        EXPECT_EQ(shown(false, true, row.initial, row.user), row.result);
        EXPECT_EQ(path, row.chosen);
    }
}

void answerQuestion(HWND dialog, int button) {
    PostMessageA(dialog, WM_COMMAND, IDOK, 0);
    HWND question = nullptr;
    ASSERT_TRUE(waitUntil([&] {
        question = GetLastActivePopup(dialog);
        return question != dialog && IsWindowVisible(question);
    }));
    push(question, button);
    ASSERT_TRUE(waitUntilGone(question));
}

TEST_F(BrowseDialog, AsksBeforeAFileIsOverwritten) {
    const auto refuseAndAgree = [](HWND dialog) {
        EXPECT_EQ(textOf(nameOf(dialog)), "old.txt");
        answerQuestion(dialog, IDNO);
        EXPECT_TRUE(IsWindow(dialog));
        answerQuestion(dialog, IDYES);
    };
    const auto refuseAndCancel = [](HWND dialog) {
        answerQuestion(dialog, IDNO);
        cancel(dialog);
    };
    EXPECT_EQ(shown(true, false, home + "\\old.txt", refuseAndAgree), 1);
    EXPECT_EQ(path, home + "\\old.txt");
    EXPECT_EQ(shown(true, false, home + "\\old.txt", refuseAndCancel), 0);
    EXPECT_EQ(shown(true, false, home + "\\old.txt", typeAndAccept("new.txt")), 1) << "asks nothing";
    EXPECT_EQ(path, home + "\\new.txt");
}

TEST_F(BrowseDialog, OpensAFileThatIsThere) {
    lstrcpyA(path, "before.txt");
    const auto user = [](HWND dialog) {
        EXPECT_EQ(textOf(nameOf(dialog)), "before.txt") << "the caller's, not the initial path's";
        typeAndAccept("old.txt")(dialog);
    };
    EXPECT_EQ(shown(false, false, home + "\\other.txt", user), 1);
    EXPECT_EQ(path, home + "\\old.txt");
    EXPECT_EQ(shown(false, false, home + "\\other.txt", cancel), 0);
}

BOOL CALLBACK countWindow(HWND window, LPARAM count) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId()) ++*reinterpret_cast<int*>(count);
    return TRUE;
}

int windowsOfProgram() {
    int count = 0;
    EnumWindows(countWindow, reinterpret_cast<LPARAM>(&count));
    return count;
}

TEST_F(BrowseDialog, LeavesNoWindowAndNoBlockBehind) {
    const auto round = [this] { EXPECT_EQ(shown(false, true, home, cancel), 0); };
    round();
    const int before = windowsOfProgram();
    const std::size_t blocksBefore = openBlocks();
    const DWORD handles = openHandles();
    for (int i = 0; i < soakRounds(200, 1000); ++i) round();
    EXPECT_LE(openHandles(), handles + 40) << "a few of the platform's own, not one a round";
    EXPECT_EQ(windowsOfProgram(), before);
    EXPECT_EQ(openBlocks(), blocksBefore);
}

}  // namespace
