// The built-in table between the Macintosh and the Windows Western character sets. Most letters and symbols map to the
// character of the same look in code page 1252; positions that one side lacks are paired among themselves, so the table
// is no published mapping.
#pragma once

#include <cstdint>

namespace tamrix {

struct CharacterPair {
    std::uint8_t toWindows;    // the Windows byte for this Macintosh byte (AtoI)
    std::uint8_t toMacintosh;  // the Macintosh byte for this Windows byte (ItoA)
};

using CharacterTable = CharacterPair[256];

extern const CharacterTable kCharacterTable;

/// Which table the process uses, chosen once when the library is loaded.
struct SbcsTranslator {
    std::uint16_t oemCodePage;
    const CharacterTable* table;  // null: bytes pass unchanged
};

/// The table is on for a single-byte ANSI code page with the Western OEM code pages 437 and 850.
SbcsTranslator chooseTranslator(std::uint16_t oemCodePage, bool ansiHasLeadBytes);

}  // namespace tamrix
