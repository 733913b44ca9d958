// The library's module handle.
#pragma once

#include <windows.h>

namespace tamrix {

/// The module handle, for loading the library's resources. Null before the first call of DllMain.
extern HINSTANCE instance;

}  // namespace tamrix
