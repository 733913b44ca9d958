#include "client/library_names.h"

#include "tamrix32/macnames.h"
#include "tamrix32/strings.h"

namespace tamrix::client {
namespace {

constexpr std::size_t kQuoteSize = 5;

void askAbout(int value, ByteRules& rules) {
    const auto byte = static_cast<unsigned char>(value);
    rules.decodes[byte] = OStoAFPLen(bracketed(rules, value).c_str()) == 2;
    rules.isLead[byte] = isdbchar(static_cast<char>(byte)) != 0;
    if (rules.isLead[byte] || value == 0) return;
    // The letter after the byte keeps the rules for a final character from applying.
    const std::string inside = windowsNameOf({static_cast<char>(byte), 'a'});
    rules.isQuoted[byte] = inside.size() == kQuoteSize + 1;
    rules.windows[byte] = static_cast<unsigned char>(inside[0]);
    char single[] = {static_cast<char>(byte), 0};
    SBCS_AtoI(single);
    if (single[0] != static_cast<char>(byte)) rules.tableIsOn = true;
}

}  // namespace

std::string windowsNameOf(const std::string& macName) {
    std::string name(static_cast<std::size_t>(AFPtoOSLen(macName.c_str())), '\0');
    const int size = AFPtoOSCopy(name.data(), macName.c_str(), static_cast<unsigned>(name.size()));
    name.resize(size > 0 ? static_cast<std::size_t>(size) - 1 : 0);
    return name;
}

std::string macNameOf(const std::string& windowsName) {
    std::string name(static_cast<std::size_t>(OStoAFPLen(windowsName.c_str())), '\0');
    const int size = OStoAFPCopy(name.data(), windowsName.c_str(), static_cast<unsigned>(name.size()));
    name.resize(size > 0 ? static_cast<std::size_t>(size) - 1 : 0);
    return name;
}

std::string bracketed(const ByteRules& rules, int value) {
    return {static_cast<char>(rules.open), static_cast<char>('0' + value / 100),
            static_cast<char>('0' + value / 10 % 10), static_cast<char>('0' + value % 10),
            static_cast<char>(rules.close)};
}

ByteRules askLibrary() {
    ByteRules rules;
    // A final space is quoted with any settings, so the result contains the brackets.
    const std::string space = windowsNameOf("a ");
    rules.open = static_cast<unsigned char>(space[1]);
    rules.close = static_cast<unsigned char>(space[kQuoteSize]);
    for (int value = 0; value < 256; ++value) askAbout(value, rules);
    return rules;
}

}  // namespace tamrix::client
