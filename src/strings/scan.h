// The double-byte scans of the dbcs_ functions, over an explicit lead-byte table. They read strings character by
// character and stop at the terminator; a lone lead byte before the terminator ends the string as the terminator does,
// but for the comparisons, to which it is the last character. Arguments are never null. What each one gives is said at
// its namesake in tamrix32/strings.h.
#pragma once

#include "strings/lead_bytes.h"

namespace tamrix::scan {

/// Bytes of the character at `p`, 0 at the string's end.
inline int characterSize(const char* p, const LeadByteTable& table) {
    if (!table.leads(*p)) return *p != 0;
    return p[1] ? 2 : 0;
}

enum class Case : std::uint8_t { upper, lower };

/// Changes the two bytes of a double-byte character to the wanted case in place; false when that can't be found out.
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
