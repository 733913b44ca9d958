// The font in which the installation wants dialogs shown. Written while the library is being loaded, only read
// afterwards.
#pragma once

#include <cstdint>

namespace tamrix {

struct DialogFontSettings {
    bool isConfigured;
    char faceName[129];       // in the ANSI code page; a registry value holds at most 128 bytes
    std::uint32_t pointSize;  // dialog templates take its low 16 bits

    /// Null when no font is configured.
    const char* face() const { return isConfigured ? faceName : nullptr; }
};

extern DialogFontSettings dialogFontSettings;

void configureDialogFont(const char* face, std::uint32_t points);

/// Takes face and size from the registry; none is configured unless it has both.
void loadDialogFontSettings();

}  // namespace tamrix
