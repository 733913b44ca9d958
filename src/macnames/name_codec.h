// Names of the Apple Filing Protocol (AFP) as Windows names and back, over explicit rules.
//
// A quote is five bytes: the opening bracket, the value of one AFP byte as three decimal digits, the closing bracket.
// Names are zero-terminated; a lone lead byte before the terminator ends a name. Sizes and results are bytes with the
// terminator. A result that does not fit leaves a terminated prefix in `dst`.
#pragma once

#include "macnames/name_rules.h"

namespace tamrix {

/// The result when the destination is too small or memory ran out.
inline constexpr int kDoesNotFit = -1;

/// Bytes written, or kDoesNotFit; a `size` of 0 writes nothing and does not fit.
int macToWindows(const NameRules& rules, char* dst, const char* afpName, unsigned size);
/// A capacity that always suffices; larger than needed when the quote set holds letters, digits or the space.
int macToWindowsCapacity(const NameRules& rules, const char* afpName);

/// Bytes written, or kDoesNotFit; a `size` of 0 writes nothing and gives 0. A path's separators are written as zeros.
int windowsToMac(const NameRules& rules, char* dst, const char* windowsName, unsigned size);
/// Exactly what windowsToMac needs.
int windowsToMacCapacity(const NameRules& rules, const char* windowsName);

}  // namespace tamrix
