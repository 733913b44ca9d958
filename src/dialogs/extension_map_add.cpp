// The dialog that asks for one extension and a comment, and adds a line to the editor's list.
#include <windows.h>

#include "dialogs/extension_map_dialogs.h"
#include "dialogs/mapping_lines.h"
#include "extmap/extension_key.h"
#include "tamrix32/dialogs.h"

namespace tamrix {
namespace {

struct AddExtMapState {
    char* creator;  // the caller owns both
    char* type;
    OwnedText extension;
    OwnedText comment;
};

constexpr INT_PTR kAccepted = 1;
constexpr INT_PTR kCancelled = 2;

AddExtMapState* stateOf(HWND dialog) {
    return static_cast<AddExtMapState*>(dialogState(dialog));
}

void onInit(HWND dialog, LPARAM param) {
    setDialogState(dialog, param);
    const auto* const state = reinterpret_cast<const AddExtMapState*>(param);
    SetDlgItemTextA(dialog, kCreatorText, state->creator);
    SetDlgItemTextA(dialog, kTypeText, state->type);
}

void rejectLength(HWND dialog) {
    const MessageText message(kLengthMessage);
    const MessageText title(kErrorTitle);
    if (message.loaded && title.loaded) MessageBoxA(dialog, message.text, title.text, MB_OK);
}

void onOk(HWND dialog) {
    char extension[20];  // a truncated extension is too long anyway
    if (!isAcceptedLength(static_cast<int>(GetDlgItemTextA(dialog, kExtensionField, extension, sizeof extension)))) {
        rejectLength(dialog);
        return;
    }
    char comment[256] = "";
    GetDlgItemTextA(dialog, kCommentField, comment, sizeof comment);
    if (AddExtMapState* const state = stateOf(dialog)) {
        state->extension = dottedExtension(extension);
        state->comment = copiedText(comment);
    }
    EndDialog(dialog, kAccepted);
}

INT_PTR onCommand(HWND dialog, WORD control, WORD code) {
    if (code != 0) return FALSE;
    switch (control) {
        case IDOK:
            onOk(dialog);
            return TRUE;
        case IDCANCEL:
            EndDialog(dialog, kCancelled);
            return TRUE;
        default:
            return FALSE;
    }
}

constexpr DLGPROC AddExtMapDlgProc = mappingDialogProc<onInit, onCommand>;

/// Adds the line and selects it. False if there is no list, if the list accepts no more lines, or if there is no
/// extension; the last happens if other code ended the dialog with the result of OK.
bool addLine(HWND editor, const AddExtMapState& state) {
    const HWND list = GetDlgItem(editor, kMappingList);
    if (!list || !state.extension || !state.comment) return false;
    const OwnedText line = joinedLine(state.extension.get(), state.comment.get());
    if (!line) return false;
    const LRESULT index = SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.get()));
    if (index < 0) return false;
    SendMessageA(list, LB_SETCURSEL, static_cast<WPARAM>(index), 0);
    return true;
}

}  // namespace
}  // namespace tamrix

using namespace tamrix;

int TAMRIX_CALL AddExtMapDlg(void* parent, char* creator, char* type) {
    AddExtMapState state{creator, type, nullptr, nullptr};
    const HWND editor = static_cast<HWND>(parent);
    return showDialog(kAddDialog, editor, AddExtMapDlgProc, &state) == kAccepted && addLine(editor, state);
}
