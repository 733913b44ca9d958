// What a dialog template takes from the platform: its resource, and its typeface converted from the ANSI code page.
#pragma once

#include <windows.h>

#include "dialogs/dialog_template.h"

namespace tamrix {

/// The bytes of a dialog resource, which stay mapped as long as the module; empty when there is none.
TemplateBytes dialogResource(HINSTANCE module, const char* name);

/// Room for the longest face that the registry can hold, 128 bytes, and its terminator.
using WideFace = char16_t[129];

/// A face, given in the ANSI code page, as templates hold it, in `buffer`; empty when it does not convert.
TemplateBytes wideFace(const char* face, WideFace& buffer);

}  // namespace tamrix
