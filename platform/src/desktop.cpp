// Replacements for the two desktop functions that modules without windows call.
#include <windows.h>

#include <cstdio>

/// Weak, so that a test can define its own version and check the call.
__attribute__((weak)) int WINAPI MessageBoxA(HWND, LPCSTR text, LPCSTR caption, UINT) {
    std::fprintf(stderr, "%s %s\n", caption, text);
    return IDOK;
}

BOOL WINAPI UnregisterClassA(LPCSTR, HINSTANCE) {
    return FALSE;  // there are no window classes
}
