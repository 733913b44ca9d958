#include <windows.h>

#include <cstring>

#include "dialogs/mapping_changes.h"

namespace tamrix {

// Through Unicode and its simple case pairs, as the registry does it.
bool foldKeyName(char* name) {
    const int size = static_cast<int>(std::strlen(name)) + 1;
    return LCMapStringA(LOCALE_SYSTEM_DEFAULT, LCMAP_UPPERCASE, name, size, name, size) != 0;
}

}  // namespace tamrix
