// What a user does with one dialog or box of the shipped DLL, from its opening to its end, to be played once with full
// assertions and then again and again with one call of the platform failing each time.
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "windows/calls.h"
#include "windows/shipped_dll.h"

namespace scenarios {

struct Scenario {
    /// Opens what there is to see, and returns when all of it is closed. What holds whichever call has failed is
    /// checked here, beside what holds for all: everything taken is given back, no window is left, no error of the
    /// processor or the platform occurs, every modal loop can be left.
    std::function<void()> run;
    /// Deals with a dialog or message box when its modal loop waits for messages; in that loop's thread, once for each.
    /// What this leaves open is cancelled.
    std::function<void(HWND)> user = [](HWND) {};
    /// Looks on before each call of the platform.
    std::function<void(const calls::Call&)> look = [](const calls::Call&) {};
};

/// What was seen while the scenario ran, in order: the full assertions are on this. Help that is asked for stands there
/// as "help FILE COMMAND DATA"; no viewer starts. "quit" comes last when the thread is left with that message.
extern std::vector<std::string> noted;

/// Plays a scenario and says how often each import was called.
std::map<std::string, int> play(const Scenario& scenario, calls::Plan plan = {});
/// Whether the screen has at most 256 colours, so that palettes are used.
inline const bool hasPalette = GetDeviceCaps(GetDC(nullptr), RASTERCAPS) & RC_PALETTE;

// The scenarios that are played once for each of their calls that can fail.

Scenario savingMappings();
Scenario choosing(bool folder);
Scenario showingTemplates();
Scenario showingAboutBox(bool isModal);

/// What a click on a button or another choice sends.
inline void command(HWND dialog, int control, int code = 0) {
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(control, code), reinterpret_cast<LPARAM>(GetDlgItem(dialog, control)));
}
std::string textOf(HWND window);

}  // namespace scenarios
