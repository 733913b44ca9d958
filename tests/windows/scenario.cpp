#include "windows/scenario.h"

#include <cstdio>

#include "registry_text.h"

namespace scenarios {

std::vector<std::string> noted;

namespace {

using calls::Call;
using calls::Plan;
using calls::Watch;

std::set<std::string> failedOnce;
std::string failing;
const Scenario* playing;
std::set<HWND> dealtWith;
int impatience;

bool isOfClass(HWND window, const char* name) {
    char itsName[16] = "";
    GetClassNameA(window, itsName, sizeof itsName);
    return !std::strcmp(itsName, name);
}

BOOL CALLBACK findWaiting(HWND window, LPARAM found) {
    const bool waits = isOfClass(window, "#32770") && IsWindowVisible(window) && IsWindowEnabled(window);
    if (waits) *reinterpret_cast<HWND*>(found) = window;
    return !waits;
}

BOOL CALLBACK countWindow(HWND window, LPARAM count) {
    *reinterpret_cast<int*>(count) += !isOfClass(window, "IME");
    return TRUE;
}

void leave(HWND dialog) {
    for (int i = 0; i < 3 && IsWindowVisible(dialog); ++i) command(dialog, IDCANCEL);
    if (!IsWindowVisible(dialog)) return;
    ADD_FAILURE() << textOf(dialog) << " can't be left";
    EndDialog(dialog, 0);
}

/// Called by the loop of a dialog or message box, which shows it once it has dispatched this.
void CALLBACK useWhatWaits(HWND, UINT, UINT_PTR, DWORD) {
    HWND window = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), findWaiting, reinterpret_cast<LPARAM>(&window));
    if (!window) {
        if (++impatience > 1000) TerminateProcess(GetCurrentProcess(), 98);
        PostThreadMessageA(GetCurrentThreadId(), WM_TIMER, 0, reinterpret_cast<LPARAM>(useWhatWaits));
        return;
    }
    if (dealtWith.insert(window).second) playing->user(window);
    leave(window);
}

void beforeCall(const Call& call) {
    if (call.name.starts_with("DialogBox") || call.name == "MessageBoxA")
        PostThreadMessageA(GetCurrentThreadId(), WM_TIMER, 0, reinterpret_cast<LPARAM>(useWhatWaits));
}

// Wine takes an exception in a window procedure for handled. Errors of the platform's own have codes like this one.
LONG CALLBACK endOnError(EXCEPTION_POINTERS* exception) {
    const DWORD code = exception->ExceptionRecord->ExceptionCode;
    if (code >> 28 != EXCEPTION_ACCESS_VIOLATION >> 28) return EXCEPTION_CONTINUE_SEARCH;
    const auto* const address = static_cast<char*>(exception->ExceptionRecord->ExceptionAddress);
    std::printf("error %#lx at %#x from the DLL's start while %s fails\n", code,
                static_cast<unsigned>(address - reinterpret_cast<char*>(shipped::dll())), failing.c_str());
    std::fflush(stdout);
    TerminateProcess(GetCurrentProcess(), 99);
    return EXCEPTION_CONTINUE_SEARCH;
}

BOOL WINAPI noteHelp(HWND, LPCSTR file, UINT command, ULONG_PTR data) {
    noted.push_back("help " + std::string(file) + ' ' + std::to_string(command) + ' ' + std::to_string(data));
    return TRUE;
}

bool servesPalettes(const std::string& name) {
    return name.find("Palette") != std::string::npos;
}

bool screenHasPalette() {
    const HDC screen = GetDC(nullptr);
    const bool hasPalette = GetDeviceCaps(screen, RASTERCAPS) & RC_PALETTE;
    ReleaseDC(nullptr, screen);
    return hasPalette;
}

}  // namespace

std::string textOf(HWND window) {
    char text[1024] = "";
    SendMessageA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
}

std::map<std::string, int> play(const Scenario& scenario, Plan plan) {
    noted.clear();
    dealtWith.clear();
    playing = &scenario;
    impatience = 0;
    failing = plan.failing + " " + std::to_string(plan.nth);
    plan.before = [&scenario, act = plan.before](const Call& call) {
        beforeCall(call);
        scenario.look(call);
        if (act) act(call);
    };
    const bool isToFail = !plan.failing.empty();
    const Watch watch(std::move(plan));
    scenario.run();
    EXPECT_EQ(watch.uneven(), "");
    EXPECT_EQ(watch.hasFailed(), isToFail);
    int windows = 0;
    EnumThreadWindows(GetCurrentThreadId(), countWindow, reinterpret_cast<LPARAM>(&windows));
    EXPECT_EQ(windows, 0) << "left";
    for (MSG left; PeekMessageA(&left, nullptr, 0, 0, PM_REMOVE);)
        if (left.message == WM_QUIT) noted.push_back("quit");
    return watch.counts();
}

void sweep(const Scenario& scenario) {
    int faults = 0;
    for (const auto& [name, count] : play(scenario)) {
        if (!calls::canFail(name) || servesPalettes(name) != screenHasPalette()) continue;
        for (int nth = 1; nth <= count && !testing::Test::HasFailure(); ++nth, ++faults) {
            SCOPED_TRACE(name + ", call " + std::to_string(nth));
            play(scenario, {name, nth, nullptr});
            scenario.invariants(name);
            failedOnce.insert(name);
        }
    }
    std::printf("%6d faults\n", faults);
}

}  // namespace scenarios

std::string shipped::dllPath;

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (argc < 2) return std::fputs("usage: shipped_windows DLL\n", stderr), 2;
    shipped::dllPath = argv[1];
    // What the DLL finds configured when it is loaded.
    constexpr char kSettings[] = "Software\\Quillon Systems, Inc.\\File Client", kFace[] = "Liberation Mono";
    testing_support::emptyRegistry();
    testing_support::givenValue(HKEY_LOCAL_MACHINE, kSettings, "DialogFont", REG_SZ, {kFace, sizeof kFace});
    testing_support::givenValue(HKEY_LOCAL_MACHINE, kSettings, "DialogFontSize", REG_DWORD, {"\x0B\0\0\0", 4});
    AddVectoredExceptionHandler(1, scenarios::endOnError);
    calls::hook(shipped::dll());
    calls::replace("WinHelpA", reinterpret_cast<const void*>(scenarios::noteHelp));
    return RUN_ALL_TESTS();
}
