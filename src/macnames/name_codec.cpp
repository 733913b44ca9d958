#include "macnames/name_codec.h"

#include <cstddef>

namespace tamrix {
namespace {

using Byte = unsigned char;

const Byte* bytesOf(const char* text) {
    return reinterpret_cast<const Byte*>(text);
}

int cutAt(char* end) {
    *end = 0;
    return kDoesNotFit;
}

int finishAt(char* dst, std::size_t count) {
    dst[count] = 0;
    return static_cast<int>(count + 1);
}

bool endsName(ByteRole role, const Byte* in) {
    return role == ByteRole::end || (role == ByteRole::lead && in[1] == 0);
}

/// Converts plain bytes up to the first other byte or until `room` bytes are written; returns their number. Most bytes
/// of a name are handled here, so the remaining room is checked once for several bytes.
std::size_t translateRun(const ByteRule (&rules)[256], char* dst, const Byte* in, std::size_t room) {
    const auto translated = [&rules, dst, in](std::size_t at) {
        const ByteRule rule = rules[in[at]];
        if (!rule.isPlain()) return false;
        dst[at] = static_cast<char>(rule.image());
        return true;
    };
    std::size_t count = 0;
    for (; room - count >= 4; count += 4) {
        if (!translated(count)) return count;
        if (!translated(count + 1)) return count + 1;
        if (!translated(count + 2)) return count + 2;
        if (!translated(count + 3)) return count + 3;
    }
    while (count != room && translated(count)) ++count;
    return count;
}

void copyCharacter(char* dst, const Byte* in) {
    dst[0] = static_cast<char>(in[0]);
    dst[1] = static_cast<char>(in[1]);
}

void writeQuote(char* dst, const NameRules& rules, unsigned byte) {
    dst[0] = static_cast<char>(rules.open);
    dst[1] = static_cast<char>('0' + byte / 100);
    dst[2] = static_cast<char>('0' + byte % 100 / 10);
    dst[3] = static_cast<char>('0' + byte % 10);
    dst[4] = static_cast<char>(rules.close);
}

/// Whether the last byte of the name that ends at `end` is a space or period, which Windows would drop, and has not
/// been quoted yet. `lastQuoted` is the last byte that was quoted, or null; `count` is the number of bytes written so
/// far. A period after a byte with a lead byte's value does not count, even if that byte is a trail byte.
bool endsInDroppedByte(const NameRules& rules, const Byte* end, std::size_t count, const Byte* lastQuoted) {
    // This test comes first: a name of one quoted period has a `count` of 5, but no end[-2].
    if (count == 0 || end - 1 == lastQuoted) return false;
    if (end[-1] == ' ') return true;
    if (end[-1] != '.') return false;
    return count <= 2 || rules.mac[end[-2]].role() != ByteRole::lead;
}

/// The byte encoded by the quote that begins with the opening bracket at `in`. -1 if no quote begins there, or if its
/// byte is not one that is decoded.
int quotedByte(const NameRules& rules, const Byte* in) {
    const auto digit = [in](int i) { return static_cast<unsigned>(in[i]) - '0'; };
    if (digit(1) > 9 || digit(2) > 9 || digit(3) > 9 || in[4] != rules.close) return -1;
    const unsigned value = digit(1) * 100 + digit(2) * 10 + digit(3);
    return value <= 255 && rules.decodes[value] ? static_cast<int>(value) : -1;
}

}  // namespace

int macToWindows(const NameRules& rules, char* dst, const char* afpName, unsigned size) {
    if (size == 0) return kDoesNotFit;
    const Byte* in = bytesOf(afpName);
    const Byte* lastQuoted = nullptr;
    std::size_t count = 0;
    for (;;) {
        const std::size_t run = translateRun(rules.mac, dst + count, in, size - count);
        in += run;
        count += run;
        if (count == size) return cutAt(dst + size - 1);
        const ByteRole role = rules.mac[*in].role();
        if (endsName(role, in)) break;
        const std::size_t needed = role == ByteRole::lead ? 2 : kQuoteSize;
        if (size - count < needed) return cutAt(dst + count);
        if (role == ByteRole::lead) {
            copyCharacter(dst + count, in);
            in += 2;
        } else {
            writeQuote(dst + count, rules, *in);
            lastQuoted = in++;
        }
        count += needed;
    }
    if (endsInDroppedByte(rules, in, count, lastQuoted)) {
        if (size - count < kQuoteSize) return cutAt(dst + count - 1);
        writeQuote(dst + count - 1, rules, in[-1]);
        count += kQuoteSize - 1;
    }
    return finishAt(dst, count);
}

int macToWindowsCapacity(const NameRules& rules, const char* afpName) {
    const Byte* in = bytesOf(afpName);
    const Byte* singles = in;  // start of the single bytes before `in`
    std::size_t count = 0;
    for (;;) {
        for (std::size_t size = rules.maxSize[*in]; size != 0; size = rules.maxSize[*++in]) count += size;
        if (endsName(rules.mac[*in].role(), in)) break;
        count += 2;
        singles = in += 2;
    }
    const bool isLastQuoted = in != singles && rules.mac[in[-1]].role() == ByteRole::quoted;
    if (endsInDroppedByte(rules, in, count, isLastQuoted ? in - 1 : nullptr)) count += kQuoteSize - 1;
    return static_cast<int>(count + 1);
}

int windowsToMac(const NameRules& rules, char* dst, const char* windowsName, unsigned size) {
    if (size == 0) return 0;
    const Byte* in = bytesOf(windowsName);
    std::size_t count = 0;
    for (;;) {
        const std::size_t run = translateRun(rules.windows, dst + count, in, size - count);
        in += run;
        count += run;
        if (count == size) return cutAt(dst + size - 1);
        const ByteRule rule = rules.windows[*in];
        if (rule.role() == ByteRole::quoted) {
            const int byte = quotedByte(rules, in);
            dst[count++] = static_cast<char>(byte < 0 ? rule.image() : byte);
            in += byte < 0 ? 1 : kQuoteSize;
            continue;
        }
        if (endsName(rule.role(), in)) return finishAt(dst, count);
        // There must be room for both bytes and the terminator, so that no character is split.
        if (size - count < 3) return cutAt(dst + count);
        copyCharacter(dst + count, in);
        in += 2;
        count += 2;
    }
}

int windowsToMacCapacity(const NameRules& rules, const char* windowsName) {
    const Byte* in = bytesOf(windowsName);
    std::size_t count = 0;
    for (;;) {
        for (; rules.windows[*in].isPlain(); ++in) ++count;
        const ByteRole role = rules.windows[*in].role();
        if (endsName(role, in)) return static_cast<int>(count + 1);
        const bool leads = role == ByteRole::lead;
        count += leads ? 2 : 1;
        in += leads ? 2 : quotedByte(rules, in) < 0 ? 1 : kQuoteSize;
    }
}

}  // namespace tamrix
