#include "macnames/name_settings.h"

#include <windows.h>

#include <algorithm>
#include <iterator>

#include "base/settings_key.h"
#include "strings/lead_bytes.h"
#include "tamrix32/registry.h"

namespace tamrix {

SbcsTranslator sbcsTranslator;
NameRules nameRules{};

namespace {

/// Whether the value is a string whose first two bytes can be the brackets. Any other value counts as not configured.
bool hasBrackets(RegValue& value) {
    return value.Type() == RegValString && value.String() && value.DataLen() >= 2 && value.String()[0] &&
           value.String()[1];
}

void readQuoteSettings(RegKey& key, QuoteSettings& quotes) {
    RegValue value;
    // A value of a type that stores no data has a length but no buffer.
    if (key.ValueByName("QuoteChars", &value) && value.Buffer()) {
        std::fill(std::begin(quotes.inSet), std::end(quotes.inSet), false);
        for (unsigned long i = 0; i < value.DataLen(); ++i) quotes.inSet[value.Buffer()[i]] = true;
    }
    if (key.ValueByName("QuoteBracketChars", &value) && hasBrackets(value)) {
        quotes.open = value.Buffer()[0];
        quotes.close = value.Buffer()[1];
    }
}

}  // namespace

void loadNameSettings() {
    const bool hasLeadBytes = leadByteTable.hasLeadBytes;
    sbcsTranslator = chooseTranslator(static_cast<std::uint16_t>(GetOEMCP()), hasLeadBytes);
    QuoteSettings quotes = defaultQuotes(hasLeadBytes);
    RegKey key;
    if (key.Open(HKEY_LOCAL_MACHINE, kSettingsPath)) readQuoteSettings(key, quotes);
    nameRules = makeNameRules(quotes, leadByteTable, sbcsTranslator.table);
}

}  // namespace tamrix
