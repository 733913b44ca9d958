/// @file
/// The file, save and folder dialog.
#ifndef TAMRIX32_BROWSE_H
#define TAMRIX32_BROWSE_H

#ifdef __cplusplus

#include <windows.h>

#include "tamrix32/export.h"

/// Asks for a file to open, a file name to save under, or a folder. All objects share one set of help settings: those
/// of the object constructed last.
class TAMRIX_CLASS CBrowseDlg {
public:
    /// `nTitleID` and `nFilterID` are string resources of `hInstance` (0: none). The filter string separates its parts
    /// with '|' and ends with one. `bSave` selects a save dialog; `bFolder` selects a folder dialog, whatever `bSave`
    /// is. The dialog has a Help button if `nHelpID` is not 0 and `pcHelpFile` is not null. The help file's name is
    /// not copied and must stay valid until the process ends: every later dialog of the process may use it.
    CBrowseDlg(int bSave = 0, int bFolder = 0, void* hInstance = 0, int nTitleID = 0, int nFilterID = 0,
               int nHelpID = 0, char* pcHelpFile = 0);
    virtual ~CBrowseDlg();
    /// Shows the dialog with the owner window `hOwner`. Returns 1 if the user chose a path. Returns 0 on cancel or
    /// failure or if the program is quitting; `pcPath` is then undefined. `pcPath` is a buffer of 260 bytes: in
    /// an open dialog it contains the initial file name on entry, and it receives the chosen path. `pcInitialPath` is
    /// the initial folder. In a file dialog, only the part before the last backslash is the folder; the part after it
    /// is the initial file name (save) or ignored (open). A path without a backslash is ignored.
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
