#include "windows/scenario.h"

#include <cstdio>
#include <set>

#include "registry_text.h"

namespace scenarios {

std::vector<std::string> noted;

namespace {

/// Imports that no scenario has to fail.
const std::set<std::string> kNotFailed = {
    // They can't fail, or the library could not tell: memory, strings, queries, and what ends things.
    "abort", "free", "memchr", "memcmp", "memmove", "memcpy", "memset", "rand", "srand", "strcat", "strchr", "strcmp",
    "strcpy", "strlen", "strncpy", "strrchr", "time", "GetOEMCP", "IsDBCSLeadByte", "DefWindowProcA", "IsWindow",
    "IsWindowVisible", "GetFocus", "GetWindowLongA", "GetPropA", "RemovePropA", "DestroyWindow", "UnregisterClassA",
    // Only functions without a window call them: the native sweep fails these.
    "RegCreateKeyA", "RegDeleteKeyA", "RegEnumKeyA", "RegEnumValueA", "RegQueryValueA",
    // The last resort of a box that another thread deletes.
    "PostMessageA"};

std::string failing;
const Scenario* playing;
std::set<HWND> dealtWith;

/// The dialog or message box that a user could use now. No other program is on the test's desktop.
HWND waitingDialog() {
    HWND window = FindWindowA("#32770", nullptr);
    while (window && !(IsWindowVisible(window) && IsWindowEnabled(window)))
        window = FindWindowExA(nullptr, window, "#32770", nullptr);
    return window;
}

void leave(HWND dialog) {
    for (int i = 0; i < 3 && IsWindowVisible(dialog); ++i) command(dialog, IDCANCEL);
    if (!IsWindowVisible(dialog)) return;
    ADD_FAILURE() << textOf(dialog) << " can't be left";
    EndDialog(dialog, 0);
}

/// Called by the loop of a dialog or message box, which may have to dispatch this a few times before it shows it.
void CALLBACK useWhatWaits(HWND, UINT, UINT_PTR, DWORD) {
    const HWND window = waitingDialog();
    if (!window) {
        PostThreadMessageA(GetCurrentThreadId(), WM_TIMER, 0, reinterpret_cast<LPARAM>(useWhatWaits));
        return;
    }
    if (dealtWith.insert(window).second) playing->user(window);
    leave(window);
}

// Wine ignores exceptions in window procedures. The platform's own errors have codes like that of an access violation.
LONG CALLBACK endOnError(EXCEPTION_POINTERS* exception) {
    const auto& [code, flags, next, address, count, parameters] = *exception->ExceptionRecord;
    if (code >> 28 == EXCEPTION_ACCESS_VIOLATION >> 28) {
        std::fprintf(stderr, "error %#lx at %p, the DLL is at %p; %s fails\n", code, address,
                     static_cast<void*>(shipped::dll()), failing.c_str());
        TerminateProcess(GetCurrentProcess(), 99);
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

BOOL WINAPI noteHelp(HWND, LPCSTR file, UINT command, ULONG_PTR data) {
    noted.push_back("help " + std::string(file) + ' ' + std::to_string(command) + ' ' + std::to_string(data));
    return TRUE;
}

}  // namespace

std::string textOf(HWND window) {
    char text[1024] = "";
    SendMessageA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
}

std::map<std::string, int> play(const Scenario& scenario, calls::Plan plan) {
    noted.clear();
    dealtWith.clear();
    playing = &scenario;
    failing = plan.failing;
    plan.before = [&scenario](const calls::Call& call) {
        if (call.name.starts_with("DialogBox") || call.name == "MessageBoxA")
            PostThreadMessageA(GetCurrentThreadId(), WM_TIMER, 0, reinterpret_cast<LPARAM>(useWhatWaits));
        scenario.look(call);
    };
    auto counts = calls::watch(plan, scenario.run);
    EXPECT_TRUE(failing.empty() || counts[failing] >= plan.nth) << failing << " was to fail";
    for (HWND window = nullptr; (window = FindWindowExA(nullptr, window, nullptr, nullptr));)
        EXPECT_TRUE(GetWindowThreadProcessId(window, nullptr) != GetCurrentThreadId() ||
                    textOf(window) == "Default IME")
            << textOf(window) << " is left";
    for (MSG left; PeekMessageA(&left, nullptr, 0, 0, PM_REMOVE);)
        if (left.message == WM_QUIT) noted.push_back("quit");
    return counts;
}

// On a screen with a palette only calls that serve palettes fail, on others all the rest.
TEST(Scenarios, EndWellWhicheverCallFails) {
    const std::pair<std::string, Scenario> scenarios[] = {
        {"mapping editor", savingMappings()},       {"file dialog", choosing(false)},
        {"folder dialog", choosing(true)},          {"templates", showingTemplates()},
        {"modal about box", showingAboutBox(true)}, {"modeless about box", showingAboutBox(false)}};
    std::map<std::string, int> failures;
    for (const auto& [title, scenario] : scenarios)
        for (const auto& [name, count] : play(scenario)) {
            const bool servesPalettes = name.find("Palette") != std::string::npos;
            if (kNotFailed.count(name) || servesPalettes != hasPalette) continue;
            for (int nth = 1; nth <= count && !testing::Test::HasFailure(); ++nth, ++failures[title]) {
                SCOPED_TRACE(title + ": " + name + ", call " + std::to_string(nth));
                play(scenario, {name, nth, nullptr});
            }
            failures[name] += count;
        }
    for (const auto& [name, count] : failures) {
        EXPECT_GT(count, 0) << name << " fails in no scenario";
        std::printf("%6d failures: %s\n", count, name.c_str());
    }
}

}  // namespace scenarios

int main(int argc, char** argv) {
    shipped::begin(argc, argv);
    AddVectoredExceptionHandler(1, scenarios::endOnError);
    calls::hook();
    calls::replace("WinHelpA", reinterpret_cast<const void*>(scenarios::noteHelp));
    return RUN_ALL_TESTS();
}
