// Declarations that the two dialogs for editing extension mappings share.
#pragma once

#include <windows.h>

namespace tamrix {

/// Ids of templates and controls in src/resources/dialogs.rc. A control's id is also the help context of its popup.
enum DialogId {
    kEditDialog = 410,  // also the help context of its Help button
    kAddDialog = 411,
    kCreatorText = 380,
    kTypeText = 379,
    kMappingList = 414,
    kAddButton = 415,
    kRemoveButton = 416,
    kHelpButton = 417,
    kExtensionField = 418,
    kCommentField = 419,
};

/// Ids of strings in src/resources/strings.rc.
enum TextId {
    kHelpFile = 102,
    kErrorTitle = 160,
    kConfirmationTitle = 220,
    kLengthMessage = 223,
    kConfirmationQuestion = 224,
};

/// A string resource of the library. Sizes are in bytes and include the terminator.
template <int size>
struct LibraryText {
    explicit LibraryText(TextId id) : loaded(load(text, size, id)) {}

    char text[size];
    bool loaded;
};
using MessageText = LibraryText<260>;
using HelpFileName = LibraryText<32>;

/// Loads a string into a buffer of `size` bytes; false if there is none.
bool load(char* text, int size, TextId id);

/// Shows a dialog of the library in the configured font. Returns the value passed to EndDialog, or -1.
INT_PTR showDialog(DialogId id, HWND parent, DLGPROC procedure, void* state);

/// Store the state that WM_INITDIALOG passes, and return it later; null until it is stored.
void setDialogState(HWND dialog, LPARAM state);
void* dialogState(HWND dialog);

/// Shows the help popup of the control in a help request. False if the request is not about a control.
int ShowControlHelp(const HELPINFO* request, HWND dialog);

/// The procedure of both dialogs. WM_INITDIALOG returns FALSE, so the platform does not set the focus.
template <void (*onInit)(HWND dialog, LPARAM state), INT_PTR (*onCommand)(HWND dialog, WORD control, WORD code)>
INT_PTR CALLBACK mappingDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            onInit(dialog, lParam);
            return FALSE;
        case WM_HELP:
            ShowControlHelp(reinterpret_cast<const HELPINFO*>(lParam), dialog);
            return TRUE;
        case WM_COMMAND:
            return onCommand(dialog, LOWORD(wParam), HIWORD(wParam));
        default:
            return FALSE;
    }
}

}  // namespace tamrix
