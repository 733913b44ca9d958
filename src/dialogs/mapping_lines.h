// The lines in the mapping editor's list: the extension with its dot, then a tab and the comment if the mapping has
// one. Lines may have any length. A tab byte is never part of a double-byte character.
#pragma once

#include <memory>

namespace tamrix {

using OwnedText = std::unique_ptr<char[]>;

/// The line of a mapping. With a null comment it has no tab, with an empty one it ends in a tab. Null if memory runs
/// out.
OwnedText joinedLine(const char* extension, const char* comment);

/// A copy; null if memory runs out.
OwnedText copiedText(const char* text);

/// Whether the editor accepts a typed extension of this length in bytes, including a dot.
bool isAcceptedLength(int length);

/// The mapping in a line.
struct MappingLine {
    OwnedText text;
    char* extension = nullptr;  // in `text`
    char* comment = nullptr;    // in `text`; null for none
};

/// Splits a line at its first tab. The extension of a null line is null.
MappingLine splitLine(OwnedText line);

/// Whether these codes can be stored: they have at most 4 bytes. The editor shows other codes but writes nothing for
/// them.
bool canBeStored(const char* creator, const char* type);

}  // namespace tamrix
