// The mapping dialogs where the platform refuses something, and by single messages: what is asked of the platform word
// by word, which commands count as handled, and that the store keeps what could not be rewritten.
#include <gmock/gmock.h>
#include <windows.h>

#include "extmap_store.h"
#include "frame/settings.h"
#include "tamrix32/dialogs.h"
#include "windows/allocations.h"
#include "windows/import_hook.h"
#include "windows/mapping_dialog_user.h"

namespace {

using namespace testing_support;
using extmap_store::givenMapping;
using extmap_store::mappingOf;
using testing::ElementsAre;
using testing::IsEmpty;

/// What the platform refuses, and what the library asked of it.
struct Platform {
    UINT missingText = 0;
    bool refusesLines = false;            // to be read from the list
    int answer = IDCANCEL;                // of a message box
    std::vector<std::string> boxes;       // as "title: text, style"
    std::vector<std::string> helpTopics;  // as "command topic"
    std::vector<int> tabStops;            // in dialog units
} platform;

decltype(&LoadStringA) realLoadString;
decltype(&SendMessageA) realSendMessage;
decltype(&SendDlgItemMessageA) realSendItemMessage;

int WINAPI loadString(HINSTANCE module, UINT id, LPSTR text, int size) {
    return id == platform.missingText ? 0 : realLoadString(module, id, text, size);
}

int WINAPI answerMessageBox(HWND, LPCSTR text, LPCSTR title, UINT style) {
    platform.boxes.push_back(std::string(title) + ": " + text + ", " + std::to_string(style));
    return platform.answer;
}

BOOL WINAPI seeHelp(HWND, LPCSTR, UINT command, ULONG_PTR topic) {
    platform.helpTopics.push_back(std::to_string(command) + " " + std::to_string(topic));
    return TRUE;
}

LRESULT WINAPI sendMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == LB_GETTEXT && platform.refusesLines) return LB_ERR;
    return realSendMessage(window, message, wParam, lParam);
}

LRESULT WINAPI sendItemMessage(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == LB_SETTABSTOPS) {
        const int* const stops = reinterpret_cast<const int*>(lParam);
        platform.tabStops.assign(stops, stops + wParam);
    }
    return realSendItemMessage(dialog, id, message, wParam, lParam);
}

INT_PTR WINAPI showNoDialog(HINSTANCE, LPCDLGTEMPLATEA, HWND, DLGPROC, LPARAM) {
    return -1;
}

template <typename Function>
const void* addressOf(Function* function) {
    return reinterpret_cast<const void*>(function);
}

/// Asks the dialog's own procedure; whether it has handled the command.
bool handles(HWND dialog, int id, int code) {
    const auto procedure = reinterpret_cast<WNDPROC>(GetWindowLongA(dialog, DWL_DLGPROC));
    return CallWindowProcA(procedure, dialog, WM_COMMAND, MAKEWPARAM(id, code), 0) != FALSE;
}

void command(HWND dialog, int id) {
    SendMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(id), 0);
}

void addLine(HWND dialog, const std::string& line) {
    SendDlgItemMessageA(dialog, kList, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
}

class RefusedDialogs : public extmap_store::StoreTest {
protected:
    void SetUp() override {
        StoreTest::SetUp();
        tamrix::instance = GetModuleHandleA(nullptr);
        platform = {};
        for (const ImportHook* hook : {&load_, &box_, &help_, &send_, &sendItem_}) ASSERT_TRUE(hook->installed());
        realLoadString = load_.original<decltype(&LoadStringA)>();
        realSendMessage = send_.original<decltype(&SendMessageA)>();
        realSendItemMessage = sendItem_.original<decltype(&SendDlgItemMessageA)>();
        givenMapping(".tmx-a", "TmxT", "TmxC", "A files");
    }
    void TearDown() override {
        failAllocations(false);
        tamrix::instance = GetModuleHandleA(nullptr);
        StoreTest::TearDown();
    }

    static int edit() { return FileExtMapEditDlg(nullptr, creator, type); }
    static int add() { return AddExtMapDlg(nullptr, creator, type); }

    /// Deals with the editor, which is cancelled unless it has ended by then.
    static void withEditor(const std::function<void(HWND)>& user) {
        const auto userThatLeaves = [&user](HWND dialog) {
            user(dialog);
            if (IsWindow(dialog)) command(dialog, IDCANCEL);
        };
        EXPECT_EQ(withUser(kEditCaption, userThatLeaves, edit), 0);
    }

private:
    static inline char creator[] = "TmxC";
    static inline char type[] = "TmxT";
    ImportHook load_{nullptr, "user32.dll", "LoadStringA", addressOf(loadString)};
    ImportHook box_{nullptr, "user32.dll", "MessageBoxA", addressOf(answerMessageBox)};
    ImportHook help_{nullptr, "user32.dll", "WinHelpA", addressOf(seeHelp)};
    ImportHook send_{nullptr, "user32.dll", "SendMessageA", addressOf(sendMessage)};
    ImportHook sendItem_{nullptr, "user32.dll", "SendDlgItemMessageA", addressOf(sendItemMessage)};
};

TEST_F(RefusedDialogs, AreNotShownWithoutTheirTemplateOrMemoryOrAWindow) {
    tamrix::instance = GetModuleHandleA("kernel32.dll");
    EXPECT_EQ(edit(), 0);
    EXPECT_EQ(add(), 0);
    tamrix::instance = GetModuleHandleA(nullptr);
    failAllocations(true);
    EXPECT_EQ(edit(), 0);
    EXPECT_EQ(add(), 0);
    failAllocations(false);
    const ImportHook show(nullptr, "user32.dll", "DialogBoxIndirectParamA", addressOf(showNoDialog));
    ASSERT_TRUE(show.installed());
    EXPECT_EQ(edit(), 0);
    EXPECT_EQ(add(), 0);
}

TEST_F(RefusedDialogs, AskWithCancelAsTheDefault) {
    withEditor([](HWND dialog) {
        EXPECT_THAT(platform.tabStops, ElementsAre(115));
        command(dialog, IDOK);
        EXPECT_THAT(platform.boxes,
                    ElementsAre("Are You Sure?: Are you sure you want to change your Orvedi file extension mappings?, "
                                "289"))
            << "OK and Cancel, a question mark, the second button: 0x121";
        EXPECT_EQ(focusOf(dialog), item(dialog, IDCANCEL));
    });
}

TEST_F(RefusedDialogs, NeverTakeAQuestionThatCannotBeAskedForConfirmed) {
    platform.answer = IDOK;
    for (const UINT text : {220U, 224U}) {
        platform.missingText = text;
        withEditor([text](HWND dialog) {
            command(dialog, IDOK);
            EXPECT_TRUE(IsWindow(dialog)) << text;
            EXPECT_EQ(focusOf(dialog), item(dialog, IDCANCEL)) << text;
        });
    }
    EXPECT_THAT(platform.boxes, IsEmpty());
}

TEST_F(RefusedDialogs, RejectAnExtensionSilentlyWithoutTheMessage) {
    for (const UINT text : {223U, 160U, 0U}) {
        platform.missingText = text;
        const auto user = [](HWND dialog) {
            command(dialog, IDOK);
            EXPECT_TRUE(IsWindow(dialog));
            command(dialog, IDCANCEL);
        };
        EXPECT_EQ(withUser(kAddCaption, user, add), 0) << text;
    }
    EXPECT_THAT(platform.boxes,
                ElementsAre("Error:: The filename extension must be between 1 and 15 characters long., 0"));
}

TEST_F(RefusedDialogs, GiveNoHelpWithoutTheFilesName) {
    platform.missingText = 102;
    withEditor([](HWND dialog) {
        command(dialog, kHelp);
        HELPINFO request = {sizeof request, HELPINFO_WINDOW, kList, nullptr, 0, {0, 0}};
        SendMessageA(dialog, WM_HELP, 0, reinterpret_cast<LPARAM>(&request));
    });
    EXPECT_THAT(platform.helpTopics, IsEmpty());
}

TEST_F(RefusedDialogs, HandleCommandsOfTheirCodesOnly) {
    withEditor([](HWND dialog) {
        SendDlgItemMessageA(dialog, kList, LB_SETCURSEL, 0, 0);
        EXPECT_FALSE(handles(dialog, kList, LBN_DBLCLK));
        EXPECT_FALSE(isEnabled(dialog, kRemove));
        EXPECT_TRUE(handles(dialog, kList, LBN_SELCHANGE));
        EXPECT_TRUE(isEnabled(dialog, kRemove));
        for (const int id : {int{kAdd}, int{kRemove}, IDOK, IDCANCEL, 999})
            EXPECT_FALSE(handles(dialog, id, BN_SETFOCUS)) << id;
        EXPECT_THAT(listOf(dialog), ElementsAre(".tmx-a\tA files"));
        EXPECT_THAT(platform.boxes, IsEmpty());
        EXPECT_FALSE(handles(dialog, kHelp, BN_CLICKED));
        EXPECT_FALSE(handles(dialog, kHelp, BN_SETFOCUS)) << "its code does not matter";
        EXPECT_THAT(platform.helpTopics, ElementsAre("1 410", "1 410"));
        EXPECT_TRUE(handles(dialog, kRemove, BN_CLICKED));
        EXPECT_THAT(listOf(dialog), IsEmpty());
    });
    EXPECT_EQ(mappingOf(".tmx-a"), "TmxT TmxC A files");
}

TEST_F(RefusedDialogs, WriteLinesOfAnyLengthAndTabsInComments) {
    const std::string longComment(1000, 'c');
    platform.answer = IDOK;
    withEditor([&](HWND dialog) {
        addLine(dialog, ".tmx-b\tone\ttwo\t");
        addLine(dialog, ".tmx-c\t" + longComment.substr(0, 500));
        addLine(dialog, ".tmx-d\t" + longComment);
        command(dialog, IDOK);
    });
    EXPECT_EQ(mappingOf(".tmx-a"), "TmxT TmxC A files");
    EXPECT_EQ(mappingOf(".tmx-b"), "TmxT TmxC one\ttwo\t");
    EXPECT_EQ(mappingOf(".tmx-c"), "TmxT TmxC " + longComment.substr(0, 500));
    const auto key = extmap_store::Key::open(HKEY_CLASSES_ROOT, ".tmx-d");
    DWORD size = 0;
    EXPECT_EQ(RegQueryValueExA(key.get(), "Mac Comment", nullptr, nullptr, nullptr, &size), ERROR_SUCCESS);
    EXPECT_EQ(size, 1001U);
}

TEST_F(RefusedDialogs, KeepTheStoreWhereTheListCannotBeReadOrTheCodesAreGone) {
    platform.answer = IDOK;
    withEditor([](HWND dialog) {
        addLine(dialog, ".tmx-b");
        SetWindowLongA(dialog, DWL_USER, 0);
        command(dialog, IDOK);
        EXPECT_TRUE(waitUntilGone(dialog));
    });
    platform.refusesLines = true;
    withEditor([](HWND dialog) {
        addLine(dialog, ".tmx-b");
        command(dialog, IDOK);
        EXPECT_TRUE(waitUntilGone(dialog));
    });
    EXPECT_EQ(mappingOf(".tmx-a"), "TmxT TmxC A files");
    EXPECT_FALSE(extmap_store::exists(".tmx-b"));
}

}  // namespace
