// press_button TITLE ID: waits, at most ten seconds, for a dialog with this title that a program shows and presses its
// button ID. Status 1 when there was none.
#include <windows.h>

#include <cstdlib>

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    for (int left = 100; left > 0; --left, Sleep(100)) {
        HWND dialog = FindWindowA("#32770", argv[1]);
        if (!dialog || !IsWindowVisible(dialog)) continue;
        // What is posted while a dialog fills itself could come before its own first messages have been dealt with.
        Sleep(300);
        return PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(std::atoi(argv[2])), 0) ? 0 : 1;
    }
    return 1;
}
