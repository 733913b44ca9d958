// The exported string functions. They handle null arguments, call C library functions for single-byte code pages (the
// fast path), and pass the process's lead-byte table for double-byte code pages.
#include "tamrix32/strings.h"

#include <array>
#include <cstring>

#include "strings/case_pairs.h"
#include "strings/scan.h"

using tamrix::leadByteTable;
using tamrix::scan::Case;

namespace {

bool isDoubleByte() {
    return leadByteTable.hasLeadBytes;
}

/// The lower case of each byte, for ASCII letters only. A table, because a branch on whether a byte is a letter would
/// often be mispredicted.
constexpr auto kAsciiLower = [] {
    std::array<unsigned char, 256> letters{};
    for (std::size_t byte = 0; byte < letters.size(); ++byte)
        letters[byte] = static_cast<unsigned char>(tamrix::scan::asciiInCase(static_cast<char>(byte), Case::lower));
    return letters;
}();

/// Not a call of the C library: standard C has no case-insensitive comparison, and the vendors' functions depend on the
/// program's locale.
int compareAsciiFolded(const char* a, const char* b) {
    for (;; ++a, ++b) {
        const int left = kAsciiLower[static_cast<unsigned char>(*a)];
        const int difference = left - kAsciiLower[static_cast<unsigned char>(*b)];
        if (difference != 0 || left == 0) return difference;
    }
}

/// Like memccpy, but always writes a terminator and allows `dst` to be `src`. Does not call memccpy, because some C
/// libraries have it only under another name.
int copyBoundedBytes(char* dst, const char* src, int size) {
    const auto maxBytes = static_cast<std::size_t>(size - 1);
    const void* const end = std::memchr(src, 0, maxBytes);
    const std::size_t bytes = end ? static_cast<std::size_t>(static_cast<const char*>(end) - src) : maxBytes;
    std::memmove(dst, src, bytes);
    dst[bytes] = 0;
    return static_cast<int>(bytes);
}

char* inCase(char* s, Case wanted) {
    if (!s) return nullptr;
    return tamrix::scan::changeCase(s, wanted, leadByteTable, tamrix::mapDoubleByteCase) ? s : nullptr;
}

}  // namespace

int TAMRIX_CALL dbcs_strcmp(const char* a, const char* b) {
    if (!a || !b) return -1;
    return isDoubleByte() ? tamrix::scan::compare(a, b, leadByteTable) : std::strcmp(a, b);
}

int TAMRIX_CALL dbcs_stricmp(const char* a, const char* b) {
    if (!a || !b) return -1;
    return isDoubleByte() ? tamrix::scan::compareFolded(a, b, leadByteTable, tamrix::mapDoubleByteCase)
                          : compareAsciiFolded(a, b);
}

int TAMRIX_CALL dbcs_strlen(const char* s) {
    if (!s) return 0;
    return static_cast<int>(std::strlen(s));
}

char* TAMRIX_CALL dbcs_strcpy(char* dst, const char* src) {
    if (!dst || !src) return dst;
    return std::strcpy(dst, src);
}

char* TAMRIX_CALL dbcs_strcat(char* dst, const char* src) {
    if (!dst || !src) return dst;
    return std::strcat(dst, src);
}

char* TAMRIX_CALL dbcs_strncpy(char* dst, const char* src, int n) {
    if (!dst || !src || n <= 0) return dst;
    return isDoubleByte() ? tamrix::scan::copyPadded(dst, src, n, leadByteTable)
                          : std::strncpy(dst, src, static_cast<std::size_t>(n));
}

char* TAMRIX_CALL dbcs_strchr(const char* s, int c) {
    if (!s) return nullptr;
    return const_cast<char*>(isDoubleByte() ? tamrix::scan::findFirst(s, c, leadByteTable) : std::strchr(s, c));
}

char* TAMRIX_CALL dbcs_strrchr(const char* s, int c) {
    if (!s) return nullptr;
    return const_cast<char*>(isDoubleByte() ? tamrix::scan::findLast(s, c, leadByteTable) : std::strrchr(s, c));
}

char* TAMRIX_CALL dbcs_prevchar(const char* current, const char* start) {
    if (!current || !start || current == start) return nullptr;
    return const_cast<char*>(isDoubleByte() ? tamrix::scan::previous(current, start, leadByteTable) : current - 1);
}

int TAMRIX_CALL dbcs_trunc(const char* s, int n, int checkLength) {
    if (!s) return 0;
    if (checkLength != 0) {
        const int length = dbcs_strlen(s);
        if (n >= length) return length;
    }
    return isDoubleByte() && n > 0 ? tamrix::scan::truncated(s, n, leadByteTable) : n;
}

char* TAMRIX_CALL dbcs_strupr(char* s) {
    return inCase(s, Case::upper);
}

char* TAMRIX_CALL dbcs_strlwr(char* s) {
    return inCase(s, Case::lower);
}

int TAMRIX_CALL isdbchar(char b) {
    return leadByteTable.leads(b) ? 1 : 0;
}

int TAMRIX_CALL BufStrCpy(char* dst, const char* src, int size) {
    if (!dst || size <= 0) return 0;
    if (!src) {
        *dst = 0;
        return 0;
    }
    return isDoubleByte() ? tamrix::scan::copyBounded(dst, src, size, leadByteTable) : copyBoundedBytes(dst, src, size);
}
