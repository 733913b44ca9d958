// Conversion between names of the Apple Filing Protocol (AFP) and Windows names, with the rules as an argument.
//
// A quote has five bytes: the opening bracket, the value of one AFP byte as three decimal digits, the closing bracket.
// Names are zero-terminated; a lone lead byte before the terminator ends a name. Sizes and results are in bytes and
// include the terminator. If a result does not fit, `dst` contains a terminated prefix.
#pragma once

#include "macnames/name_rules.h"

namespace tamrix {

/// The result if the destination is too small or memory runs out.
inline constexpr int kDoesNotFit = -1;

/// Returns the number of bytes written, or kDoesNotFit. With a `size` of 0, writes nothing and returns kDoesNotFit.
int macToWindows(const NameRules& rules, char* dst, const char* afpName, unsigned size);
/// A capacity that is always sufficient; larger than needed if the quote set contains letters, digits or the space.
int macToWindowsCapacity(const NameRules& rules, const char* afpName);

/// Returns the number of bytes written, or kDoesNotFit. With a `size` of 0, writes nothing and returns 0. Path
/// separators become zero bytes.
int windowsToMac(const NameRules& rules, char* dst, const char* windowsName, unsigned size);
/// The exact capacity that windowsToMac needs.
int windowsToMacCapacity(const NameRules& rules, const char* windowsName);

}  // namespace tamrix
