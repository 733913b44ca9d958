// Implementations with which the library is compared. Name conversion here is only a table lookup and quoting: it
// checks no capacity and ignores double-byte characters and the special cases at the end of a name. The string
// functions ignore double-byte characters too. All are in their own source file, so that the compiler cannot inline
// them.
#pragma once

namespace bare {

struct Tables {
    unsigned char toWindows[256];
    unsigned char toMac[256];
    bool quoted[256];
    bool decodes[256];
};

int toWindows(const Tables& tables, char* dst, const char* name);
int toMac(const Tables& tables, char* dst, const char* name);

/// The number of bytes that the two functions write, including the terminator.
int windowsLength(const Tables& tables, const char* name);
int macLength(const Tables& tables, const char* name);

/// One of the two functions in place, through a temporary block of `size` bytes, because a name may grow.
int inPlace(int (*loop)(const Tables&, char*, const char*), const Tables& tables, char* name, unsigned size);

/// Conversion by a table only: in place, while copying, and while copying exactly `size` bytes as strncpy does. Each
/// returns the number of bytes converted.
int translate(const unsigned char* table, char* s);
int copy(const unsigned char* table, char* dst, const char* src);
int copyFilled(const unsigned char* table, char* dst, const char* src, int size);

/// Functions as in a C program that ignores double-byte characters.
int length(const char* s);
int compareByTolower(const char* a, const char* b);
char* upper(char* s);
char* lower(char* s);
int copyUpTo(char* dst, const char* src, int size);
char* previous(const char* current, const char* start);
int truncated(const char* s, int n, int checkLength);
int isLetter(char byte);

}  // namespace bare
