// The process-wide settings of names and dialogs. They are written while the library is being loaded and attached,
// under the loader's lock, and only read afterwards.
#pragma once

#include <windows.h>

#include <cstdint>

#include "charset/character_table.h"
#include "charset/name_rules.h"

namespace tamrix {

/// The font in which dialogs are shown; nothing is configured while `faceName` is null.
struct DialogFontSettings {
    char* faceName;           // owned, in the ANSI code page
    std::uint32_t pointSize;  // dialog templates take its low 16 bits; 0 when none is configured
};

extern HINSTANCE instance;  // the library's own module
extern SbcsTranslator sbcsTranslator;
extern QuoteSettings quoteSettings;
extern DialogFontSettings dialogFontSettings;
extern NameRules nameRules;  // derived from the three above and the lead bytes

/// The quote set that applies while none is configured, by whether the ANSI code page has lead bytes.
struct DefaultQuotes {
    const unsigned char* chars;
    std::int32_t count;
};
DefaultQuotes defaultQuotes(bool hasLeadBytes);

/// The key below HKEY_LOCAL_MACHINE that holds the settings.
inline constexpr char kSettingsPath[] = "software\\Quillon Systems, Inc.\\File Client";

void loadQuoteSettings();
void loadDialogFontSettings();
void freeQuoteSettings();

}  // namespace tamrix
