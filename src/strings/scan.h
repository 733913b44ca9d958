// The double-byte versions of the dbcs_ functions, with the lead-byte table as an argument. They process strings
// character by character and stop at the terminator. A lone lead byte before the terminator ends the string too, except
// in comparisons, where it is the last character. Arguments must not be null. tamrix32/strings.h documents the results
// at the exported functions.
#pragma once

#include <cstdint>

#include "strings/lead_bytes.h"

namespace tamrix::scan {

/// Size of the character at `p` in bytes; 0 at the end of the string.
inline int characterSize(const char* p, const LeadByteTable& table) {
    if (!table.leads(*p)) return *p != 0;
    return p[1] ? 2 : 0;
}

enum class Case : std::uint8_t { upper, lower };

/// Converts a double-byte character to the wanted case in place; false if the platform cannot map it.
using CaseMapping = bool (*)(char* character, Case wanted);

constexpr char asciiInCase(char byte, Case wanted) {
    const char first = wanted == Case::upper ? 'a' : 'A';
    return byte >= first && byte <= first + 25 ? static_cast<char>(byte ^ 0x20) : byte;
}

int compare(const char* a, const char* b, const LeadByteTable& table);
int compareFolded(const char* a, const char* b, const LeadByteTable& table, CaseMapping mapping);
char* copyPadded(char* dst, const char* src, int n, const LeadByteTable& table);
int copyBounded(char* dst, const char* src, int size, const LeadByteTable& table);
const char* findFirst(const char* s, int c, const LeadByteTable& table);
const char* findLast(const char* s, int c, const LeadByteTable& table);
const char* previous(const char* current, const char* start, const LeadByteTable& table);
int truncated(const char* s, int n, const LeadByteTable& table);
bool changeCase(char* s, Case wanted, const LeadByteTable& table, CaseMapping mapping);

}  // namespace tamrix::scan
