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
    bool listsAll;  // a line that could not be listed would go from the store
};

ExtMapEditState* stateOf(HWND dialog) {
    return static_cast<ExtMapEditState*>(keptState(dialog));
}

/// 0 when a mapping could not be listed.
int FillExtMapList(HWND list, char* creator, char* type) {
    if (!list || list == INVALID_HANDLE_VALUE || !creator || !type) return 0;
    CExtensionMap cursor;
    int listsAll = 1;
    for (int found = cursor.FirstCT(creator, type); found; found = cursor.NextCT()) {
        const OwnedText line = joinedLine(cursor.Extension(), cursor.Comment());
        if (!line || SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.get())) < 0) listsAll = 0;
    }
    return listsAll;
}

/// A line of a list, whole; null past its end or when memory runs out.
OwnedText lineAt(HWND list, WPARAM index) {
    const LRESULT length = SendMessageA(list, LB_GETTEXTLEN, index, 0);
    if (length == LB_ERR) return nullptr;
    OwnedText line(new (std::nothrow) char[static_cast<std::size_t>(length) + 1]);
    if (line && SendMessageA(list, LB_GETTEXT, index, reinterpret_cast<LPARAM>(line.get())) == LB_ERR) return nullptr;
    return line;
}

/// Takes over what a line says; false when memory runs out.
bool hold(CExtensionMap& mapping, const MappingLine& line, const ExtMapEditState& state) {
    mapping.SetExtension(line.extension);
    mapping.SetComment(line.comment);
    mapping.SetCreator(state.creator);
    mapping.SetType(state.type);
    return mapping.Extension() && mapping.Creator() && mapping.Type() && !line.comment == !mapping.Comment();
}

struct Mappings {
    std::unique_ptr<CExtensionMap[]> all;
    WPARAM count;
};

/// All that OK is to write; none when memory runs out.
Mappings mappingsIn(HWND list, const ExtMapEditState& state) {
    const auto count = static_cast<WPARAM>(SendMessageA(list, LB_GETCOUNT, 0, 0));
    Mappings mappings{std::unique_ptr<CExtensionMap[]>(new (std::nothrow) CExtensionMap[count]), count};
    for (WPARAM i = 0; mappings.all && i < count; ++i) {
        const MappingLine line = splitLine(lineAt(list, i));
        if (!line.extension || !hold(mappings.all[i], line, state)) mappings.all.reset();
    }
    return mappings;
}

void removeMappings(const ExtMapEditState& state) {
    CExtensionMap cursor;
    for (int found = cursor.FirstCT(state.creator, state.type); found; found = cursor.NextCT()) cursor.Delete();
}

/// Rewrites the store. What is to be written is there whole before anything is removed.
int ApplyExtMapList(HWND dialog) {
    const ExtMapEditState* const state = stateOf(dialog);
    const HWND list = GetDlgItem(dialog, kMappingList);
    if (!state || !list || !state->listsAll) return 0;
    if (!canBeStored(state->creator, state->type)) return 1;
    const Mappings mappings = mappingsIn(list, *state);
    if (!mappings.all) return 0;
    removeMappings(*state);
    for (WPARAM i = 0; i < mappings.count; ++i) mappings.all[i].Create();
    return 1;
}

void enableRemove(HWND dialog, bool enabled) {
    EnableWindow(GetDlgItem(dialog, kRemoveButton), enabled);
}

void onInit(HWND dialog, LPARAM param) {
    keepState(dialog, param);
    auto* const state = reinterpret_cast<ExtMapEditState*>(param);
    SetDlgItemTextA(dialog, kCreatorText, state->creator);
    SetDlgItemTextA(dialog, kTypeText, state->type);
    int commentColumn = 115;  // dialog units from the list's left edge to the comments' heading
    SendDlgItemMessageA(dialog, kMappingList, LB_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(&commentColumn));
    state->listsAll = FillExtMapList(GetDlgItem(dialog, kMappingList), state->creator, state->type) != 0;
    enableRemove(dialog, false);
}

void onAdd(HWND dialog) {
    char creator[5] = "";
    char type[5] = "";
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
    ExtMapEditState state{creator, type, 0, false};
    const INT_PTR ended = showDialog(kEditDialog, static_cast<HWND>(parent), ExtMapEditDlgProc, &state);
    return ended == -1 ? 0 : state.result;
}
