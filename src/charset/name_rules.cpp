#include "charset/name_rules.h"

namespace tamrix {
namespace {

bool isNeverQuoted(int byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') || byte == ' ';
}

}  // namespace

NameRules makeNameRules(const QuoteSettings& quotes, const LeadByteTable& leadBytes, const CharacterTable* table) {
    NameRules rules{};
    rules.open = quotes.open;
    rules.close = quotes.close;
    for (std::int32_t i = 0; i < quotes.count; ++i) rules.inSet[quotes.chars[i]] = true;
    for (int byte = 0; byte < 256; ++byte) {
        const auto same = static_cast<std::uint8_t>(byte);
        rules.decodes[byte] = rules.inSet[byte] || byte == ' ' || byte == '.';
        rules.mac[byte].image = table ? (*table)[byte].toWindows : same;
        rules.windows[byte].image = byte == '\\' ? std::uint8_t{0} : table ? (*table)[byte].toMacintosh : same;
        if (rules.inSet[byte] && !isNeverQuoted(byte)) rules.mac[byte].role = ByteRole::quoted;
        if (byte == rules.open) rules.windows[byte].role = ByteRole::quoted;
        if (leadBytes.isLead[byte]) rules.mac[byte].role = rules.windows[byte].role = ByteRole::lead;
    }
    rules.mac[0].role = rules.windows[0].role = ByteRole::end;
    return rules;
}

}  // namespace tamrix
