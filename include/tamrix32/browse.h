/// @file
/// The file, save and folder dialog.
#ifndef TAMRIX32_BROWSE_H
#define TAMRIX32_BROWSE_H

#ifdef __cplusplus

#include <windows.h>

#include "tamrix32/export.h"

/// Asks for a file to open, a file name to save under, or a folder. The help settings are class-wide: those of the
/// object built last apply to all.
class TAMRIX_CLASS CBrowseDlg {
public:
    /// `nTitleID` and `nFilterID` are strings of `hInstance` (0: none); a filter's parts are separated and closed by
    /// '|'. With `bFolder` the dialog picks a folder. The Help button shows when both help arguments are given; the
    /// file's name is not copied and must stay until the process ends: every later dialog of the process may use it.
    CBrowseDlg(int bSave = 0, int bFolder = 0, void* hInstance = 0, int nTitleID = 0, int nFilterID = 0,
               int nHelpID = 0, char* pcHelpFile = 0);
    virtual ~CBrowseDlg();
    /// Shows the dialog, owned by the window `hOwner`. `pcPath`, of 260 bytes, holds the initial file name (open mode)
    /// and receives the chosen path. `pcInitialPath` is the folder to begin in; where a file is asked for, its part
    /// behind the last backslash is no folder but the initial file name (save mode) or left out (open mode), and
    /// without a backslash it counts for nothing. 0 on cancel or failure, and when the program is quitting: `pcPath`
    /// then holds no result.
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
