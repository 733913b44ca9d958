// The case pairs of double-byte letters, as the platform knows them for the active ANSI code page.
#pragma once

#include "strings/scan.h"

namespace tamrix {

/// Changes a double-byte letter in place. What has no pair stays; false when the platform can't map the character.
bool mapDoubleByteCase(char* character, scan::Case wanted);

}  // namespace tamrix
