// The dialog that edits the extension mappings of one creator and type. Add and Remove change its list only; the store
// is rewritten from the list once the user has confirmed OK.
#include <windows.h>

#include <memory>
#include <new>

#include "dialogs/extension_map_dialogs.h"
#include "dialogs/mapping_lines.h"
#include "tamrix32/dialogs.h"
#include "tamrix32/extmap.h"

namespace tamrix {
namespace {

struct ExtMapEditState {
    char* creator;  // both are the caller's
    char* type;
    int result;
};

ExtMapEditState* stateOf(HWND dialog) {
    return static_cast<ExtMapEditState*>(keptState(dialog));
}

int FillExtMapList(HWND list, char* creator, char* type) {
    if (!list || list == INVALID_HANDLE_VALUE || !creator || !type) return 0;
    CExtensionMap cursor;
    for (int found = cursor.FirstCT(creator, type); found; found = cursor.NextCT()) {
        const OwnedText line = joinedLine(cursor.Extension(), cursor.Comment());
        if (line) SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.get()));
    }
    return 1;
}

/// A line of a list, whole; null past its end or when memory runs out.
OwnedText lineAt(HWND list, WPARAM index) {
    const LRESULT length = SendMessageA(list, LB_GETTEXTLEN, index, 0);
    if (length == LB_ERR) return nullptr;
    OwnedText line(new (std::nothrow) char[static_cast<std::size_t>(length) + 1]);
    if (line && SendMessageA(list, LB_GETTEXT, index, reinterpret_cast<LPARAM>(line.get())) == LB_ERR) return nullptr;
    return line;
}

struct Lines {
    std::unique_ptr<MappingLine[]> lines;
    WPARAM count;
};

/// All that OK is to write; no lines when memory runs out.
Lines linesOf(HWND list) {
    const auto count = static_cast<WPARAM>(SendMessageA(list, LB_GETCOUNT, 0, 0));
    Lines all{std::unique_ptr<MappingLine[]>(new (std::nothrow) MappingLine[count]), count};
    for (WPARAM i = 0; all.lines && i < count; ++i) {
        all.lines[i] = splitLine(lineAt(list, i));
        if (!all.lines[i].extension) all.lines.reset();
    }
    return all;
}

void removeMappings(CExtensionMap& cursor, const ExtMapEditState& state) {
    for (int found = cursor.FirstCT(state.creator, state.type); found; found = cursor.NextCT()) cursor.Delete();
}

/// Writes each line with the codes that the cursor has held since the old mappings were removed.
void writeMappings(CExtensionMap& cursor, const Lines& all) {
    for (WPARAM i = 0; i < all.count; ++i) {
        cursor.SetExtension(all.lines[i].extension);
        cursor.SetComment(all.lines[i].comment);
        cursor.Create();
    }
}

/// Rewrites the store. The list is read first, so that nothing is removed that could not be written again.
int ApplyExtMapList(HWND dialog) {
    const ExtMapEditState* const state = stateOf(dialog);
    const HWND list = GetDlgItem(dialog, kMappingList);
    if (!state || !list) return 0;
    if (!canBeStored(state->creator, state->type)) return 1;
    const Lines all = linesOf(list);
    if (!all.lines) return 0;
    CExtensionMap cursor;
    removeMappings(cursor, *state);
    writeMappings(cursor, all);
    return 1;
}

void enableRemove(HWND dialog, bool enabled) {
    EnableWindow(GetDlgItem(dialog, kRemoveButton), enabled);
}

void onInit(HWND dialog, LPARAM param) {
    keepState(dialog, param);
    const ExtMapEditState* const state = stateOf(dialog);
    SetDlgItemTextA(dialog, kCreatorText, state->creator);
    SetDlgItemTextA(dialog, kTypeText, state->type);
    int commentColumn = 115;  // dialog units from the list's left edge to the comments' heading
    SendDlgItemMessageA(dialog, kMappingList, LB_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(&commentColumn));
    FillExtMapList(GetDlgItem(dialog, kMappingList), state->creator, state->type);
    enableRemove(dialog, false);
}

void onAdd(HWND dialog) {
    char creator[5];
    char type[5];
    GetDlgItemTextA(dialog, kCreatorText, creator, sizeof creator);
    GetDlgItemTextA(dialog, kTypeText, type, sizeof type);
    if (AddExtMapDlg(dialog, creator, type)) enableRemove(dialog, true);
}

void onRemove(HWND dialog) {
    const HWND list = GetDlgItem(dialog, kMappingList);
    const LRESULT selected = SendMessageA(list, LB_GETCURSEL, 0, 0);
    if (selected != LB_ERR) {
        SendMessageA(list, LB_DELETESTRING, static_cast<WPARAM>(selected), 0);
        const LRESULT count = SendMessageA(list, LB_GETCOUNT, 0, 0);
        const LRESULT next = selected < count ? selected : count - 1;
        if (count > 0) SendMessageA(list, LB_SETCURSEL, static_cast<WPARAM>(next), 0);
    }
    if (SendMessageA(list, LB_GETCURSEL, 0, 0) == LB_ERR) enableRemove(dialog, false);
}

void onHelpButton(HWND dialog) {
    const HelpFileName file(kHelpFile);
    if (file.loaded) WinHelpA(dialog, file.text, HELP_CONTEXT, kEditDialog);
}

bool isConfirmed(HWND dialog) {
    const MessageText question(kConfirmationQuestion);
    const MessageText title(kConfirmationTitle);
    return question.loaded && title.loaded &&
           MessageBoxA(dialog, question.text, title.text, MB_OKCANCEL | MB_ICONQUESTION | MB_DEFBUTTON2) == IDOK;
}

void onOk(HWND dialog) {
    if (!isConfirmed(dialog)) {
        SetFocus(GetDlgItem(dialog, IDCANCEL));
        return;
    }
    ApplyExtMapList(dialog);
    EndDialog(dialog, 0);
}

INT_PTR onCommand(HWND dialog, WORD control, WORD code) {
    if (control == kHelpButton) onHelpButton(dialog);
    if (control == kMappingList && code == LBN_SELCHANGE) {
        enableRemove(dialog, true);
        return TRUE;
    }
    if (code != 0) return FALSE;
    switch (control) {
        case kAddButton:
            onAdd(dialog);
            return TRUE;
        case kRemoveButton:
            onRemove(dialog);
            return TRUE;
        case IDOK:
            onOk(dialog);
            return TRUE;
        case IDCANCEL:
            EndDialog(dialog, 0);
            return TRUE;
        default:
            return FALSE;
    }
}

constexpr DLGPROC ExtMapEditDlgProc = mappingDialogProc<onInit, onCommand>;

}  // namespace
}  // namespace tamrix

using namespace tamrix;

int TAMRIX_CALL FileExtMapEditDlg(void* parent, char* creator, char* type) {
    if (!creator || !type) return 0;
    ExtMapEditState state{creator, type, 0};
    const INT_PTR ended = showDialog(kEditDialog, static_cast<HWND>(parent), ExtMapEditDlgProc, &state);
    return ended == -1 ? 0 : state.result;
}
