// The rules for each byte in a name conversion, computed once from the quote set, the brackets, the lead bytes and the
// character table.
#pragma once

#include <cstdint>

#include "macnames/character_table.h"
#include "strings/lead_bytes.h"

namespace tamrix {

/// The bytes of an AFP name that are written as a bracketed number, and the brackets, which must not be zero.
struct QuoteSettings {
    bool inSet[256];
    unsigned char open;
    unsigned char close;
};

/// The settings if nothing is configured; they depend on whether the ANSI code page has lead bytes.
QuoteSettings defaultQuotes(bool hasLeadBytes);

enum class ByteRole : std::uint8_t {
    plain,   // converted by the table
    quoted,  // AFP name: written as a quote; Windows name: the opening bracket, which may begin a quote
    lead,    // begins a double-byte character, which is copied
    end,     // the terminator
};

/// A byte's role and its converted byte, stored in one number, so that the conversion loads both at once and recognises
/// a plain byte with one comparison.
class ByteRule {
public:
    constexpr ByteRule() = default;
    constexpr ByteRule(ByteRole role, std::uint8_t image) : bits_(static_cast<std::uint16_t>(int(role) << 8 | image)) {}
    bool isPlain() const { return bits_ <= 0xFF; }
    ByteRole role() const { return static_cast<ByteRole>(bits_ >> 8); }
    /// The converted byte, also of an opening bracket that does not begin a quote.
    std::uint8_t image() const { return static_cast<std::uint8_t>(bits_); }

private:
    std::uint16_t bits_ = 0;
};

/// Bytes of a quote.
inline constexpr std::uint8_t kQuoteSize = 5;

struct NameRules {
    ByteRule mac[256];          // rules for the bytes of an AFP name
    ByteRule windows[256];      // rules for the bytes of a Windows name; the backslash is converted to zero
    std::uint8_t maxSize[256];  // maximum size of a converted byte of an AFP name; 0 for lead bytes and the terminator
    bool decodes[256];          // whether a quote of this byte is decoded: the quote set, space, period
    unsigned char open;
    unsigned char close;
};

NameRules makeNameRules(const QuoteSettings& quotes, const LeadByteTable& leadBytes, const CharacterTable* table);

}  // namespace tamrix
