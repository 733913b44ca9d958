// CBrowseDlg: shows the platform's file dialog. A hidden helper window receives the Help button's message and opens the
// help.
#include <windows.h>

#include <cstddef>
#include <memory>
#include <new>

#include "base/module.h"
#include "base/unique_handle.h"
#include "dialogs/browse_paths.h"
#include "dialogs/helper_class.h"
#include "dialogs/pending_quit.h"
#include "tamrix32/browse.h"
#include "tamrix32/strings.h"

namespace {

constexpr UINT kPlaceholderString = 225;

// Size of the first version of OPENFILENAME; old versions of Windows reject a larger one.
constexpr DWORD kRecordSize = 76;
static_assert(offsetof(OPENFILENAMEA, lpTemplateName) + sizeof(LPCSTR) == kRecordSize);

constexpr DWORD kCommonFlags =
    OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST | OFN_NOTESTFILECREATE | OFN_EXPLORER;
constexpr DWORD kOpenFlags = kCommonFlags | OFN_FILEMUSTEXIST;
constexpr DWORD kSaveFlags = kCommonFlags | OFN_OVERWRITEPROMPT;
constexpr DWORD kFolderFlags = kCommonFlags | OFN_NOVALIDATE;

struct WorkArea {
    char initialFolder[tamrix::kBrowsePathSize];
    char placeholder[tamrix::kBrowsePathSize];
    char title[64];
    char filter[128];
};

struct WindowTraits {
    using Handle = HWND;
    static constexpr Handle kNone = nullptr;
    static void close(Handle window) { DestroyWindow(window); }
};
using UniqueWindow = tamrix::UniqueHandle<WindowTraits>;

UniqueWindow makeHelper(HWND owner) {
    const DWORD style = owner ? WS_CHILD : WS_OVERLAPPEDWINDOW;
    return UniqueWindow{CreateWindowExA(0, tamrix::kHelperClass, "", style, 50, 50, 100, 100, owner, nullptr,
                                        tamrix::instance, nullptr)};
}

void loadPlaceholder(char* buffer) {
    LoadStringA(tamrix::instance, kPlaceholderString, buffer, tamrix::kBrowsePathSize);
}

void loadTexts(WorkArea& area, HINSTANCE module, int titleId, int filterId) {
    if (!module) return;
    if (titleId) LoadStringA(module, static_cast<UINT>(titleId), area.title, sizeof area.title);
    if (!filterId) return;
    LoadStringA(module, static_cast<UINT>(filterId), area.filter, sizeof area.filter);
    tamrix::splitFilter(area.filter, sizeof area.filter, tamrix::leadByteTable);
}

OPENFILENAMEA makeRecord(WorkArea& area, char* path, bool withTitle, bool withFilter) {
    OPENFILENAMEA record = {};
    record.lStructSize = kRecordSize;
    record.lpstrFilter = withFilter ? area.filter : nullptr;
    record.nFilterIndex = withFilter ? 1 : 0;
    record.lpstrFile = path;
    record.nMaxFile = tamrix::kBrowsePathSize;
    record.lpstrInitialDir = area.initialFolder;
    record.lpstrTitle = withTitle ? area.title : nullptr;
    return record;
}

static_assert(sizeof(CBrowseDlg) == 24);

}  // namespace

unsigned int CBrowseDlg::m_HelpMessage;
int CBrowseDlg::m_nHelpID;
char* CBrowseDlg::m_pcHelpFile;

CBrowseDlg::CBrowseDlg(int bSave, int bFolder, void* hInstance, int nTitleID, int nFilterID, int nHelpID,
                       char* pcHelpFile)
    : m_hInstance(hInstance),
      m_nTitleID(nTitleID),
      m_nFilterID(nFilterID),
      m_bSave(bFolder ? 1 : bSave),
      m_bFolder(bFolder) {
    m_nHelpID = pcHelpFile ? nHelpID : 0;
    m_pcHelpFile = pcHelpFile;
    if (m_nHelpID == 0 || m_HelpMessage != 0) return;
    WNDCLASSA helper = {};
    helper.lpfnWndProc = helperProc;
    helper.hInstance = tamrix::instance;
    helper.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    helper.lpszClassName = tamrix::kHelperClass;
    tamrix::isHelperClassRegistered = RegisterClassA(&helper) != 0;
    m_HelpMessage = RegisterWindowMessageA("commdlg_help");
}

CBrowseDlg::~CBrowseDlg() = default;

int CBrowseDlg::invoke(void* hOwner, char* pcPath, char* pcInitialPath) {
    const std::unique_ptr<WorkArea> area(new (std::nothrow) WorkArea());
    if (!area) return 0;

    const bool asksForFolder = m_bFolder != 0;  // this object may be deleted while the dialog is open
    BufStrCpy(area->initialFolder, pcInitialPath, sizeof area->initialFolder);
    if (asksForFolder) {
        loadPlaceholder(pcPath);
    } else {
        const char* name = tamrix::splitInitialPath(area->initialFolder, tamrix::leadByteTable);
        if (name && m_bSave) dbcs_strcpy(pcPath, name);
    }
    loadTexts(*area, static_cast<HINSTANCE>(m_hInstance), m_nTitleID, m_nFilterID);

    OPENFILENAMEA record = makeRecord(*area, pcPath, m_nTitleID != 0, m_nFilterID != 0);
    record.Flags = asksForFolder ? kFolderFlags : m_bSave ? kSaveFlags : kOpenFlags;
    record.hwndOwner = static_cast<HWND>(hOwner);
    UniqueWindow helper;
    if (m_nHelpID) {
        helper = makeHelper(record.hwndOwner);
        record.hwndOwner = helper.get();
        record.Flags |= OFN_SHOWHELP;
    }
    const int accepted = m_bSave ? GetSaveFileNameA(&record) : GetOpenFileNameA(&record);
    helper.reset();
    if (tamrix::isQuitPending()) return 0;

    if (accepted && asksForFolder) {
        loadPlaceholder(area->placeholder);
        tamrix::cutPlaceholder(pcPath, area->placeholder, tamrix::leadByteTable);
    }
    return accepted;
}

LRESULT CALLBACK CBrowseDlg::helperProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != m_HelpMessage) return DefWindowProcA(window, message, wParam, lParam);
    WinHelpA(window, m_pcHelpFile, HELP_CONTEXT, static_cast<ULONG_PTR>(m_nHelpID));
    return 0;
}
