/// @file
/// The library's own module.
#ifndef TAMRIX32_FRAME_H
#define TAMRIX32_FRAME_H

#include <windows.h>

#include "tamrix32/export.h"

/// The module handle that the loader gave the library, from which its resources are loaded; null before it is attached.
TAMRIX_FUNCTION HINSTANCE TAMRIX_CALL TamrixResourceInstance(void);

#endif
