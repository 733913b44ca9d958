// The mapping dialogs as windows, dealt with by a user from outside.
#include <gmock/gmock.h>
#include <windows.h>

#include <atomic>
#include <mutex>

#include "extmap_store.h"
#include "frame/settings.h"
#include "tamrix32/dialogs.h"
#include "windows/allocations.h"
#include "windows/import_hook.h"
#include "windows/mapping_dialog_user.h"
#include "windows/soak.h"

namespace {

using namespace testing_support;
using extmap_store::exists;
using extmap_store::givenMapping;
using extmap_store::mappingOf;
using testing::ElementsAre;
using testing::IsEmpty;

/// The calls of WinHelpA, as "file command data".
std::mutex helpLock;
std::vector<std::string> helpCalls;

BOOL WINAPI recordingWinHelp(HWND, LPCSTR file, UINT command, ULONG_PTR data) {
    const std::lock_guard lock(helpLock);
    helpCalls.push_back(std::string(file) + " " + std::to_string(command) + " " + std::to_string(data));
    return TRUE;
}

std::vector<std::string> takeHelpCalls() {
    const std::lock_guard lock(helpLock);
    return std::exchange(helpCalls, {});
}

bool waitForHelpCall() {
    return waitUntil([] {
        const std::lock_guard lock(helpLock);
        return !helpCalls.empty();
    });
}

class MappingDialogs : public extmap_store::StoreTest {
protected:
    void SetUp() override {
        StoreTest::SetUp();
        tamrix::instance = GetModuleHandleA(nullptr);
        ASSERT_TRUE(winHelp.installed());
        takeHelpCalls();
    }

    /// Edits the mappings of these codes while the user does so; the dialog reports 0 however it ends.
    void edit(const std::function<void(HWND)>& user, const char* creator = "TmxC", const char* type = "TmxT") {
        EXPECT_EQ(withUser(kEditCaption, user, [&] { return show(creator, type); }), 0);
    }

    static int show(const char* creator, const char* type) {
        return FileExtMapEditDlg(nullptr, const_cast<char*>(creator), const_cast<char*>(type));
    }

    ImportHook winHelp{nullptr, "user32.dll", "WinHelpA", reinterpret_cast<const void*>(recordingWinHelp)};
};

TEST_F(MappingDialogs, ListsTheMappingsOfItsCodesSortedAndLeavesTheStoreAloneOnCancel) {
    givenMapping(".tmx-b", "TmxT", "TmxC", "B files");
    givenMapping(".tmx-c", "TmxT", "TmxC");
    givenMapping(".tmx-a", "TmxT", "TmxC", "A files");
    givenMapping(".tmx-d", "TmxT", "tmxc", "other creator: case counts");
    givenMapping(".tmx-e", "TEXT", "TmxC", "other type");
    edit([](HWND dialog) {
        EXPECT_EQ(textOf(item(dialog, kCreator)), "TmxC");
        EXPECT_EQ(textOf(item(dialog, kType)), "TmxT");
        EXPECT_THAT(listOf(dialog), ElementsAre(".tmx-a\tA files", ".tmx-b\tB files", ".tmx-c"));
        EXPECT_FALSE(isEnabled(dialog, kRemove));
        EXPECT_TRUE(GetWindowLongA(dialog, GWL_STYLE) & DS_CONTEXTHELP) << "question mark in the caption";
        const auto remove = [dialog](std::size_t left) {
            click(item(dialog, kRemove));
            EXPECT_TRUE(waitForLines(dialog, left));
        };
        selectLine(dialog, 2);
        EXPECT_TRUE(waitUntil([&] { return isEnabled(dialog, kRemove); }));
        remove(2);
        EXPECT_TRUE(waitUntil([&] { return selection(dialog) == 1; })) << "the new last line";
        selectLine(dialog, 0);
        remove(1);
        EXPECT_TRUE(waitUntil([&] { return selection(dialog) == 0; })) << "the line that took its place";
        EXPECT_TRUE(isEnabled(dialog, kRemove));
        remove(0);
        EXPECT_TRUE(waitUntil([&] { return !isEnabled(dialog, kRemove); }));
        clickAway(dialog, IDCANCEL);
    });
    EXPECT_EQ(mappingOf(".tmx-a"), "TmxT TmxC A files");
    EXPECT_EQ(mappingOf(".tmx-e"), "TEXT TmxC other type");
}

TEST_F(MappingDialogs, WritesItsLinesInTheirOrderOnceConfirmed) {
    const std::string longName = extmap_store::nameOfLength(100);
    const std::string longComment(255, 'c');
    givenMapping(longName, "TmxT", "TmxC", "kept");
    givenMapping(".tmx-a", "TmxT", "TmxC", "middle");
    givenMapping(".tmx-b", "TmxT", "TmxC");
    givenMapping(".tmx-m", "TEXT", "ttxt", "moves here");
    givenMapping(".tmx-r", "TmxT", "TmxC", "removed");
    edit([&](HWND dialog) {
        selectLine(dialog, 2);
        click(item(dialog, kRemove));
        EXPECT_TRUE(waitForLines(dialog, 3));
        addMapping(dialog, "tmx-c", longComment + "cut");
        EXPECT_EQ(selection(dialog), 2) << "the new line is selected";
        addMapping(dialog, ".tmx-0", "");
        EXPECT_EQ(selection(dialog), 0);
        addMapping(dialog, "tmx-m", "moved");
        addMapping(dialog, "tmx-a", "zebra");
        addMapping(dialog, "tmx-a", "ant");
        const auto all = ElementsAre(".tmx-0\t", ".tmx-a\tant", ".tmx-a\tmiddle", ".tmx-a\tzebra", ".tmx-b",
                                     ".tmx-c\t" + longComment, ".tmx-m\tmoved", longName + "\tkept");
        EXPECT_THAT(listOf(dialog), all);
        click(item(dialog, IDOK));
        press(waitForWindow(kConfirmation), VK_RETURN);
        EXPECT_TRUE(waitUntil([&] { return focusOf(dialog) == item(dialog, IDCANCEL); })) << "Cancel is the default";
        EXPECT_THAT(listOf(dialog), all);
        EXPECT_FALSE(exists(".tmx-c")) << "nothing is written before it is confirmed";
        confirm(dialog);
    });
    for (const auto& [extension, mapping] : {std::pair<std::string, std::string>{".tmx-0", "TmxT TmxC (none)"},
                                             {".tmx-a", "TmxT TmxC zebra"},
                                             {".tmx-b", "TmxT TmxC (none)"},
                                             {".tmx-c", "TmxT TmxC " + longComment},
                                             {".tmx-m", "TmxT TmxC moved"},
                                             {".tmx-r", "(none) (none) (none)"},
                                             {longName, "TmxT TmxC kept"}})
        EXPECT_EQ(mappingOf(extension), mapping) << extension;
}

TEST_F(MappingDialogs, AcceptExtensionsOfOneToFifteenBytesAndEnterCancelsBoth) {
    const struct {
        const char* typed;
        const char* line;  // null: refused with a message
    } rows[] = {
        {"", nullptr},
        {"..txt", "..txt\t"},
        {"123456789012345", ".123456789012345\t"},
        {"1234567890123456", nullptr},
        {"an extension that is longer than the buffer that measures it", nullptr},
    };
    edit([&](HWND dialog) {
        EXPECT_THAT(listOf(dialog), IsEmpty());
        std::size_t lines = 0;
        for (const auto& row : rows) {
            SCOPED_TRACE(row.typed);
            const HWND add = openAddDialog(dialog);
            fill(add, kExtension, row.typed);
            click(item(add, IDOK));
            if (row.line) {
                EXPECT_TRUE(waitUntilGone(add));
                EXPECT_TRUE(waitForLines(dialog, ++lines));
                EXPECT_THAT(listOf(dialog), testing::Contains(row.line));
                EXPECT_TRUE(waitUntil([&] { return isEnabled(dialog, kRemove); })) << "the new line is selected";
                continue;
            }
            const HWND message = waitForWindow(kError);
            press(message, VK_RETURN);
            EXPECT_TRUE(waitUntilGone(message));
            EXPECT_EQ(textOf(item(add, kExtension)), row.typed) << "the dialog stays as it was";
            clickAway(add, IDCANCEL);
        }
        const HWND add = openAddDialog(dialog);
        EXPECT_EQ(textOf(item(add, kCreator)), "TmxC");
        EXPECT_EQ(textOf(item(add, kType)), "TmxT");
        click(item(add, kExtension));
        for (const char key : {'T', 'X'}) press(add, static_cast<BYTE>(key));
        EXPECT_TRUE(waitUntil([&] { return textOf(item(add, kExtension)) == "tx"; }));
        press(add, VK_RETURN);
        EXPECT_TRUE(waitUntilGone(add));
        EXPECT_EQ(listOf(dialog).size(), lines) << "what was typed is dropped";
        click(item(dialog, kList));
        press(dialog, VK_RETURN);
        EXPECT_TRUE(waitUntilGone(dialog)) << "without a confirmation";
    });
    EXPECT_FALSE(exists("..txt"));
}

TEST_F(MappingDialogs, ShowLongCodesWholeAndWriteNothingForThem) {
    edit(
        [](HWND dialog) {
            EXPECT_EQ(textOf(item(dialog, kCreator)), "TmxCreator");
            const HWND add = openAddDialog(dialog);
            EXPECT_EQ(textOf(item(add, kCreator)), "TmxC");
            fill(add, kExtension, "tmx-a");
            clickAway(add, IDOK);
            confirm(dialog);
        },
        "TmxCreator");
    EXPECT_FALSE(exists(".tmx-a"));
}

TEST_F(MappingDialogs, GiveHelpOnTheDialogAndOnEachControl) {
    edit([](HWND dialog) {
        click(item(dialog, kHelp));
        EXPECT_TRUE(waitForHelpCall());
        EXPECT_THAT(takeHelpCalls(), ElementsAre("ATHELP.HLP 1 410")) << "HELP_CONTEXT";
        press(dialog, VK_F1);
        EXPECT_TRUE(waitForHelpCall());
        EXPECT_THAT(takeHelpCalls(), ElementsAre("ATHELP.HLP 8 417")) << "HELP_CONTEXTPOPUP for the focused button";

        HELPINFO request = {sizeof request, HELPINFO_MENUITEM, kList, nullptr, 0, {0, 0}};
        SendMessageA(dialog, WM_HELP, 0, reinterpret_cast<LPARAM>(&request));
        request.iContextType = HELPINFO_WINDOW;
        request.iCtrlId = 0;
        SendMessageA(dialog, WM_HELP, 0, reinterpret_cast<LPARAM>(&request));
        EXPECT_THAT(takeHelpCalls(), IsEmpty()) << "a menu item, and a window without an id";

        const HWND add = openAddDialog(dialog);
        click(item(add, kComment));
        EXPECT_TRUE(waitUntil([&] { return focusOf(add) == item(add, kComment); }));
        press(add, VK_F1);
        EXPECT_TRUE(waitForHelpCall());
        EXPECT_THAT(takeHelpCalls(), ElementsAre("ATHELP.HLP 8 419"));
        clickAway(add, IDCANCEL);
        clickAway(dialog, IDCANCEL);
    });
}

TEST_F(MappingDialogs, NeedCodesAndAddGivesItsResultToAnyParent) {
    EXPECT_EQ(show(nullptr, "TmxT"), 0);
    EXPECT_EQ(show("TmxC", nullptr), 0);
    char creator[] = "TmxC", type[] = "TmxT";
    const auto add = [&] { return AddExtMapDlg(nullptr, creator, type); };
    for (const int button : {IDOK, IDCANCEL}) {
        const auto user = [button](HWND dialog) {
            fill(dialog, kExtension, "tmx-a");
            clickAway(dialog, button);
        };
        EXPECT_EQ(withUser(kAddCaption, user, add), button == IDOK);
    }
}

TEST_F(MappingDialogs, LeaveNothingBehind) {
    givenMapping(".tmx-a", "TmxT", "TmxC", "A files");
    char face[] = "Arial";
    tamrix::dialogFontSettings = {face, 10};
    char creator[] = "TmxC", type[] = "TmxT";
    const struct {
        const char* caption;
        int (*show)(void*, char*, char*);
    } dialogs[] = {{kEditCaption, FileExtMapEditDlg}, {kAddCaption, AddExtMapDlg}};
    for (const auto& [caption, showDialog] : dialogs) {
        SCOPED_TRACE(caption);
        std::atomic<bool> done = false;
        std::size_t blocks = 0;
        const auto cancelEach = [&, caption = caption](HWND first) {
            PostMessageA(first, WM_COMMAND, IDCANCEL, 0);
            while (!done) {
                Sleep(1);
                if (const HWND dialog = FindWindowA("#32770", caption)) PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
            }
        };
        const auto showOften = [&, showDialog = showDialog] {
            showDialog(nullptr, creator, type);
            blocks = openBlocks();
            const DWORD handles = openHandles();
            for (int round = 0; round < soakRounds(200, 1000); ++round) showDialog(nullptr, creator, type);
            EXPECT_LE(openHandles(), handles + 40) << "a few of the platform's own, not one a round";
            done = true;
            return 0;
        };
        withUser(caption, cancelEach, showOften);
        EXPECT_EQ(openBlocks(), blocks);
        EXPECT_EQ(FindWindowA("#32770", caption), nullptr);
    }
    tamrix::dialogFontSettings = {};
}

}  // namespace
