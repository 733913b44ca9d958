#include "bare_loops.h"

#include <cctype>

namespace bare {

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

int compareByTolower(const char* a, const char* b) {
    for (;; ++a, ++b) {
        const int difference =
            std::tolower(static_cast<unsigned char>(*a)) - std::tolower(static_cast<unsigned char>(*b));
        if (difference != 0 || *a == 0) return difference;
    }
}

}  // namespace bare
