// The about box as a window: where it opens, what closes it, who deletes it.
#include <gmock/gmock.h>

#include <functional>

#include "windows/about_probe.h"
#include "windows/call_watch.h"

namespace {

using testing_support::AboutProbe;
using testing_support::Image;
using testing_support::ImportHook;

/// What became of the boxes of a test.
struct Diary {
    int asked = 0;  // canClose
    int revoked = 0;
    int deleted = 0;
    int ended = 0;  // dialogDestroyed; a fault in a window's handler ends nothing but the handler
};
Diary diary;

class Box : public AboutProbe {
public:
    using AboutProbe::AboutProbe;
    ~Box() override { ++diary.deleted; }
    int canClose() override {
        ++diary.asked;
        return closable;
    }
    void revoke() override {
        ++diary.revoked;
        AboutProbe::revoke();
    }
    void initDialog(void* dialog) override {
        shown = static_cast<HWND>(dialog);
        AboutProbe::initDialog(dialog);
        if (whenShown) whenShown(*this);
    }
    void dialogDestroyed() override {
        const HWND going = shown;
        AboutProbe::dialogDestroyed();
        // A modeless box is gone by now; its window, not quite.
        SendMessageA(going, WM_TIMER, 1, 0);
        SendMessageA(going, WM_LBUTTONDOWN, 0, 0);
        ++diary.ended;
    }

    HWND shown = nullptr;
    int closable = 1;
    std::function<void(Box&)> whenShown;
};

/// Runs the message loop until the window is gone or `milliseconds` are over; whether it is gone.
bool vanishes(HWND window, DWORD milliseconds = 3000) {
    const DWORD start = GetTickCount();
    MSG message;
    while (IsWindow(window) && GetTickCount() - start < milliseconds) {
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
        Sleep(5);
    }
    return !IsWindow(window);
}

/// Ways in which a user makes a box go.
struct Trigger {
    const char* name;
    void (*pull)(HWND window);
};

void click(HWND window) {
    RECT rect;
    GetWindowRect(window, &rect);
    SetCursorPos(rect.left + 20, rect.top + 300);
    mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
    mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
}

template <BYTE key>
void press(HWND) {
    keybd_event(key, 0, 0, 0);
    keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
}

const Trigger kTriggers[] = {
    {"click", click},
    {"letter", press<'A'>},
    {"space bar", press<VK_SPACE>},
    {"escape", press<VK_ESCAPE>},
    {"return", press<VK_RETURN>},
    {"tab", press<VK_TAB>},
    {"arrow", press<VK_DOWN>},
    {"command", [](HWND window) { PostMessageA(window, WM_COMMAND, 7, 0); }},
    {"loss of focus", [](HWND) { SetFocus(nullptr); }},
};

class AboutBox : public testing::Test {
protected:
    void SetUp() override { diary = {}; }
};

int screenWidth, screenHeight;
int WINAPI fakeSystemMetrics(int index) {
    return index == SM_CXSCREEN ? screenWidth : index == SM_CYSCREEN ? screenHeight : 0;
}

TEST_F(AboutBox, OpensInTheMiddleOfTheScreen) {
    const ImportHook metrics(nullptr, "user32.dll", "GetSystemMetrics",
                             reinterpret_cast<const void*>(fakeSystemMetrics));
    struct {
        int screenWidth, screenHeight;
        POINT corner;
    } const rows[] = {{1024, 768, {306, 178}}, {400, 300, {-6, -56}}, {411, 410, {0, -1}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.screenWidth);
        screenWidth = row.screenWidth;
        screenHeight = row.screenHeight;
        TAMRIX_WATCH("user32.dll", SetTimer);
        TAMRIX_WATCH("user32.dll", KillTimer);
        Box* const box = new Box;
        EXPECT_EQ(box->isOpen(), 0);
        box->invoke(0);
        ASSERT_EQ(box->isOpen(), 1);
        const HWND window = box->shown;
        RECT whole, client;
        GetWindowRect(window, &whole);
        GetClientRect(window, &client);
        EXPECT_EQ(whole.left, row.corner.x);
        EXPECT_EQ(whole.top, row.corner.y);
        EXPECT_EQ(whole.right - whole.left, 411);
        EXPECT_EQ(client.right, 411) << "no frame around it";
        EXPECT_EQ(client.bottom, 411);
        EXPECT_TRUE(IsWindowVisible(window));
        EXPECT_NE(SendMessageA(window, WM_GETICON, ICON_BIG, 0), 0);
        EXPECT_NE(SendMessageA(window, WM_GETICON, ICON_SMALL, 0), 0);
        EXPECT_EQ(watchSetTimer.calls(), 1);
        box->revoke();
        EXPECT_FALSE(IsWindow(window));
        EXPECT_EQ(watchKillTimer.succeeded(), 1);
    }
}

TEST_F(AboutBox, ModelessGoesByAnyTriggerAndDeletesItselfOnce) {
    for (const Trigger& trigger : kTriggers) {
        SCOPED_TRACE(trigger.name);
        diary = {};
        Box* const box = new Box;
        box->invoke(0);
        const HWND window = box->shown;
        ASSERT_TRUE(IsWindow(window));
        EXPECT_EQ(GetFocus(), window);
        vanishes(window, 50);  // what opening itself posts
        trigger.pull(window);
        EXPECT_TRUE(vanishes(window));
        EXPECT_EQ(diary.deleted, 1);
        EXPECT_EQ(diary.asked, 1) << "the focus that goes with the window asks nobody";
    }
}

HWND modalWindow;
const Trigger* modalTrigger;
void CALLBACK pullModalTrigger(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    modalTrigger->pull(modalWindow);
}
void CALLBACK giveUp(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    ADD_FAILURE() << "still open";
    if (IsWindow(modalWindow)) EndDialog(modalWindow, 0);
}

TEST_F(AboutBox, ModalGoesByAnyTriggerAndStaysItsOwners) {
    Box box;
    box.whenShown = [](Box& opened) {
        modalWindow = opened.shown;
        SetTimer(nullptr, 0, 50, pullModalTrigger);
    };
    for (const Trigger& trigger : kTriggers) {
        SCOPED_TRACE(trigger.name);
        diary = {};
        modalTrigger = &trigger;
        const UINT_PTR rescue = SetTimer(nullptr, 0, 3000, giveUp);
        box.invoke(1);
        KillTimer(nullptr, rescue);
        EXPECT_FALSE(IsWindow(modalWindow));
        EXPECT_EQ(box.isOpen(), 0);
        EXPECT_EQ(diary.asked, 1);
    }
    EXPECT_EQ(diary.deleted, 0);
}

TEST_F(AboutBox, StaysOpenWhileADerivedClassRefuses) {
    Box* const box = new Box;
    box->closable = 0;
    box->invoke(0);
    const HWND window = box->shown;
    for (const Trigger& trigger : kTriggers) {
        SCOPED_TRACE(trigger.name);
        SetFocus(window);
        const int asked = diary.asked;
        trigger.pull(window);
        EXPECT_FALSE(vanishes(window, 100));
        EXPECT_EQ(diary.asked, asked + 1);
    }
    EXPECT_EQ(diary.revoked, 0);
    box->revoke();
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(diary.deleted, 1);
}

TEST_F(AboutBox, GoesOnceWhenOthersEndItOrItsWindowOrWhileItOpens) {
    TAMRIX_WATCH("user32.dll", InvalidateRect);
    Box* const destroyed = new Box;
    destroyed->invoke(0);
    DestroyWindow(destroyed->shown);
    EXPECT_EQ(diary.deleted, 1);
    EXPECT_EQ(diary.ended, 1);
    EXPECT_EQ(watchInvalidateRect.calls(), 0) << "the timer of a window that still vanishes reaches no box";
    EXPECT_EQ(diary.asked, 1) << "by the focus that went, and no more once it was gone";

    Box* const hasty = new Box;
    hasty->whenShown = [](Box& opened) { opened.revoke(); };
    hasty->invoke(0);
    EXPECT_EQ(diary.deleted, 2);

    Box* const disowned = new Box;
    disowned->invoke(0);
    const HWND window = disowned->shown;
    delete disowned;
    EXPECT_FALSE(IsWindow(window)) << "or its timer would go on reaching for the box";
    EXPECT_EQ(diary.deleted, 3);
}

TEST_F(AboutBox, SeveralMayBeOpenEachWithItsOwnWindow) {
    Box* const one = new Box;
    Box* const other = new Box;
    one->closable = 0;
    other->closable = 0;
    one->invoke(0);
    other->invoke(0);
    const HWND first = one->shown;
    const HWND second = other->shown;
    EXPECT_NE(first, second);
    one->revoke();
    EXPECT_FALSE(IsWindow(first));
    EXPECT_TRUE(IsWindow(second));
    EXPECT_EQ(diary.deleted, 1);
    other->revoke();
    EXPECT_EQ(diary.deleted, 2);
}

TEST_F(AboutBox, PaintsTheFrameThatItsTimerComposed) {
    Box* const box = new Box;
    box->closable = 0;
    box->invoke(0);
    const HWND window = box->shown;
    const Image first = box->frame();
    SendMessageA(window, WM_TIMER, 2, 0);
    EXPECT_EQ(box->frame(), first) << "a timer of somebody else";
    UpdateWindow(window);
    EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
    TAMRIX_WATCH("user32.dll", InvalidateRect);
    SendMessageA(window, WM_TIMER, 1, 0);
    EXPECT_NE(box->frame(), first);
    RECT update;
    ASSERT_TRUE(GetUpdateRect(window, &update, FALSE));
    EXPECT_EQ(update.right - update.left, 411);
    EXPECT_EQ(update.bottom - update.top, 411);
    const Image composed = box->frame();
    UpdateWindow(window);
    const Image seen = testing_support::captured([&](HDC dc) {
        const HDC from = GetDC(window);
        BitBlt(dc, 0, 0, Image::kSide, Image::kSide, from, 0, 0, SRCCOPY);
        ReleaseDC(window, from);
    });
    EXPECT_EQ(seen, composed);
    // Three frames a second, without being asked.
    const int before = watchInvalidateRect.calls();
    vanishes(window, 1100);
    EXPECT_NEAR(watchInvalidateRect.calls() - before, 3, 1);
    box->revoke();
}

TEST_F(AboutBox, ItsTemplateIsABarePopup) {
    const HRSRC found = FindResourceA(nullptr, MAKEINTRESOURCEA(1), RT_DIALOG);
    ASSERT_NE(found, nullptr);
    const auto* words = static_cast<const WORD*>(LockResource(LoadResource(nullptr, found)));
    // Style, extended style, number of controls, position, size, no menu, class or caption.
    const std::vector<WORD> expected = {0, 0x8000, 0, 0, 0, 66, 30, 77, 56, 0, 0, 0};
    EXPECT_EQ(std::vector<WORD>(words, words + expected.size()), expected);
}

}  // namespace
