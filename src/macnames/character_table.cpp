#include "macnames/character_table.h"

namespace tamrix {

SbcsTranslator chooseTranslator(std::uint16_t oemCodePage, bool ansiHasLeadBytes) {
    const bool western = oemCodePage == 437 || oemCodePage == 850;
    return {oemCodePage, western && !ansiHasLeadBytes ? &kCharacterTable : nullptr};
}

}  // namespace tamrix
