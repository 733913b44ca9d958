// Message boxes that nobody sees: recorded for the test that asks, answered with OK.
#include <standin.h>

#include <mutex>
#include <utility>

namespace {

std::mutex guard;
std::vector<standin::MessageBox> shown;
thread_local DWORD lastError = NO_ERROR;

}  // namespace

int WINAPI MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT style) {
    const std::scoped_lock lock(guard);
    shown.push_back({owner, text ? text : "", caption ? caption : "Error", style});
    return IDOK;
}

BOOL WINAPI UnregisterClassA(LPCSTR, HINSTANCE) {
    return FALSE;  // there are no window classes
}

DWORD WINAPI GetLastError(void) {
    return lastError;
}

void WINAPI SetLastError(DWORD code) {
    lastError = code;
}

std::vector<standin::MessageBox> standin::takeMessageBoxes() {
    const std::scoped_lock lock(guard);
    return std::exchange(shown, {});
}
