// The least that translating names can cost: a table look-up and quoting a byte, into a buffer that is large enough. No
// capacities, no double-byte characters, no trailing characters. Beside it, string functions of C alone. In a file of
// its own, so that nothing of it is elided.
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

/// The bytes that the two write, with the terminator.
int windowsLength(const Tables& tables, const char* name);
int macLength(const Tables& tables, const char* name);

/// One of the two by way of a block of `size` bytes, as a name that grows needs it.
int inPlace(int (*loop)(const Tables&, char*, const char*), const Tables& tables, char* name, unsigned size);

/// Bytes through a table alone: in place, copied, and copied as strncpy does. Each gives the bytes translated.
int translate(const unsigned char* table, char* s);
int copy(const unsigned char* table, char* dst, const char* src);
int copyFilled(const unsigned char* table, char* dst, const char* src, int size);

/// As a program in C alone does without regard to double-byte characters.
int length(const char* s);
int compareByTolower(const char* a, const char* b);
char* upper(char* s);
char* lower(char* s);
int copyUpTo(char* dst, const char* src, int size);
char* previous(const char* current, const char* start);
int truncated(const char* s, int n, int checkLength);
int isLetter(char byte);

}  // namespace bare
