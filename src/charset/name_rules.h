// What name translation does with each byte, worked out once from the settings: the set of bytes to quote, the
// brackets, the lead bytes and the character table.
#pragma once

#include <cstdint>

#include "charset/character_table.h"
#include "strings/lead_bytes.h"

namespace tamrix {

/// The bytes of an AFP name that are written as a bracketed number, and the brackets.
struct QuoteSettings {
    unsigned char* chars;
    std::int32_t count;  // 0 or less: nothing is quoted
    unsigned char open;
    unsigned char close;
};

enum class ByteRole : std::uint8_t { plain, quoted, lead, end };

struct NameRules {
    ByteRole macRole[256];          // of a byte of an AFP name
    ByteRole windowsRole[256];      // of a byte of a Windows name: `quoted` marks the opening bracket
    std::uint8_t windowsByte[256];  // a plain AFP byte as Windows writes it
    std::uint8_t macByte[256];      // a plain Windows byte as AFP writes it; the backslash becomes zero
    bool inSet[256];                // quoted in the main pass but for letters, digits and the space, which never are
    bool decodes[256];              // a bracketed number that stands for its byte: the set, the space, the period
    unsigned char open;
    unsigned char close;
};

NameRules makeNameRules(const QuoteSettings& quotes, const LeadByteTable& leadBytes, const CharacterTable* table);

}  // namespace tamrix
