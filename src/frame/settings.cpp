#include "frame/settings.h"

#include <cstring>
#include <new>

#include "registry/copied_string.h"
#include "strings/lead_bytes.h"
#include "tamrix32/registry.h"

namespace tamrix {

HINSTANCE instance;
SbcsTranslator sbcsTranslator;
QuoteSettings quoteSettings;
DialogFontSettings dialogFontSettings;
NameRules nameRules{};

namespace {

/// Replaces the quote set by a copy; an allocation that fails leaves the empty set.
void setQuoteChars(const unsigned char* chars, std::int32_t count) {
    freeQuoteSettings();
    quoteSettings.chars = new (std::nothrow) unsigned char[static_cast<std::size_t>(count)];
    if (!quoteSettings.chars) return;
    std::memcpy(quoteSettings.chars, chars, static_cast<std::size_t>(count));
    quoteSettings.count = count;
}

/// Whether a string value holds two characters to take as brackets; anything else counts as absent.
bool holdsBrackets(RegValue& value) {
    return value.Type() == RegValString && value.String() && value.DataLen() >= 2 && value.String()[0] &&
           value.String()[1];
}

/// Bytes that can be read from a value's buffer. A number keeps the length that the registry gave, which whoever wrote
/// it chose freely, but four bytes of data.
std::int32_t storedBytes(RegValue& value) {
    const unsigned long length = value.DataLen();
    return static_cast<std::int32_t>(value.Type() == RegValDword && length > 4 ? 4 : length);
}

void readQuoteSettings(RegKey& key) {
    RegValue value;
    // A value of a type that carries no data has a length but no buffer.
    if (key.ValueByName("QuoteChars", &value) && value.Buffer()) setQuoteChars(value.Buffer(), storedBytes(value));
    if (key.ValueByName("QuoteBracketChars", &value) && holdsBrackets(value)) {
        quoteSettings.open = value.Buffer()[0];
        quoteSettings.close = value.Buffer()[1];
    }
}

}  // namespace

void freeQuoteSettings() {
    delete[] quoteSettings.chars;
    quoteSettings.chars = nullptr;
    quoteSettings.count = 0;
}

void loadQuoteSettings() {
    const DefaultQuotes standard = defaultQuotes(leadByteTable.hasLeadBytes != 0);
    setQuoteChars(standard.chars, standard.count);
    quoteSettings.open = '[';
    quoteSettings.close = ']';
    RegKey key;
    if (key.Open(HKEY_LOCAL_MACHINE, kSettingsPath)) readQuoteSettings(key);
    nameRules = makeNameRules(quoteSettings, leadByteTable, sbcsTranslator.table);
}

void loadDialogFontSettings() {
    RegKey key;
    RegValue face;
    RegValue size;
    if (!key.Open(HKEY_LOCAL_MACHINE, kSettingsPath)) return;
    if (!key.ValueByName("DialogFont", &face) || face.Type() != RegValString || !face.String()) return;
    if (!key.ValueByName("DialogFontSize", &size) || size.Type() != RegValDword) return;
    delete[] dialogFontSettings.faceName;
    dialogFontSettings.faceName = copiedString(face.String());
    dialogFontSettings.pointSize = static_cast<std::uint32_t>(size.Value());
}

}  // namespace tamrix
