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
        const bool lead = leadBytes.isLead[byte] != 0;
        const auto same = static_cast<std::uint8_t>(byte);
        rules.decodes[byte] = rules.inSet[byte] || byte == ' ' || byte == '.';
        rules.macRole[byte] = lead                                        ? ByteRole::lead
                              : rules.inSet[byte] && !isNeverQuoted(byte) ? ByteRole::quoted
                                                                          : ByteRole::plain;
        rules.windowsRole[byte] = lead ? ByteRole::lead : byte == rules.open ? ByteRole::quoted : ByteRole::plain;
        rules.windowsByte[byte] = table ? (*table)[byte].toWindows : same;
        rules.macByte[byte] = byte == '\\' ? std::uint8_t{0} : table ? (*table)[byte].toMacintosh : same;
    }
    rules.macRole[0] = ByteRole::end;
    rules.windowsRole[0] = ByteRole::end;
    return rules;
}

}  // namespace tamrix
