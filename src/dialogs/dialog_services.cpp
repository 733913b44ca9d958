// Platform calls that both mapping dialogs use.
#include <windows.h>

#include "base/module.h"
#include "dialogs/extension_map_dialogs.h"
#include "dialogs/pending_quit.h"
#include "tamrix32/dialogs.h"

namespace tamrix {

bool load(char* text, int size, TextId id) {
    return LoadStringA(instance, id, text, size) > 0;
}

INT_PTR showDialog(DialogId id, HWND parent, DLGPROC procedure, void* state) {
    return ATModalDialog(instance, MAKEINTRESOURCEA(id), procedure, parent, reinterpret_cast<LPARAM>(state));
}

void setDialogState(HWND dialog, LPARAM state) {
    SetWindowLongA(dialog, DWL_USER, state);
}

void* dialogState(HWND dialog) {
    return reinterpret_cast<void*>(GetWindowLongA(dialog, DWL_USER));
}

bool isQuitPending() {
    MSG message;
    return PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE) && message.message == WM_QUIT;
}

int ShowControlHelp(const HELPINFO* request, HWND dialog) {
    if (request->iContextType != HELPINFO_WINDOW) return 0;
    if (request->iCtrlId == 0) return 1;
    const HelpFileName file(kHelpFile);
    if (file.loaded) WinHelpA(dialog, file.text, HELP_CONTEXTPOPUP, static_cast<ULONG_PTR>(request->iCtrlId));
    return 1;
}

}  // namespace tamrix
