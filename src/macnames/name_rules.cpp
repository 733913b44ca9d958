#include "macnames/name_rules.h"

namespace tamrix {
namespace {

bool isNeverQuoted(int byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') || byte == ' ';
}

ByteRole roleOf(int byte, bool lead, bool quoted) {
    if (byte == 0) return ByteRole::end;
    return lead ? ByteRole::lead : quoted ? ByteRole::quoted : ByteRole::plain;
}

}  // namespace

NameRules makeNameRules(const QuoteSettings& quotes, const LeadByteTable& leadBytes, const CharacterTable* table) {
    NameRules rules{};
    rules.open = quotes.open;
    rules.close = quotes.close;
    for (int byte = 0; byte < 256; ++byte) {
        const auto same = static_cast<std::uint8_t>(byte);
        rules.decodes[byte] = quotes.inSet[byte] || byte == ' ' || byte == '.';
        const bool lead = leadBytes.isLead[byte];
        const bool quoted = quotes.inSet[byte] && !isNeverQuoted(byte);
        if (byte != 0 && !lead) rules.maxSize[byte] = quotes.inSet[byte] ? kQuoteSize : std::uint8_t{1};
        rules.mac[byte] = {roleOf(byte, lead, quoted), table ? (*table)[byte].toWindows : same};
        rules.windows[byte] = {roleOf(byte, lead, byte == rules.open), byte == '\\' ? std::uint8_t{0}
                                                                       : table      ? (*table)[byte].toMacintosh
                                                                                    : same};
    }
    return rules;
}

}  // namespace tamrix
