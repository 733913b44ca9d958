/// @file
/// Dialogs in the configured font: templates rewritten and shown, and the two dialogs that edit extension mappings.
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
/// Shows a dialog modelessly, owned by `parent` unless that is no window; null on failure.
TAMRIX_FUNCTION HWND TAMRIX_CALL ATNonModalDialog(HINSTANCE module, const char* templateName, DLGPROC dialogProc,
                                                  HWND parent, LPARAM initParam);

#ifdef __cplusplus

/// Lets the user edit which extensions map to this creator and type, which are copied. `parent` is the owner's window
/// handle. Once the user has agreed, lines that were added or changed are written, then mappings that were listed and
/// are in the list no more are removed; nothing else is touched. Nothing is saved when the dialog ends otherwise, the
/// program quits, or a code has more than 4 bytes. Always 0; null codes are refused with nothing shown. Exported under
/// its C++ name.
TAMRIX_IMPORT int TAMRIX_CALL FileExtMapEditDlg(void* parent, char* creator, char* type);
/// Asks for one extension and a comment and adds the line to list box 414 of `parent`; 1 when the line was added.
TAMRIX_IMPORT int TAMRIX_CALL AddExtMapDlg(void* parent, char* creator, char* type);

#endif
#endif
