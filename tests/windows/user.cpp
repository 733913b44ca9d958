#include "windows/user.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace testing_support {
namespace {

constexpr DWORD kPatience = 10000;  // milliseconds
constexpr DWORD kStep = 5;

struct Search {
    const char* caption;  // null: any dialog
    HWND found;
};

BOOL CALLBACK matches(HWND window, LPARAM param) {
    Search& search = *reinterpret_cast<Search*>(param);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    char className[16] = "";
    GetClassNameA(window, className, sizeof className);
    if (process != GetCurrentProcessId() || !IsWindowVisible(window) || std::string(className) != "#32770") return TRUE;
    if (search.caption && textOf(window) != search.caption) return TRUE;
    search.found = window;
    return FALSE;
}

HWND shownDialog(const char* caption) {
    Search search = {caption, nullptr};
    EnumWindows(matches, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

void cancelWhatIsLeft(const std::atomic<bool>& ended) {
    const auto isEnded = [&] { return ended.load(); };
    while (!waitUntil(isEnded)) {
        ADD_FAILURE() << "a dialog was left open";
        if (const HWND dialog = shownDialog(nullptr)) PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    }
}

/// Input that says itself where it happens: the pointer's own position may lag behind.
void mouse(DWORD button, POINT place) {
    const auto scaled = [](int value, int size) { return static_cast<DWORD>((value * 65536 + 32768) / size); };
    mouse_event(button | MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, scaled(place.x, GetSystemMetrics(SM_CXSCREEN)),
                scaled(place.y, GetSystemMetrics(SM_CYSCREEN)), 0, 0);
}

}  // namespace

bool waitUntil(const std::function<bool()>& condition) {
    for (DWORD waited = 0; waited < kPatience; waited += kStep) {
        if (condition()) return true;
        Sleep(kStep);
    }
    return false;
}

HWND waitForWindow(const char* caption) {
    HWND window = nullptr;
    EXPECT_TRUE(waitUntil([&] { return (window = shownDialog(caption)) != nullptr; })) << caption;
    return window;
}

bool waitUntilGone(HWND window) {
    return waitUntil([&] { return !IsWindow(window); });
}

void clickAt(HWND window, int x, int y) {
    POINT place = {x, y};
    ClientToScreen(window, &place);
    EXPECT_TRUE(waitUntil([&] { return IsWindowEnabled(window) && WindowFromPoint(place) == window; }));
    mouse(MOUSEEVENTF_LEFTDOWN, place);
    mouse(MOUSEEVENTF_LEFTUP, place);
}

void click(HWND window) {
    RECT area;
    GetClientRect(window, &area);
    clickAt(window, area.right / 2, area.bottom / 2);
}

void press(HWND dialog, BYTE key) {
    EXPECT_TRUE(waitUntil([&] {
        GUITHREADINFO info = {};
        info.cbSize = sizeof info;
        GetGUIThreadInfo(GetWindowThreadProcessId(dialog, nullptr), &info);
        return GetForegroundWindow() == dialog && info.hwndActive == dialog;
    }));
    keybd_event(key, 0, 0, 0);
    keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
}

std::string textOf(HWND window) {
    char text[1024] = "";
    SendMessageA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
}

std::vector<std::string> linesOf(HWND list) {
    std::vector<std::string> lines;
    const LRESULT count = SendMessageA(list, LB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        const auto index = static_cast<WPARAM>(i);
        const LRESULT length = SendMessageA(list, LB_GETTEXTLEN, index, 0);
        if (length == LB_ERR) break;  // the list has changed meanwhile
        std::string line(static_cast<std::size_t>(length), '\0');
        SendMessageA(list, LB_GETTEXT, index, reinterpret_cast<LPARAM>(line.data()));
        lines.push_back(line);
    }
    return lines;
}

int withUser(const char* caption, const std::function<void(HWND dialog)>& user, const std::function<int()>& show) {
    std::atomic<bool> ended = false;
    std::thread thread([&] {
        if (const HWND dialog = waitForWindow(caption)) user(dialog);
        cancelWhatIsLeft(ended);
    });
    const int result = show();
    ended = true;
    thread.join();
    return result;
}

}  // namespace testing_support
