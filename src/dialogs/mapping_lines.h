// The lines in which the mapping editor lists extensions: the extension with its dot, then, unless the mapping has no
// comment, a tab and the comment. Lines have any length. A tab byte is never part of a double-byte character.
#pragma once

#include <memory>

namespace tamrix {

using OwnedText = std::unique_ptr<char[]>;

/// The line of a mapping; a null comment gives no tab, an empty one a tab at the end. Null when memory runs out.
OwnedText joinedLine(const char* extension, const char* comment);

/// An extension as the user typed it, with a dot before it unless it has one. Null when memory runs out.
OwnedText dottedExtension(const char* typed);

/// A copy; null when memory runs out.
OwnedText copiedText(const char* text);

/// Whether the editor takes a typed extension of so many bytes, a dot among them.
bool isAcceptedLength(int length);

/// What one line says is to be written.
struct MappingLine {
    OwnedText text;
    char* extension = nullptr;  // in `text`
    char* comment = nullptr;    // in `text`; null for none
};

/// Takes a line apart at its first tab. A missing line gives a missing extension.
MappingLine splitLine(OwnedText line);

/// Whether mappings can hold these codes, which have at most 4 bytes. Others are shown, but nothing is written for
/// them.
bool canBeStored(const char* creator, const char* type);

}  // namespace tamrix
