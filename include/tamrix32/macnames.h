/// @file
/// Macintosh names: the character table, names of the Apple Filing Protocol (AFP) as Windows names, and the UNC paths
/// of AppleTalk servers and printers. Strings are zero-terminated; lengths, sizes and capacities are bytes, capacities
/// with the terminator. No state: every function is reentrant.
#ifndef TAMRIX32_MACNAMES_H
#define TAMRIX32_MACNAMES_H

#include "tamrix32/export.h"

/// Macintosh to Windows (AtoI) and Windows to Macintosh (ItoA), byte for byte, in place. The table is on only where the
/// ANSI code page is single-byte and the OEM code page is 437 or 850; elsewhere bytes pass unchanged. No null
/// arguments.
/// @{
TAMRIX_FUNCTION void TAMRIX_CALL SBCS_AtoI(char* s);
TAMRIX_FUNCTION void TAMRIX_CALL SBCS_ItoA(char* s);
/// @}
/// Copies with the terminator.
/// @{
TAMRIX_FUNCTION void TAMRIX_CALL SBCS_AtoI_Copy(char* dst, const char* src);
TAMRIX_FUNCTION void TAMRIX_CALL SBCS_ItoA_Copy(char* dst, const char* src);
/// @}
/// Writes exactly `n` bytes: the source up to `n` bytes, then zeros; no terminator when the source fills them.
/// @{
TAMRIX_FUNCTION void TAMRIX_CALL SBCS_AtoI_nCopy(char* dst, const char* src, unsigned n);
TAMRIX_FUNCTION void TAMRIX_CALL SBCS_ItoA_nCopy(char* dst, const char* src, unsigned n);
/// @}

/// Turns an AFP name into a Windows name: bytes of the quote set become a bracketed three-digit number, for example
/// [058] for a colon, so does a trailing space or period; other single bytes go through the table, double-byte
/// characters pass. Returns the bytes written with the terminator, or -1 when `size` is too small: `dst` then holds a
/// terminated prefix (nothing is written when `size` is 0).
TAMRIX_FUNCTION int TAMRIX_CALL AFPtoOSCopy(char* dst, const char* afpName, unsigned size);
/// A capacity that AFPtoOSCopy needs at most for this name.
TAMRIX_FUNCTION int TAMRIX_CALL AFPtoOSLen(const char* afpName);
/// In place, in a buffer of `size` >= 1 bytes. -1 with the name unchanged when memory runs out, -1 with the cut result
/// when it does not fit.
TAMRIX_FUNCTION int TAMRIX_CALL AFPtoOS(char* name, unsigned size);

/// Turns a Windows name or path back: acceptable bracketed numbers are decoded, each backslash becomes a zero byte (the
/// AFP path separator), other single bytes go back through the table. Returns the bytes written with the final
/// terminator, which counts components too; -1 when `size` is too small (`dst` holds a terminated prefix), 0 when it
/// is 0.
TAMRIX_FUNCTION int TAMRIX_CALL OStoAFPCopy(char* dst, const char* osName, unsigned size);
/// The capacity that OStoAFPCopy needs.
TAMRIX_FUNCTION int TAMRIX_CALL OStoAFPLen(const char* osName);
/// In place; of a path, `name` keeps the first component only, while the result counts all.
TAMRIX_FUNCTION int TAMRIX_CALL OStoAFP(char* name, unsigned size);

/// The zone delimiters of the two forms of path: "@" for servers, the grave accent for printers. Constant strings.
/// @{
TAMRIX_FUNCTION const char* TAMRIX_CALL ZoneSrvDelimiter(void);
TAMRIX_FUNCTION const char* TAMRIX_CALL ZonePrnDelimiter(void);
/// @}

/// Capacity that StringsToUNC needs for `kind` 1 (a server: zone, at sign, name, backslash, share) or 2 (a printer,
/// with a grave accent for the at sign), at most 32,767. 0 for another kind, for a printer without name or share, and
/// for a path longer than that. Any string may be null; the zone "*" counts as none.
TAMRIX_FUNCTION int TAMRIX_CALL UNCLength(int kind, const char* zone, const char* name, const char* share);
/// Builds the path in a buffer of `size` bytes. 1 when it was built; 0, with nothing written, when UNCLength is 0 or
/// over `size`; 0 with a partial path for a printer whose name or share is empty.
TAMRIX_FUNCTION int TAMRIX_CALL StringsToUNC(int kind, char* unc, unsigned short size, const char* zone,
                                             const char* name, const char* share);
/// Splits a path: 1 for a server, 2 for a printer, 0 when it is neither. Any output may be null; `zone`, `name` and
/// `share` each need the path's length with the terminator, `rest` (what follows a server's volume) has `restSize`.
TAMRIX_FUNCTION int TAMRIX_CALL UNCToStrings(const char* unc, char* zone, char* name, char* share, char* rest,
                                             unsigned restSize);

#endif
