// Shows a mapping dialog of the shipped DLL, for screenshots: show_dialog DLL edit|add CREATOR TYPE [help CONTROL].
// With the last two, F1 is pressed on that control, or, when it is the Help button, the button.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr int kHelpButton = 417;

DWORD WINAPI askForHelp(void* parameter) {
    const int id = *static_cast<int*>(parameter);
    HWND control = nullptr;
    while (!control) {
        Sleep(50);
        const HWND dialog = GetForegroundWindow();
        if (dialog && IsWindowVisible(dialog)) control = GetDlgItem(dialog, id);
    }
    Sleep(500);
    if (id == kHelpButton) {
        PostMessageA(control, BM_CLICK, 0, 0);
    } else {
        SendMessageA(GetParent(control), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
        keybd_event(VK_F1, 0, 0, 0);
        keybd_event(VK_F1, 0, KEYEVENTF_KEYUP, 0);
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 5 && argc != 7) return 2;
    const HMODULE library = LoadLibraryA(argv[1]);
    const char* const name =
        std::strcmp(argv[2], "add") ? "?FileExtMapEditDlg@@YAHPAXPAD1@Z" : "?AddExtMapDlg@@YAHPAXPAD1@Z";
    const auto show = reinterpret_cast<int(__cdecl*)(void*, char*, char*)>(
        reinterpret_cast<void*>(library ? GetProcAddress(library, name) : nullptr));
    if (!show) {
        std::fprintf(stderr, "show_dialog: no %s in %s\n", name, argv[1]);
        return 1;
    }
    int control = argc == 7 ? std::atoi(argv[6]) : 0;
    if (control) CreateThread(nullptr, 0, askForHelp, &control, 0, nullptr);
    return show(nullptr, argv[3], argv[4]);
}
