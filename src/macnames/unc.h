// UNC paths of AppleTalk servers and printers, with the lead-byte table as an argument:
//
//   server    \\ [zone @] name [\ volume [\ rest]]
//   printer   \\ [zone] ` name \ share
//
// The zone "*" is the local zone and is never written. Delimiters are searched for character by character, so that a
// trail byte is not mistaken for one.
#pragma once

#include "strings/lead_bytes.h"

namespace tamrix {

inline constexpr int kServerPath = 1;
inline constexpr int kPrinterPath = 2;

/// Maximum size of a path in bytes, with its terminator. It fits in a signed 16-bit number.
inline constexpr int kMaxUncSize = 32767;

/// See UNCLength and StringsToUNC.
int uncLength(int kind, const char* zone, const char* name, const char* share);
int joinUnc(int kind, char* unc, unsigned short size, const char* zone, const char* name, const char* share);

/// Output buffers for the parts of a path; null for a part that is not wanted.
struct UncParts {
    char* zone;  // this and the next two have room for the whole path
    char* name;
    char* share;
    char* rest;
    unsigned restSize;

    bool wantsRest() const { return rest && restSize != 0; }
};

bool hasUncPrefix(const char* path);

/// Sets every wanted part to the empty string.
void clearParts(const UncParts& parts);

/// Splits a path that has the prefix, overwriting delimiters in place. Returns the kind of path, or 0 if it is neither.
int splitUnc(const LeadByteTable& leads, char* path, const UncParts& parts);

}  // namespace tamrix
