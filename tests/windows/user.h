// A user at the keyboard and the mouse, in a thread of its own while the test's thread shows a dialog. Input goes the
// way of real input; what it leads to is waited for, a few seconds at most.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace testing_support {

/// Waits until the condition holds; false when it did not.
bool waitUntil(const std::function<bool()>& condition);

/// The window of this program with this caption, once it is shown; null when it does not come.
HWND waitForWindow(const char* caption);
/// Waits until a window is gone.
bool waitUntilGone(HWND window);

/// Clicks in the middle of a window.
void click(HWND window);
/// Clicks at a place of a window, in pixels from its client area's corner.
void clickAt(HWND window, int x, int y);
/// Presses and releases a key, given as its virtual code, once the dialog is the active window.
void press(HWND dialog, BYTE key);

std::string textOf(HWND window);
std::vector<std::string> linesOf(HWND list);

/// Runs `show`, which returns when its dialog has ended, while a user finds the dialog by its caption and deals with
/// it. Dialogs that the user leaves open are cancelled and fail the test. Returns what `show` returned.
int withUser(const char* caption, const std::function<void(HWND dialog)>& user, const std::function<int()>& show);

}  // namespace testing_support
