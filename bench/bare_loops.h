// The least that translating names can cost: a table look-up and quoting a byte, into a buffer that is large enough. No
// capacities, no double-byte characters, no trailing characters. In a file of its own, so that nothing of it is elided.
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

/// As a program in C alone compares without regard to case.
int compareByTolower(const char* a, const char* b);

}  // namespace bare
