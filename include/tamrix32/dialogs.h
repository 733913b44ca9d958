/// @file
/// Dialogs in the configured font: functions that change a template's font and show dialogs, and the two dialogs that
/// edit extension mappings.
#ifndef TAMRIX32_DIALOGS_H
#define TAMRIX32_DIALOGS_H

#include <windows.h>

#include "tamrix32/export.h"

/// Loads the dialog template `templateName` (a name or an integer resource) of `module` and changes its font to the
/// configured one. Without a configured font, a template that has no font or 8-point "MS Sans Serif" gets the default
/// GUI font. A nonzero `adjustSize` scales the dialog's size to the new font's metrics. Returns a template in memory,
/// which the caller frees with FreeTemplateWithCorrectFont; null if the template is missing or malformed or memory runs
/// out.
TAMRIX_FUNCTION void* TAMRIX_CALL LoadTemplateWithCorrectFont(HINSTANCE module, const char* templateName,
                                                              int adjustSize);
/// Frees a template returned by LoadTemplateWithCorrectFont; null is allowed.
TAMRIX_FUNCTION void TAMRIX_CALL FreeTemplateWithCorrectFont(void* dialogTemplate);
/// Shows a dialog modally in the configured font. Returns the value passed to EndDialog, or -1 on failure.
TAMRIX_FUNCTION int TAMRIX_CALL ATModalDialog(HINSTANCE module, const char* templateName, DLGPROC dialogProc,
                                              HWND parent, LPARAM initParam);
/// Shows a dialog modelessly. `parent` becomes the owner if it is a window; otherwise the dialog has no owner. Null on
/// failure.
TAMRIX_FUNCTION HWND TAMRIX_CALL ATNonModalDialog(HINSTANCE module, const char* templateName, DLGPROC dialogProc,
                                                  HWND parent, LPARAM initParam);

#ifdef __cplusplus

/// Lets the user edit the list of extensions that map to this creator and type; both codes are copied. `parent` is the
/// owner's window handle. When the user confirms, first the added and changed lines are written, then the mappings that
/// the user removed from the list are deleted; no other mapping is changed. Nothing is saved if the dialog ends
/// without that confirmation, if the program quits, or if a code is longer than 4 bytes. Always returns 0. If a code is
/// null, no dialog is shown. Exported under its C++ name.
TAMRIX_IMPORT int TAMRIX_CALL FileExtMapEditDlg(void* parent, char* creator, char* type);
/// Asks for one extension and a comment and adds a line (the extension with its dot, a tab, the comment) to the list
/// box with the control id 414 in `parent`. Returns 1 if the line was added, otherwise 0.
TAMRIX_IMPORT int TAMRIX_CALL AddExtMapDlg(void* parent, char* creator, char* type);

#endif
#endif
