/// @file
/// String functions that never split a double-byte character.
///
/// A string is a zero-terminated byte string in the active ANSI code page. A double-byte character is a lead byte and
/// the byte after it, whatever that byte is. Lengths, sizes, counts and limits are in bytes; positions are byte
/// pointers. If the code page has no lead bytes, each function behaves like the C function of the same name without the
/// prefix, except that null arguments are allowed, with the results stated below. If a string ends in a lone lead byte,
/// the functions that work character by character (bounded copies, searches, case conversion, truncation) stop there;
/// dbcs_strlen, dbcs_strcpy and dbcs_strcat count and copy every byte; and comparisons treat that byte as the last
/// character. No function reads past the terminator. No function allocates memory; all are reentrant.
#ifndef TAMRIX32_STRINGS_H
#define TAMRIX32_STRINGS_H

#include "tamrix32/export.h"

/// Compares character by character: a double-byte character as lead * 256 + trail, a single byte as its unsigned value.
/// A lone lead byte counts as having the terminator for a trail byte, so different strings never compare as equal.
/// Returns <0, 0 or >0; -1 if either argument is null, even if both are.
TAMRIX_FUNCTION int TAMRIX_CALL dbcs_strcmp(const char* a, const char* b);

/// Like dbcs_strcmp, but ignores the case of ASCII letters. Under a double-byte code page it also ignores the case of
/// double-byte letters that have a counterpart in the code page (full-width Latin, Greek, Cyrillic, Roman numerals);
/// two codes of the same letter compare as equal. The case of other single bytes counts.
TAMRIX_FUNCTION int TAMRIX_CALL dbcs_stricmp(const char* a, const char* b);

/// Length in bytes, without the terminator; 0 for null.
TAMRIX_FUNCTION int TAMRIX_CALL dbcs_strlen(const char* s);

/// Copies `src` with its terminator and returns `dst`. Copies nothing if either is null.
TAMRIX_FUNCTION char* TAMRIX_CALL dbcs_strcpy(char* dst, const char* src);

/// Appends `src` to the string at `dst` and returns `dst`. Copies nothing if either is null.
TAMRIX_FUNCTION char* TAMRIX_CALL dbcs_strcat(char* dst, const char* src);

/// Copies at most `n` bytes (n >= 0), fills the rest of the `n` bytes with zeros and returns `dst`. Writes no
/// terminator if the source fills all `n` bytes. A double-byte character that does not fit completely is replaced by a
/// zero. Copies nothing if either pointer is null.
TAMRIX_FUNCTION char* TAMRIX_CALL dbcs_strncpy(char* dst, const char* src, int n);

/// Finds the first character whose first byte, as a signed char, equals `c`; trail bytes are not compared. Returns null
/// if there is none or `s` is null. Under a double-byte code page, pass bytes from 0x80 on as negative numbers; 0 does
/// not find the terminator.
TAMRIX_FUNCTION char* TAMRIX_CALL dbcs_strchr(const char* s, int c);

/// Finds the last single-byte character that, as a signed char, equals `c`; double-byte characters never match. Returns
/// null if there is none or `s` is null. `c` has the same range as for dbcs_strchr.
TAMRIX_FUNCTION char* TAMRIX_CALL dbcs_strrchr(const char* s, int c);

/// Returns the start of the character just before `current` in the string that begins at `start` (note the argument
/// order). Null if either is null or they are equal.
TAMRIX_FUNCTION char* TAMRIX_CALL dbcs_prevchar(const char* current, const char* start);

/// Returns the largest length, at most `n`, that ends on a character boundary of `s`. With a nonzero `checkLength`, `s`
/// may be shorter than `n` bytes, and then its length is returned; with 0, the caller guarantees that `n` bytes are
/// readable. 0 for null.
TAMRIX_FUNCTION int TAMRIX_CALL dbcs_trunc(const char* s, int n, int checkLength);

/// Converts to upper case in place: the single bytes a to z, and double-byte letters that have a counterpart in the
/// code page. Returns `s`, or null if `s` is null or the platform cannot map a double-byte character; the characters
/// before that one are then already converted.
TAMRIX_FUNCTION char* TAMRIX_CALL dbcs_strupr(char* s);

/// Converts to lower case in place; otherwise like dbcs_strupr.
TAMRIX_FUNCTION char* TAMRIX_CALL dbcs_strlwr(char* s);

/// 1 if `b` is a lead byte in the active ANSI code page, otherwise 0.
TAMRIX_FUNCTION int TAMRIX_CALL isdbchar(char b);

/// Copies `src` into a buffer of `size` bytes, truncated at a character boundary if necessary and always terminated.
/// Returns the number of bytes copied, without the terminator. Returns 0, with nothing written, if `dst` is null or
/// `size` is less than 1. A null `src` counts as empty.
TAMRIX_FUNCTION int TAMRIX_CALL BufStrCpy(char* dst, const char* src, int size);

#endif
