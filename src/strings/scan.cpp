#include "strings/scan.h"

#include <cstddef>
#include <cstring>

namespace tamrix::scan {
namespace {

int lowerValue(const char* p, int size, CaseMapping mapping) {
    if (size != 2) return characterValue(p, size) == 0 ? 0 : static_cast<unsigned char>(asciiInCase(*p, Case::lower));
    char character[2] = {p[0], p[1]};
    mapping(character, Case::lower);
    return characterValue(character, 2);
}

}  // namespace

int length(const char* s, const LeadByteTable& table) {
    if (!table.hasLeadBytes) return static_cast<int>(std::strlen(s));
    const char* p = s;
    while (const int size = characterSize(p, table)) p += size;
    return static_cast<int>(p - s);
}

int compare(const char* a, const char* b, const LeadByteTable& table) {
    for (;;) {
        const int sizeA = characterSize(a, table);
        const int sizeB = characterSize(b, table);
        const int difference = characterValue(a, sizeA) - characterValue(b, sizeB);
        if (difference != 0 || sizeA == 0) return difference;
        a += sizeA;
        b += sizeB;
    }
}

int compareFolded(const char* a, const char* b, const LeadByteTable& table, CaseMapping mapping) {
    for (;;) {
        const int sizeA = characterSize(a, table);
        const int sizeB = characterSize(b, table);
        if (characterValue(a, sizeA) != characterValue(b, sizeB)) {
            const int difference = lowerValue(a, sizeA, mapping) - lowerValue(b, sizeB, mapping);
            if (difference != 0) return difference;
        }
        if (sizeA == 0) return 0;
        a += sizeA;
        b += sizeB;
    }
}

char* copy(char* dst, const char* src, const LeadByteTable& table) {
    const auto bytes = static_cast<std::size_t>(length(src, table));
    std::memcpy(dst, src, bytes);
    dst[bytes] = 0;
    return dst;
}

char* append(char* dst, const char* src, const LeadByteTable& table) {
    copy(dst + length(dst, table), src, table);
    return dst;
}

char* copyPadded(char* dst, const char* src, int n, const LeadByteTable& table) {
    char* p = dst;
    const char* const end = dst + n;
    for (int size; (size = characterSize(src, table)) != 0 && size <= end - p; p += size, src += size) {
        p[0] = src[0];
        if (size == 2) p[1] = src[1];
    }
    std::memset(p, 0, static_cast<std::size_t>(end - p));
    return dst;
}

int copyBounded(char* dst, const char* src, int size, const LeadByteTable& table) {
    char* p = dst;
    const char* const end = dst + size - 1;
    for (int step; p < end && (step = characterSize(src, table)) != 0 && step <= end - p; p += step, src += step) {
        p[0] = src[0];
        if (step == 2) p[1] = src[1];
    }
    *p = 0;
    return static_cast<int>(p - dst);
}

const char* findFirst(const char* s, int c, const LeadByteTable& table) {
    for (int size; (size = characterSize(s, table)) != 0; s += size)
        if (static_cast<signed char>(*s) == c) return s;
    return nullptr;
}

const char* findLast(const char* s, int c, const LeadByteTable& table) {
    const char* found = nullptr;
    for (int size; (size = characterSize(s, table)) != 0; s += size)
        if (size == 1 && static_cast<signed char>(*s) == c) found = s;
    return found;
}

const char* previous(const char* current, const char* start, const LeadByteTable& table) {
    // A byte that leads nothing ends a character, so one begins right behind it.
    if (current - start >= 2 && !table.leads(current[-2])) return current - 1;
    const char* const target = current - 1;
    const char* p = start;
    while (p < target) {
        const bool leads = table.leads(*p);
        if (leads && p >= target - 1) break;
        p += leads ? 2 : 1;
    }
    return p;
}

int truncated(const char* s, int n, const LeadByteTable& table) {
    const char* const last = previous(s + n, s, table);
    return last == s + n - 1 && table.leads(*last) ? n - 1 : n;
}

bool changeCase(char* s, Case wanted, const LeadByteTable& table, CaseMapping mapping) {
    for (int size; (size = characterSize(s, table)) != 0; s += size) {
        if (size == 1)
            *s = asciiInCase(*s, wanted);
        else if (!mapping(s, wanted))
            return false;
    }
    return true;
}

}  // namespace tamrix::scan
