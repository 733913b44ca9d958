// The paths under which AppleTalk servers and printers are named, over an explicit lead-byte table:
//
//   server    \\ [zone @] name [\ volume [\ rest]]
//   printer   \\ [zone] ` name \ share
//
// The zone "*" is the local one and is never written. Delimiters are looked for character by character, so that a trail
// byte is never taken for one.
#pragma once

#include "strings/lead_bytes.h"

namespace tamrix {

inline constexpr int kServerPath = 1;
inline constexpr int kPrinterPath = 2;

/// The longest path with its terminator, in bytes; lengths are handed out as signed 16-bit numbers.
inline constexpr int kLongestUnc = 32767;

/// As UNCLength and StringsToUNC.
int uncLength(int kind, const char* zone, const char* name, const char* share);
int joinUnc(int kind, char* unc, unsigned short size, const char* zone, const char* name, const char* share);

/// Where the parts of a path go; null for a part that is not wanted.
struct UncParts {
    char* zone;  // this and the next two hold any part of the path that is split
    char* name;
    char* share;
    char* rest;
    unsigned restSize;

    bool wantsRest() const { return rest && restSize != 0; }
};

bool hasUncPrefix(const char* path);

/// Empties every part that is wanted.
void clearParts(const UncParts& parts);

/// Splits a path that has the prefix, cutting it apart in place. The kind of path, or 0 when it is neither.
int splitUnc(const LeadByteTable& leads, char* path, const UncParts& parts);

}  // namespace tamrix
