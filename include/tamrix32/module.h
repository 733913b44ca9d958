/// @file
/// The library's own module.
#ifndef TAMRIX32_MODULE_H
#define TAMRIX32_MODULE_H

#include <windows.h>

#include "tamrix32/export.h"

/// The library's module handle, for loading its resources; null before the library is attached to the process.
TAMRIX_FUNCTION HINSTANCE TAMRIX_CALL TamrixResourceInstance(void);

#endif
