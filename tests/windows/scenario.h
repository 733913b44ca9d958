// A scenario is what a user does with one dialog or the about box of the shipped DLL. Tests play it once with full
// assertions; then it is repeated, each time with one failing call of the platform.
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "windows/calls.h"
#include "windows/shipped_dll.h"

namespace scenarios {

struct Scenario {
    /// Opens the dialog and returns when it is closed. It may check only what must be true whichever call fails. These
    /// are checked in every scenario: everything taken is given back, no window is left, no error of the processor or
    /// the platform occurs, every modal loop can be left.
    std::function<void()> run;
    /// Uses a dialog or message box; called once for each, by its modal loop. If it is still open afterwards, it is
    /// cancelled.
    std::function<void(HWND)> user = [](HWND) {};
    /// Is called before each call of the platform.
    std::function<void(const calls::Call&)> look = [](const calls::Call&) {};
};

/// What happened while the scenario ran, in order, for the full assertions. A request for help is "help FILE COMMAND
/// DATA"; no viewer starts. If WM_QUIT is still posted at the end, the last note is "quit".
extern std::vector<std::string> noted;

/// Plays a scenario. Returns how often each import was called, also those that were not.
std::map<std::string, int> play(const Scenario& scenario, calls::Plan plan = {});
/// Whether the screen has at most 256 colours, so that palettes are used.
inline const bool hasPalette = GetDeviceCaps(GetDC(nullptr), RASTERCAPS) & RC_PALETTE;

// The scenarios that are played once for each of their calls that can fail.

Scenario savingMappings();
Scenario choosing(bool folder);
Scenario showingTemplates();
Scenario showingAboutBox(bool isModal);

/// Sends what a click on a button, or another notification of a control, sends.
inline void command(HWND dialog, int control, int code = 0) {
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(control, code), reinterpret_cast<LPARAM>(GetDlgItem(dialog, control)));
}
std::string textOf(HWND window);

}  // namespace scenarios
