#include "strings/scan.h"

#include <cstring>

namespace tamrix::scan {
namespace {

/// The character at `p` as a number: the byte, or lead * 256 + trail. The trail byte is zero only after a lone lead
/// byte.
int valueAt(const char* p, const LeadByteTable& table) {
    const auto byte = [p](int i) { return static_cast<int>(static_cast<unsigned char>(p[i])); };
    return table.leads(*p) ? byte(0) * 256 + byte(1) : byte(0);
}

int sizeOf(int value) {
    return value > 0xFF ? 2 : 1;
}

/// Whether this is the end of the string: the terminator, or a lone lead byte before it.
bool endsString(int value) {
    return value % 256 == 0;
}

int lowerValue(int value, CaseMapping mapping) {
    if (sizeOf(value) == 1) return static_cast<unsigned char>(asciiInCase(static_cast<char>(value), Case::lower));
    if (endsString(value)) return value;
    char character[2] = {static_cast<char>(value >> 8), static_cast<char>(value)};
    mapping(character, Case::lower);
    return static_cast<unsigned char>(character[0]) * 256 + static_cast<unsigned char>(character[1]);
}

}  // namespace

int compare(const char* a, const char* b, const LeadByteTable& table) {
    for (;;) {
        const int left = valueAt(a, table), right = valueAt(b, table);
        if (left != right || endsString(left)) return left - right;
        a += sizeOf(left);
        b += sizeOf(left);
    }
}

int compareFolded(const char* a, const char* b, const LeadByteTable& table, CaseMapping mapping) {
    for (;;) {
        const int left = valueAt(a, table), right = valueAt(b, table);
        if (left != right) {
            const int difference = lowerValue(left, mapping) - lowerValue(right, mapping);
            if (difference != 0) return difference;
        }
        if (endsString(left)) return 0;
        a += sizeOf(left);
        b += sizeOf(left);
    }
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
    // A byte that is not a lead byte ends a character, so a character begins right after it.
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
