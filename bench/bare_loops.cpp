#include "bare_loops.h"

#include <cctype>
#include <cstring>
#include <memory>
#include <new>

namespace bare {
namespace {

unsigned char byteAt(const char* s) {
    return static_cast<unsigned char>(*s);
}

/// The number in the quote at `name`; 256 if there is none that decodes.
unsigned quoteAt(const Tables& tables, const char* name) {
    const auto digit = [name](int i) { return static_cast<unsigned>(name[i] - '0'); };
    if (*name != '[' || digit(1) > 9 || digit(2) > 9 || digit(3) > 9 || name[4] != ']') return 256;
    const unsigned value = digit(1) * 100 + digit(2) * 10 + digit(3);
    return value <= 255 && tables.decodes[value] ? value : 256;
}

}  // namespace

int toWindows(const Tables& tables, char* dst, const char* name) {
    char* out = dst;
    while (const unsigned char byte = static_cast<unsigned char>(*name++)) {
        if (tables.quoted[byte]) {
            out[0] = '[';
            out[1] = static_cast<char>('0' + byte / 100);
            out[2] = static_cast<char>('0' + byte % 100 / 10);
            out[3] = static_cast<char>('0' + byte % 10);
            out[4] = ']';
            out += 5;
        } else {
            *out++ = static_cast<char>(tables.toWindows[byte]);
        }
    }
    *out = 0;
    return static_cast<int>(out - dst) + 1;
}

int toMac(const Tables& tables, char* dst, const char* name) {
    const auto digit = [&name](int i) { return static_cast<unsigned>(name[i] - '0'); };
    char* out = dst;
    while (const unsigned char byte = static_cast<unsigned char>(*name)) {
        if (byte == '[' && digit(1) <= 9 && digit(2) <= 9 && digit(3) <= 9 && name[4] == ']') {
            const unsigned value = digit(1) * 100 + digit(2) * 10 + digit(3);
            if (value <= 255 && tables.decodes[value]) {
                *out++ = static_cast<char>(value);
                name += 5;
                continue;
            }
        }
        *out++ = static_cast<char>(tables.toMac[byte]);
        ++name;
    }
    *out = 0;
    return static_cast<int>(out - dst) + 1;
}

int length(const char* s) {
    return static_cast<int>(std::strlen(s));
}

int compareByTolower(const char* a, const char* b) {
    for (;; ++a, ++b) {
        const int difference =
            std::tolower(static_cast<unsigned char>(*a)) - std::tolower(static_cast<unsigned char>(*b));
        if (difference != 0 || *a == 0) return difference;
    }
}

int windowsLength(const Tables& tables, const char* name) {
    int length = 1;
    for (; *name; ++name) length += tables.quoted[byteAt(name)] ? 5 : 1;
    return length;
}

int macLength(const Tables& tables, const char* name) {
    int length = 1;
    for (; *name; ++length) name += quoteAt(tables, name) < 256 ? 5 : 1;
    return length;
}

int inPlace(int (*loop)(const Tables&, char*, const char*), const Tables& tables, char* name, unsigned size) {
    const std::unique_ptr<char[]> block(new (std::nothrow) char[size]);
    const int length = loop(tables, block.get(), name);
    std::memcpy(name, block.get(), static_cast<std::size_t>(length));
    return length;
}

int translate(const unsigned char* table, char* s) {
    char* p = s;
    for (; *p; ++p) *p = static_cast<char>(table[byteAt(p)]);
    return static_cast<int>(p - s);
}

int copy(const unsigned char* table, char* dst, const char* src) {
    const char* p = src;
    for (; *p; ++p) *dst++ = static_cast<char>(table[byteAt(p)]);
    *dst = 0;
    return static_cast<int>(p - src);
}

int copyFilled(const unsigned char* table, char* dst, const char* src, int size) {
    int count = 0;
    for (; count < size && src[count]; ++count) dst[count] = static_cast<char>(table[byteAt(src + count)]);
    std::memset(dst + count, 0, static_cast<std::size_t>(size - count));
    return count;
}

char* upper(char* s) {
    for (char* p = s; *p; ++p) *p = static_cast<char>(std::toupper(byteAt(p)));
    return s;
}

char* lower(char* s) {
    for (char* p = s; *p; ++p) *p = static_cast<char>(std::tolower(byteAt(p)));
    return s;
}

int copyUpTo(char* dst, const char* src, int size) {
    const void* const end = memccpy(dst, src, 0, static_cast<std::size_t>(size));
    if (!end) dst[size - 1] = 0;
    return end ? static_cast<int>(static_cast<const char*>(end) - dst) - 1 : size - 1;
}

char* previous(const char* current, const char*) {
    return const_cast<char*>(current - 1);
}

int truncated(const char* s, int n, int) {
    return static_cast<int>(strnlen(s, static_cast<std::size_t>(n)));
}

int isLetter(char byte) {
    return std::isalpha(static_cast<unsigned char>(byte));
}

}  // namespace bare
