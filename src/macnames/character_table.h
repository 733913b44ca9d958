// The built-in table between the Macintosh and the Windows Western character sets. Most letters and symbols map to the
// same character in code page 1252; characters that only one of the sets has are paired with each other. It is not a
// published mapping.
#pragma once

#include <cstdint>

namespace tamrix {

struct CharacterPair {
    std::uint8_t toWindows;    // the Windows byte for this Macintosh byte (AtoI)
    std::uint8_t toMacintosh;  // the Macintosh byte for this Windows byte (ItoA)
};

using CharacterTable = CharacterPair[256];

extern const CharacterTable kCharacterTable;

/// The table that the process uses, selected once when the library is loaded.
struct SbcsTranslator {
    std::uint16_t oemCodePage;
    const CharacterTable* table;  // null: bytes are not converted
};

/// Selects the table for a single-byte ANSI code page with OEM code page 437 or 850 (Western), otherwise none.
SbcsTranslator chooseTranslator(std::uint16_t oemCodePage, bool ansiHasLeadBytes);

}  // namespace tamrix
