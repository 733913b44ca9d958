// What the windowless modules call of a desktop, where there is none.
#include <windows.h>

#include <cstdio>

/// Weak, so that a test can put one that it sees in its place.
__attribute__((weak)) int WINAPI MessageBoxA(HWND, LPCSTR text, LPCSTR caption, UINT) {
    std::fprintf(stderr, "%s %s\n", caption, text);
    return IDOK;
}

BOOL WINAPI UnregisterClassA(LPCSTR, HINSTANCE) {
    return FALSE;  // there are no window classes
}
