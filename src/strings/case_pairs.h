// Case conversion of double-byte letters by the platform's tables for the active ANSI code page.
#pragma once

#include "strings/scan.h"

namespace tamrix {

/// Converts a double-byte letter in place. A character that has no other case is not changed. False if the platform
/// cannot map the character.
bool mapDoubleByteCase(char* character, scan::Case wanted);

}  // namespace tamrix
