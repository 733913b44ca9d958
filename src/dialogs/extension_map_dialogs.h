// The two dialogs that edit the extension mappings of one creator and type, as far as they know of each other.
#pragma once

#include <windows.h>

namespace tamrix {

/// Templates and controls as src/resources/dialogs.rc numbers them; each control's id is its popup's help context, too.
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

/// Strings as src/resources/strings.rc numbers them.
enum TextId {
    kHelpFile = 102,
    kErrorTitle = 160,
    kConfirmationTitle = 220,
    kLengthMessage = 223,
    kConfirmationQuestion = 224,
};

/// A string of the library. Sizes are bytes with the terminator.
template <int size>
struct LibraryText {
    explicit LibraryText(TextId id) : loaded(load(text, size, id)) {}

    char text[size];
    bool loaded;
};
using MessageText = LibraryText<260>;
using HelpFileName = LibraryText<32>;

/// Loads a string into a buffer of so many bytes; false when there is none.
bool load(char* text, int size, TextId id);

/// Shows a dialog of the library in the configured font; the value that it ends with, or -1.
INT_PTR showDialog(DialogId id, HWND parent, DLGPROC procedure, void* state);

/// Stores the state that comes with a dialog's first message, and gives it back from then on.
void keepState(HWND dialog, LPARAM state);
void* keptState(HWND dialog);

/// Answers a request for help about one control with its popup; 0 when it is about something else.
int ShowControlHelp(const HELPINFO* request, HWND dialog);

/// The procedure of either dialog. The first message leaves the focus to the handler.
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
