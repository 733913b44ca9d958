// The selected character table and the name rules of this process, with the configured quote set and brackets. They are
// written while the library is being loaded and only read afterwards.
#pragma once

#include "macnames/character_table.h"
#include "macnames/name_rules.h"

namespace tamrix {

extern SbcsTranslator sbcsTranslator;
extern NameRules nameRules;

/// Initializes both from the platform's code pages and the registry. The lead-byte table must have been built.
void loadNameSettings();

}  // namespace tamrix
