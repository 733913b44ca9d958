// Determines which changes OK in the mapping editor makes to the store, by comparing the original lines with the
// current ones: which lines are written, and which mappings are removed. Mappings that the user did not change are
// neither written nor removed.
#pragma once

#include <cstddef>
#include <span>

#include "dialogs/mapping_lines.h"

namespace tamrix {

/// A line of the list with the case-folded name of its mapping's key. Two lines have the same key if these names are
/// equal.
struct KeyedLine {
    OwnedText line;
    OwnedText key;
};

/// Folds the case of a key name in place; false if the platform fails.
using NameFolding = bool (*)(char* name);

/// Takes ownership of a line. The key is null if the line is null, memory runs out or folding fails.
KeyedLine keyedLine(OwnedText line, NameFolding fold);

/// Whether lines[index] must be written: it was added or changed, and no line below it has the same key. Lines are
/// written in their order. An unchanged line is not written, so a stored comment that could not be read is not lost.
bool isToBeWritten(std::span<const KeyedLine> lines, std::size_t index, std::span<const KeyedLine> listed);

/// Whether the mapping of an original line must be removed, after the current lines are written: none of these has its
/// key.
bool isToBeRemoved(const KeyedLine& wasListed, std::span<const KeyedLine> lines);

/// Folds a name in the active ANSI code page, as the registry does when it compares key names.
bool foldKeyName(char* name);

}  // namespace tamrix
