// What name translation does with each byte, worked out once from the settings: the set of bytes to quote, the
// brackets, the lead bytes and the character table.
#pragma once

#include <cstdint>

#include "macnames/character_table.h"
#include "strings/lead_bytes.h"

namespace tamrix {

/// The bytes of an AFP name that are written as a bracketed number, and the brackets, which are never zero.
struct QuoteSettings {
    bool inSet[256];
    unsigned char open;
    unsigned char close;
};

/// What applies while nothing is configured, by whether the ANSI code page has lead bytes.
QuoteSettings defaultQuotes(bool hasLeadBytes);

enum class ByteRole : std::uint8_t {
    plain,   // translated
    quoted,  // in an AFP name: written as a number; in a Windows name: the opening bracket, which may begin one
    lead,    // begins a double-byte character, which is copied
    end,     // the terminator
};

/// A byte's role and its image on the other side, in one number, so that translation loads both at once and tells a
/// plain byte by one comparison.
class ByteRule {
public:
    constexpr ByteRule() = default;
    constexpr ByteRule(ByteRole role, std::uint8_t image) : bits(static_cast<std::uint16_t>(int(role) << 8 | image)) {}
    bool isPlain() const { return bits <= 0xFF; }
    ByteRole role() const { return static_cast<ByteRole>(bits >> 8); }
    /// Also that of a quoted byte, for a bracket that begins no quote.
    std::uint8_t image() const { return static_cast<std::uint8_t>(bits); }

private:
    std::uint16_t bits = 0;
};

/// Bytes of a number in its brackets.
inline constexpr std::uint8_t kQuoteSize = 5;

struct NameRules {
    ByteRule mac[256];       // for the bytes of an AFP name
    ByteRule windows[256];   // for the bytes of a Windows name; the image of the backslash is zero
    bool inSet[256];         // the quote set, letters, digits and the space included, which are never quoted in passing
    std::uint8_t most[256];  // bytes that a single byte of an AFP name may come to; 0 for lead bytes and the terminator
    bool decodes[256];       // a bracketed number stands for its byte: the set, the space, the period
    unsigned char open;
    unsigned char close;
};

NameRules makeNameRules(const QuoteSettings& quotes, const LeadByteTable& leadBytes, const CharacterTable* table);

}  // namespace tamrix
