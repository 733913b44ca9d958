// The library as a whole: its module, and where its settings are kept.
#pragma once

#include <windows.h>

namespace tamrix {

/// The library's own module, from which its resources are loaded. Null before the first entry call.
extern HINSTANCE instance;

/// The key below HKEY_LOCAL_MACHINE that holds the settings.
inline constexpr char kSettingsPath[] = "software\\Quillon Systems, Inc.\\File Client";

}  // namespace tamrix
