#include <windows.h>

#include <cstring>

#include "dialogs/mapping_changes.h"

namespace tamrix {

// Converts case through Unicode, as the registry does.
bool foldKeyName(char* name) {
    const int size = static_cast<int>(std::strlen(name)) + 1;
    return LCMapStringA(LOCALE_SYSTEM_DEFAULT, LCMAP_UPPERCASE, name, size, name, size) != 0;
}

}  // namespace tamrix
