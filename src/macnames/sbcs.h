// Conversion of whole strings by one column of a character table. Without a table, bytes are not converted.
#pragma once

#include <cstddef>

#include "macnames/character_table.h"

namespace tamrix {

using TableColumn = std::uint8_t CharacterPair::*;

void translateString(const CharacterTable* table, TableColumn column, char* s);

/// Converts while copying; the terminator is copied too.
void copyTranslated(const CharacterTable* table, TableColumn column, char* dst, const char* src);

/// Writes exactly `size` bytes: as much of the converted source as fits, then zeros.
void copyTranslated(const CharacterTable* table, TableColumn column, char* dst, const char* src, std::size_t size);

}  // namespace tamrix
