/// @file
/// Macintosh names: character conversion, conversion between file names of the Apple Filing Protocol (AFP) and Windows,
/// and the UNC paths of AppleTalk servers and printers. Strings are zero-terminated. Lengths, sizes and capacities are
/// in bytes; a capacity includes the terminator. Every function is reentrant.
#ifndef TAMRIX32_MACNAMES_H
#define TAMRIX32_MACNAMES_H

#include "tamrix32/export.h"

/// Convert Macintosh to Windows characters (AtoI) and Windows to Macintosh characters (ItoA), byte by byte and in
/// place. The conversion table is active only if the ANSI code page is single-byte and the OEM code page is 437 or 850;
/// otherwise bytes are not changed. Arguments must not be null.
/// @{
TAMRIX_FUNCTION void TAMRIX_CALL SBCS_AtoI(char* s);
TAMRIX_FUNCTION void TAMRIX_CALL SBCS_ItoA(char* s);
/// @}
/// Convert while copying; the terminator is copied too.
/// @{
TAMRIX_FUNCTION void TAMRIX_CALL SBCS_AtoI_Copy(char* dst, const char* src);
TAMRIX_FUNCTION void TAMRIX_CALL SBCS_ItoA_Copy(char* dst, const char* src);
/// @}
/// Convert while copying and write exactly `n` bytes: up to `n` bytes of the source, then zeros. A source of `n` bytes
/// or more leaves no room for a terminator.
/// @{
TAMRIX_FUNCTION void TAMRIX_CALL SBCS_AtoI_nCopy(char* dst, const char* src, unsigned n);
TAMRIX_FUNCTION void TAMRIX_CALL SBCS_ItoA_nCopy(char* dst, const char* src, unsigned n);
/// @}

/// Converts an AFP name to a Windows name. Each byte in the quote set becomes a bracketed three-digit number, for
/// example [058] for a colon; so does a trailing space or period. Other single bytes are converted by the table;
/// double-byte characters are copied. Returns the number of bytes written, including the terminator, or -1 if `size` is
/// too small. `dst` then contains a terminated prefix; if `size` is 0, nothing is written.
TAMRIX_FUNCTION int TAMRIX_CALL AFPtoOSCopy(char* dst, const char* afpName, unsigned size);
/// A capacity that is always sufficient for AFPtoOSCopy with this name.
TAMRIX_FUNCTION int TAMRIX_CALL AFPtoOSLen(const char* afpName);
/// Like AFPtoOSCopy, but in place, in a buffer of `size` bytes (at least 1). Returns -1 if memory runs out, with the
/// name unchanged, or if the result does not fit, with the result truncated.
TAMRIX_FUNCTION int TAMRIX_CALL AFPtoOS(char* name, unsigned size);

/// Converts a Windows name or path back to an AFP name. The bracketed number of a space, a period or a byte in the
/// quote set is decoded, each backslash becomes a zero byte (the AFP path separator), and other single bytes are
/// converted back by the table. Returns the number of bytes written, including all components and the final terminator.
/// Returns -1 if `size` is too small, with a terminated prefix in `dst`, and 0 if `size` is 0.
TAMRIX_FUNCTION int TAMRIX_CALL OStoAFPCopy(char* dst, const char* osName, unsigned size);
/// The exact capacity that OStoAFPCopy needs.
TAMRIX_FUNCTION int TAMRIX_CALL OStoAFPLen(const char* osName);
/// Like OStoAFPCopy, but in place. For a path, `name` receives only the first component, but the result counts all of
/// them.
TAMRIX_FUNCTION int TAMRIX_CALL OStoAFP(char* name, unsigned size);

/// The zone delimiters as constant strings: "@" in server paths, a grave accent in printer paths.
/// @{
TAMRIX_FUNCTION const char* TAMRIX_CALL ZoneSrvDelimiter(void);
TAMRIX_FUNCTION const char* TAMRIX_CALL ZonePrnDelimiter(void);
/// @}

/// The capacity that StringsToUNC needs, at most 32,767 bytes. `kind` is 1 for a server (zone, at sign, name,
/// backslash, share) or 2 for a printer (the same with a grave accent instead of the at sign). Returns 0 for another
/// kind, for a printer whose name or share is null, and for a longer path. Any string may be null; the zone "*" counts
/// as no zone.
TAMRIX_FUNCTION int TAMRIX_CALL UNCLength(int kind, const char* zone, const char* name, const char* share);
/// Builds the path in a buffer of `size` bytes and returns 1. Returns 0, with nothing written, if `unc` is null or
/// UNCLength is 0 or greater than `size`. Returns 0, with a partial path, for a printer whose name or share is empty.
TAMRIX_FUNCTION int TAMRIX_CALL StringsToUNC(int kind, char* unc, unsigned short size, const char* zone,
                                             const char* name, const char* share);
/// Splits a path. Returns 1 for a server, 2 for a printer, 0 if it is neither or memory runs out; after a 0, the
/// outputs are undefined. Any output may be null. `zone`, `name` and `share` must each have room for the whole path
/// with its terminator. `rest` has room for `restSize` bytes and receives the part after a server's volume, or the
/// empty string if `share` is null.
TAMRIX_FUNCTION int TAMRIX_CALL UNCToStrings(const char* unc, char* zone, char* name, char* share, char* rest,
                                             unsigned restSize);

#endif
