/// @file
/// Strings that never split a double-byte character.
///
/// A string is a zero-terminated byte string in the active ANSI code page. A double-byte character is a lead byte and
/// the byte after it, whatever that byte is. Lengths, sizes, counts and limits are bytes; positions are byte pointers.
/// When the code page has no lead bytes, each function behaves as the C function of the same name without the prefix,
/// except that null arguments are accepted and give the stated results. Where a string ends in a lone lead byte, what
/// walks by characters (bounded copies, searches, case, truncation) ends there; dbcs_strlen, dbcs_strcpy and
/// dbcs_strcat count and copy every byte, and the comparisons take it as the last character. Nothing is ever read past
/// the terminator. Nothing allocates; all functions are reentrant.
#ifndef TAMRIX32_STRINGS_H
#define TAMRIX32_STRINGS_H

#include "tamrix32/export.h"

/// Compares character by character, a double-byte one as lead * 256 + trail, a single byte as its unsigned value. A
/// lone lead byte has the terminator as its trail byte, so that different strings never compare as equal. Returns <0, 0
/// or >0; -1 when either argument is null, also when both are.
TAMRIX_FUNCTION int TAMRIX_CALL dbcs_strcmp(const char* a, const char* b);

/// As dbcs_strcmp without regard to the case of ASCII letters and, under a double-byte code page, of the double-byte
/// letters that the code page pairs up (full-width Latin, Greek, Cyrillic, Roman numerals); a letter with two codes
/// folds like its twin. Other single bytes never fold.
TAMRIX_FUNCTION int TAMRIX_CALL dbcs_stricmp(const char* a, const char* b);

/// Length in bytes, without the terminator; 0 for null.
TAMRIX_FUNCTION int TAMRIX_CALL dbcs_strlen(const char* s);

/// Copies `src` with its terminator. Returns `dst`; null when `dst` is null; nothing is copied when `src` is null.
TAMRIX_FUNCTION char* TAMRIX_CALL dbcs_strcpy(char* dst, const char* src);

/// Appends `src` to the string at `dst`. Nulls as for dbcs_strcpy.
TAMRIX_FUNCTION char* TAMRIX_CALL dbcs_strcat(char* dst, const char* src);

/// Copies at most `n` bytes (n >= 0) and fills the rest of the `n` bytes with zeros; no terminator is written when the
/// source fills them. A double-byte character that does not fit whole is not copied: its place is zero-filled.
/// Nulls as for dbcs_strcpy.
TAMRIX_FUNCTION char* TAMRIX_CALL dbcs_strncpy(char* dst, const char* src, int n);

/// First character whose first byte, taken as a signed char, equals `c`; trail bytes are never compared. Null when
/// there is none or `s` is null. Under a double-byte code page the terminator is not found either.
TAMRIX_FUNCTION char* TAMRIX_CALL dbcs_strchr(const char* s, int c);

/// Last single-byte character that, taken as a signed char, equals `c`; double-byte characters never match. Null when
/// there is none or `s` is null.
TAMRIX_FUNCTION char* TAMRIX_CALL dbcs_strrchr(const char* s, int c);

/// Start of the character just before `current` in the string that begins at `start` (mind the order). Null when either
/// is null or they are equal.
TAMRIX_FUNCTION char* TAMRIX_CALL dbcs_prevchar(const char* current, const char* start);

/// Largest length not over `n` that ends on a character boundary of `s`. With `checkLength` nonzero, a string of at
/// most `n` bytes gives its length; with 0 the caller vouches for `n` readable bytes. 0 for null.
TAMRIX_FUNCTION int TAMRIX_CALL dbcs_trunc(const char* s, int n, int checkLength);

/// Upper-cases in place: the single bytes a to z, and double-byte letters by the code page's pairs. Returns `s`, or
/// null when `s` is null or the platform cannot map a double-byte character (`s` is then changed up to that one).
TAMRIX_FUNCTION char* TAMRIX_CALL dbcs_strupr(char* s);

/// Lower-cases in place, as dbcs_strupr.
TAMRIX_FUNCTION char* TAMRIX_CALL dbcs_strlwr(char* s);

/// 1 when `b` is a lead byte of the active ANSI code page, else 0.
TAMRIX_FUNCTION int TAMRIX_CALL isdbchar(char b);

/// Copies `src` into a buffer of `size` bytes, always terminated, never splitting a character. Returns the bytes copied
/// without the terminator; 0 with nothing written when `dst` is null or `size` is below 1; a null `src` is empty.
TAMRIX_FUNCTION int TAMRIX_CALL BufStrCpy(char* dst, const char* src, int size);

#endif
