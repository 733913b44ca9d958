// The dialog that edits the extension mappings of one creator and type. Add and Remove change only its list. When the
// user has confirmed OK, the differences from the original list are saved.
#include <windows.h>

#include <algorithm>
#include <memory>
#include <new>
#include <span>
#include <utility>

#include "dialogs/extension_map_dialogs.h"
#include "dialogs/mapping_changes.h"
#include "dialogs/mapping_lines.h"
#include "dialogs/pending_quit.h"
#include "tamrix32/dialogs.h"
#include "tamrix32/extmap.h"

namespace tamrix {
namespace {

/// Lines in the order in which they were added.
class KeyedLines {
public:
    /// Reserves memory for one more line; false if memory runs out.
    bool reserveOne() {
        if (count_ < capacity_) return true;
        const std::size_t capacity = 2 * capacity_ + 16;
        std::unique_ptr<KeyedLine[]> lines(new (std::nothrow) KeyedLine[capacity]);
        if (!lines) return false;
        std::move(lines_.get(), lines_.get() + count_, lines.get());
        lines_ = std::move(lines);
        capacity_ = capacity;
        return true;
    }
    /// Adds a line. reserveOne() must have succeeded before.
    void add(KeyedLine line) { lines_[count_++] = std::move(line); }
    std::span<const KeyedLine> all() const { return {lines_.get(), count_}; }

private:
    std::unique_ptr<KeyedLine[]> lines_;
    std::size_t count_ = 0;
    std::size_t capacity_ = 0;
};

struct ExtMapEditState {
    OwnedText creator;
    OwnedText type;
    KeyedLines listed = {};  // the lines when the dialog opened
    bool isAsking = false;   // the confirmation is open
};

ExtMapEditState* stateOf(HWND dialog) {
    return static_cast<ExtMapEditState*>(dialogState(dialog));
}

bool isNamedIn(std::span<const KeyedLine> lines, const KeyedLine& line) {
    return !isToBeRemoved(line, lines);
}

/// Lists each mapping once, because the cursor may return one twice if another program changes the store meanwhile. A
/// mapping that cannot be listed is omitted, and is then not changed on OK. False if there is no list.
int FillExtMapList(HWND list, char* creator, char* type, KeyedLines& listed) {
    if (!list) return 0;
    CExtensionMap cursor;
    for (int found = cursor.FirstCT(creator, type); found; found = cursor.NextCT()) {
        KeyedLine line = keyedLine(joinedLine(cursor.Extension(), cursor.Comment()), foldKeyName);
        if (!line.key || isNamedIn(listed.all(), line) || !listed.reserveOne()) continue;
        if (SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.line.get())) >= 0)
            listed.add(std::move(line));
    }
    return 1;
}

/// The complete text of a line; null past the end of the list or if memory runs out.
OwnedText lineAt(HWND list, WPARAM index) {
    const LRESULT length = SendMessageA(list, LB_GETTEXTLEN, index, 0);
    if (length == LB_ERR) return nullptr;
    OwnedText line(new (std::nothrow) char[static_cast<std::size_t>(length) + 1]);
    if (line && SendMessageA(list, LB_GETTEXT, index, reinterpret_cast<LPARAM>(line.get())) == LB_ERR) return nullptr;
    return line;
}

/// Reads the whole list; false if a line cannot be read.
bool readList(HWND list, KeyedLines& lines) {
    const LRESULT count = list ? SendMessageA(list, LB_GETCOUNT, 0, 0) : LB_ERR;
    for (LRESULT i = 0; i < count; ++i) {
        KeyedLine line = keyedLine(lineAt(list, static_cast<WPARAM>(i)), foldKeyName);
        if (!line.key || !lines.reserveOne()) return false;
        lines.add(std::move(line));
    }
    return count != LB_ERR;
}

/// Stores the mapping of a line, unless memory runs out.
void write(const char* text, const ExtMapEditState& state) {
    const MappingLine line = splitLine(copiedText(text));
    CExtensionMap mapping;
    mapping.SetExtension(line.extension);
    mapping.SetComment(line.comment);
    mapping.SetCreator(state.creator.get());
    mapping.SetType(state.type.get());
    const bool isComplete =
        mapping.Extension() && mapping.Creator() && mapping.Type() && !line.comment == !mapping.Comment();
    if (isComplete) mapping.Create();
}

/// Removes only mappings that still have these codes, because another program may have changed them meanwhile.
void removeMappings(std::span<const KeyedLine> lines, const ExtMapEditState& state) {
    CExtensionMap cursor;
    for (int found = cursor.FirstCT(state.creator.get(), state.type.get()); found; found = cursor.NextCT()) {
        const KeyedLine line = keyedLine(copiedText(cursor.Extension()), foldKeyName);
        if (line.key && isNamedIn(state.listed.all(), line) && isToBeRemoved(line, lines)) cursor.Delete();
    }
}

/// Saves the differences. False, with nothing saved, if a code is too long or the list cannot be read completely. A
/// write that fails affects only its own mapping.
int ApplyExtMapList(HWND dialog) {
    const ExtMapEditState* const state = stateOf(dialog);
    KeyedLines now;
    if (!state || !canBeStored(state->creator.get(), state->type.get())) return 0;
    if (!readList(GetDlgItem(dialog, kMappingList), now)) return 0;
    const std::span<const KeyedLine> lines = now.all();
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (isToBeWritten(lines, i, state->listed.all())) write(lines[i].line.get(), *state);
    if (std::ranges::any_of(state->listed.all(), [&](const KeyedLine& line) { return isToBeRemoved(line, lines); }))
        removeMappings(lines, *state);
    return 1;
}

void moveFocusToCancel(HWND dialog) {
    SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(dialog, IDCANCEL)), TRUE);
}

void enableRemove(HWND dialog, bool enabled) {
    EnableWindow(GetDlgItem(dialog, kRemoveButton), enabled);
}

void onInit(HWND dialog, LPARAM param) {
    setDialogState(dialog, param);
    auto* const state = reinterpret_cast<ExtMapEditState*>(param);
    SetDlgItemTextA(dialog, kCreatorText, state->creator.get());
    SetDlgItemTextA(dialog, kTypeText, state->type.get());
    int commentColumn = 115;  // dialog units from the list's left edge to the comments' heading
    SendDlgItemMessageA(dialog, kMappingList, LB_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(&commentColumn));
    FillExtMapList(GetDlgItem(dialog, kMappingList), state->creator.get(), state->type.get(), state->listed);
    enableRemove(dialog, false);
}

void onAdd(HWND dialog) {
    char creator[5] = "";
    char type[5] = "";
    GetDlgItemTextA(dialog, kCreatorText, creator, sizeof creator);
    GetDlgItemTextA(dialog, kTypeText, type, sizeof type);
    if (AddExtMapDlg(dialog, creator, type)) enableRemove(dialog, true);
}

/// If a disabled button had the focus, the keyboard would have no effect.
void disableRemove(HWND dialog) {
    if (GetFocus() == GetDlgItem(dialog, kRemoveButton)) moveFocusToCancel(dialog);
    enableRemove(dialog, false);
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
    if (SendMessageA(list, LB_GETCURSEL, 0, 0) == LB_ERR) disableRemove(dialog);
}

void onHelpButton(HWND dialog) {
    const HelpFileName file(kHelpFile);
    if (file.loaded) WinHelpA(dialog, file.text, HELP_CONTEXT, kEditDialog);
}

/// Also false if the question could not be shown, or was closed because the program is quitting.
bool isConfirmed(HWND dialog) {
    const MessageText question(kConfirmationQuestion);
    const MessageText title(kConfirmationTitle);
    return question.loaded && title.loaded &&
           MessageBoxA(dialog, question.text, title.text, MB_OKCANCEL | MB_ICONQUESTION | MB_DEFBUTTON2) == IDOK &&
           !isQuitPending();
}

void onOk(HWND dialog) {
    ExtMapEditState* const state = stateOf(dialog);
    if (!state || state->isAsking) return;
    state->isAsking = true;
    const bool confirmed = isConfirmed(dialog);
    state->isAsking = false;
    // If other code ended the dialog during the question, the answer no longer counts. An ended dialog is hidden.
    if (!IsWindowVisible(dialog)) return;
    if (!confirmed) {
        moveFocusToCancel(dialog);
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
    ExtMapEditState state{copiedText(creator), copiedText(type)};
    if (!state.creator || !state.type) return 0;
    showDialog(kEditDialog, static_cast<HWND>(parent), ExtMapEditDlgProc, &state);
    return 0;
}
