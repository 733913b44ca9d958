// Shows the dialogs on Windows.
#include <stdlib.h>
#include <string.h>
#include <windows.h>

#include "client/command.h"
#include "client/output.h"
#include "client/resource_ids.h"
#include "client/system/dialogs.h"
#include "client/system/paths_windows.h"
#include "client/unicode.h"
#include "tamrix32/about.h"
#include "tamrix32/browse.h"
#include "tamrix32/dialogs.h"

namespace tamrix::client {
namespace {

/// Overwrites this program's string resources kTitleString and kFilterString in memory, because the browse dialog reads
/// its texts only from a module's string table. The page that is written becomes private to this process. A block of
/// the table is 16 strings, each a length in 16-bit units followed by the units. The texts fit because the strings in
/// the resource script are as long as the longest texts that the library reads.
bool setStrings(const WideString& title, const WideString& filter) {
    HMODULE self = GetModuleHandleA(nullptr);
    const HRSRC resource = FindResourceA(self, MAKEINTRESOURCEA(kTitleString / 16 + 1), RT_STRING);
    void* block = resource ? LockResource(LoadResource(self, resource)) : nullptr;
    const DWORD size = block ? SizeofResource(self, resource) : 0;
    std::basic_string<WCHAR> table(kTitleString % 16, 0);
    for (const WideString* text : {&title, &filter}) {
        table.push_back(static_cast<WCHAR>(text->size()));
        table += *text;
    }
    table.resize(table.size() + 16 - kFilterString % 16 - 1, 0);
    DWORD protection;
    if (table.size() * sizeof(WCHAR) > size || !VirtualProtect(block, size, PAGE_READWRITE, &protection)) return false;
    memcpy(block, table.data(), table.size() * sizeof(WCHAR));
    return true;
}

WideString wide(const std::string& bytes) {
    WideString result(bytes.size(), 0);
    const int size = static_cast<int>(bytes.size());
    result.resize(static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, result.data(), size)));
    return result;
}

/// Detects whether this thread showed a dialog during the object's lifetime. The library does not report this for all
/// of its dialogs, and does not distinguish a dialog that failed from one that was cancelled.
class DialogWatch {
public:
    DialogWatch() : hook_(SetWindowsHookExA(WH_CBT, note, nullptr, GetCurrentThreadId())) { isShown_ = !hook_; }
    ~DialogWatch() {
        if (hook_) UnhookWindowsHookEx(hook_);
    }
    DialogWatch(const DialogWatch&) = delete;
    DialogWatch& operator=(const DialogWatch&) = delete;

    bool isShown() const { return isShown_; }

private:
    static LRESULT CALLBACK note(int code, WPARAM wParam, LPARAM lParam) {
        if (code == HCBT_ACTIVATE) isShown_ = true;
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    inline static bool isShown_;
    HHOOK hook_;
};

int notShown(const char* command) {
    complain(command, "cannot show the dialog");
    return kUsageError;
}

INT_PTR CALLBACK plainDialog(HWND window, UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_INITDIALOG) return TRUE;
    const bool ends = message == WM_COMMAND && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL);
    if (ends || message == WM_CLOSE) EndDialog(window, 1);
    return ends || message == WM_CLOSE;
}

/// An about box that ends the message loop when its window is destroyed.
class LoopingAbout : public CAboutQuillonAppleTalk {
protected:
    void dialogDestroyed() override {
        PostQuitMessage(0);
        CAboutQuillonAppleTalk::dialogDestroyed();
    }
};

}  // namespace

int editMappings(const std::string& type, const std::string& creator) {
    std::string typeCopy = type, creatorCopy = creator;
    const DialogWatch watch;
    FileExtMapEditDlg(nullptr, creatorCopy.data(), typeCopy.data());
    return watch.isShown() ? kDone : notShown("edit");
}

int browse(const BrowseRequest& request, std::string& chosen) {
    if (!setStrings(wide(request.title), wide(request.filter))) {
        complain("browse", "cannot set the title and the filter");
        return kUsageError;
    }
    CBrowseDlg dialog(request.mode == BrowseMode::save, request.mode == BrowseMode::folder, GetModuleHandleA(nullptr),
                      request.title.empty() ? 0 : kTitleString, request.filter.empty() ? 0 : kFilterString);
    char path[MAX_PATH] = "";
    std::string initial = request.initial;
    const DialogWatch watch;
    if (!dialog.invoke(nullptr, path, initial.data())) return watch.isShown() ? kSomeFailed : notShown("browse");
    chosen = path;
    return kDone;
}

int showDialog(const std::string& module, const std::string& id, bool adjustSize) {
    const HMODULE loaded = LoadLibraryExA(ansiPath(module).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    if (!loaded) {
        complain(module, "cannot load the module");
        return kUsageError;
    }
    char* end = nullptr;
    const unsigned long number = strtoul(id.c_str(), &end, 10);
    const char* name = *end == '\0' && number < 0x10000 ? MAKEINTRESOURCEA(number) : id.c_str();
    int status = kDone;
    if (void* rewritten = LoadTemplateWithCorrectFont(loaded, name, adjustSize)) {
        // The program's own instance, because window classes are not found in a module that is loaded as data.
        const INT_PTR ended = DialogBoxIndirectParamA(
            GetModuleHandleA(nullptr), static_cast<const DLGTEMPLATE*>(rewritten), nullptr, plainDialog, 0);
        FreeTemplateWithCorrectFont(rewritten);
        if (ended == -1) {
            complain(id, "cannot create the dialog (it may use custom controls)");
            status = kSomeFailed;
        }
    } else {
        complain(id, "no such dialog in " + module);
        status = kSomeFailed;
    }
    FreeLibrary(loaded);
    return status;
}

int showAbout(bool modal) {
    if (modal) {
        const DialogWatch watch;
        DoQuillonAboutBox();
        return watch.isShown() ? kDone : notShown("about");
    }
    auto* box = new LoopingAbout;
    if (!box->showModeless()) {
        delete box;
        return notShown("about");
    }
    // The box deletes itself when its window is destroyed.
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return kDone;
}

}  // namespace tamrix::client
