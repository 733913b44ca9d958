// The configured dialog font. Written while the library is being loaded, only read afterwards.
#pragma once

#include <cstdint>

namespace tamrix {

struct DialogFontSettings {
    bool isConfigured;
    char faceName[129];       // in the ANSI code page; registry values are read up to 128 bytes
    std::uint32_t pointSize;  // dialog templates use its low 16 bits

    /// The name, or null if no font is configured.
    const char* face() const { return isConfigured ? faceName : nullptr; }
};

extern DialogFontSettings dialogFontSettings;

/// Reads face and size from the registry. No font is configured unless both exist.
void loadDialogFontSettings();

}  // namespace tamrix
