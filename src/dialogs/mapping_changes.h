// What OK in the mapping editor does to the store: from the lines that were listed when it opened and the lines now,
// which lines are written and whose mappings are removed. What the user did not touch is neither.
#pragma once

#include <cstddef>
#include <span>

#include "dialogs/mapping_lines.h"

namespace tamrix {

/// A line of the list with the name of its mapping's key in one letter case. Two lines name the same key when these
/// names are equal.
struct KeyedLine {
    OwnedText line;
    OwnedText key;
};

/// Puts the name of a key into one letter case in place; false when the platform fails.
using NameFolding = bool (*)(char* name);

/// Takes a line over. Without a key when the line is missing, memory runs out or folding fails.
KeyedLine keyedLine(OwnedText line, NameFolding fold);

/// Whether lines[index] is to be written, in the order of the lines: it was added or changed, and no line below it
/// names its key. A line that is as it was listed means all that is stored, also a comment that could not be read.
bool isToBeWritten(std::span<const KeyedLine> lines, std::size_t index, std::span<const KeyedLine> listed);

/// Whether the mapping of a line that was listed is to be removed, after all lines are written: no line names its key
/// any more.
bool isToBeRemoved(const KeyedLine& wasListed, std::span<const KeyedLine> lines);

/// Folds a name by the active ANSI code page, as the registry compares names of keys.
bool foldKeyName(char* name);

}  // namespace tamrix
