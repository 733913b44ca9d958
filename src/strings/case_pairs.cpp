#include "strings/case_pairs.h"

#include <windows.h>

#include <cstring>

namespace tamrix {
namespace {

/// Returns the size of the result, or 0 if the platform fails. The result of a double-byte character has at most four
/// bytes.
int mapped(const char* character, scan::Case wanted, char (&result)[4]) {
    const DWORD flag = wanted == scan::Case::upper ? LCMAP_UPPERCASE : LCMAP_LOWERCASE;
    return LCMapStringA(LOCALE_SYSTEM_DEFAULT, flag, character, 2, result, sizeof result);
}

}  // namespace

// The platform converts to Unicode and back, which has two side effects: an invalid character becomes a default
// character, and the second of two codes of a character becomes the first. A result is therefore the other case only if
// mapping it back returns the character, or the first code of the character if that is a letter with two codes. A
// character without case that has two codes maps to its first code in both directions; it is not changed.
bool mapDoubleByteCase(char* character, scan::Case wanted) {
    const scan::Case other = wanted == scan::Case::upper ? scan::Case::lower : scan::Case::upper;
    char there[4];
    const int size = mapped(character, wanted, there);
    if (size == 0) return false;
    if (size != 2 || std::memcmp(there, character, 2) == 0) return true;

    char back[4];
    const int backSize = mapped(there, other, back);
    if (backSize == 0) return false;
    if (backSize != 2) return true;
    bool isPair = std::memcmp(back, character, 2) == 0;
    if (!isPair && std::memcmp(back, there, 2) != 0) {
        char first[4];
        const int firstSize = mapped(character, other, first);
        if (firstSize == 0) return false;
        isPair = firstSize == 2 && std::memcmp(first, back, 2) == 0;
    }
    if (isPair) std::memcpy(character, there, 2);
    return true;
}

}  // namespace tamrix
