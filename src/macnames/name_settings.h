// What names are translated by in this process: the choice of the character table, and the rules for each byte with the
// configured quote set and brackets. Written while the library is being loaded, only read afterwards.
#pragma once

#include "macnames/character_table.h"
#include "macnames/name_rules.h"

namespace tamrix {

extern SbcsTranslator sbcsTranslator;
extern NameRules nameRules;

/// Takes both from the platform's code pages and the registry; the lead-byte table must be built.
void loadNameSettings();

}  // namespace tamrix
