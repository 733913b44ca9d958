// Dialogs in the configured font: templates rewritten and shown, the two dialogs that edit extension mappings, and the
// file, save and folder dialog.
#ifndef TAMRIX32_DIALOGS_H
#define TAMRIX32_DIALOGS_H

#include <windows.h>

#include "tamrix32/export.h"

/// Loads the dialog template `templateName` (a name or an integer resource) of `module` and gives it the configured
/// font, or the default GUI font where it has none or 8-point "MS Sans Serif". With `adjustSize` nonzero the dialog's
/// size follows the new font's metrics. Returns an in-memory template that the caller gives back to
/// FreeTemplateWithCorrectFont; null when the template is missing or malformed or memory runs out.
TAMRIX_FUNCTION void* TAMRIX_CALL LoadTemplateWithCorrectFont(HINSTANCE module, const char* templateName,
                                                              int adjustSize);
/// Frees what LoadTemplateWithCorrectFont returned; null is fine.
TAMRIX_FUNCTION void TAMRIX_CALL FreeTemplateWithCorrectFont(void* dialogTemplate);
/// Shows a dialog modally in the configured font; the value given to EndDialog, or -1.
TAMRIX_FUNCTION int TAMRIX_CALL ATModalDialog(HINSTANCE module, const char* templateName, DLGPROC dialogProc,
                                              HWND parent, LPARAM initParam);
/// Shows a dialog modelessly, owned by `parent`; null on failure.
TAMRIX_FUNCTION HWND TAMRIX_CALL ATNonModalDialog(HINSTANCE module, const char* templateName, DLGPROC dialogProc,
                                                  HWND parent, LPARAM initParam);

#ifdef __cplusplus

/// Lets the user edit which extensions map to this creator and type. `parent` is the owner's window handle. Always 0;
/// null codes are refused with nothing shown. Exported under its C++ name.
TAMRIX_IMPORT int TAMRIX_CALL FileExtMapEditDlg(void* parent, char* creator, char* type);
/// Asks for one extension and a comment and adds the line to list 414 of `parent`; 1 when the user accepted.
TAMRIX_IMPORT int TAMRIX_CALL AddExtMapDlg(void* parent, char* creator, char* type);

/// Asks for a file to open, a file name to save under, or a folder. The help settings are class-wide: those of the
/// object built last apply to all.
class TAMRIX_CLASS CBrowseDlg {
public:
    /// `nTitleID` and `nFilterID` are strings of `hInstance` (0: none); a filter's parts are separated and closed by
    /// '|'. With `bFolder` the dialog picks a folder. The Help button shows when both help arguments are given; the
    /// file's name is not copied.
    CBrowseDlg(int bSave = 0, int bFolder = 0, void* hInstance = 0, int nTitleID = 0, int nFilterID = 0,
               int nHelpID = 0, char* pcHelpFile = 0);
    virtual ~CBrowseDlg();
    /// Shows the dialog, owned by the window `hOwner`. `pcPath`, of 260 bytes, holds the initial file name (open mode)
    /// and receives the chosen path; the folder to begin in comes from `pcInitialPath`. 0 on cancel or failure.
    virtual int invoke(void* hOwner, char* pcPath, char* pcInitialPath);

private:
    friend struct BrowseLayout;
    static unsigned int m_HelpMessage;
    static int m_nHelpID;
    static char* m_pcHelpFile;
    static LRESULT CALLBACK helperProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    void* m_hInstance;
    int m_nTitleID;
    int m_nFilterID;
    int m_bSave;
    int m_bFolder;
};

#endif
#endif
