// Whole strings through one column of a character table; without a table bytes pass unchanged.
#pragma once

#include <cstddef>

#include "macnames/character_table.h"

namespace tamrix {

using TableColumn = std::uint8_t CharacterPair::*;

void translateString(const CharacterTable* table, TableColumn column, char* s);

/// Copies with the terminator.
void copyTranslated(const CharacterTable* table, TableColumn column, char* dst, const char* src);

/// Writes exactly `size` bytes: the translated source as far as it fits, then zeros.
void copyTranslated(const CharacterTable* table, TableColumn column, char* dst, const char* src, std::size_t size);

}  // namespace tamrix
