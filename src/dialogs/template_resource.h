// Platform calls for dialog templates: loading the resource, and converting the typeface name from the ANSI code page.
#pragma once

#include <windows.h>

#include "dialogs/dialog_template.h"

namespace tamrix {

/// The bytes of a dialog resource, which stay valid as long as the module is loaded; empty if there is none.
TemplateBytes dialogResource(HINSTANCE module, const char* name);

/// Room for the longest face that is read from the registry, 128 bytes, and its terminator.
using WideFace = char16_t[129];

/// Converts a face from the ANSI code page to 16-bit units with the terminator, in `buffer`. Empty if it cannot be
/// converted or does not fit.
TemplateBytes wideFace(const char* face, WideFace& buffer);

}  // namespace tamrix
