// Preparation of paths and filters for the file dialog, and removal of the placeholder name from a chosen folder. All
// functions work in place on zero-terminated buffers; sizes include the terminator.
#pragma once

#include "strings/lead_bytes.h"

namespace tamrix {

/// Size of a path buffer in bytes.
inline constexpr int kBrowsePathSize = 260;

/// Cuts `path` at its last backslash, so that it contains the initial folder, and returns the file name after the
/// backslash. A path without a backslash has no folder: it becomes empty, and the result is null.
const char* splitInitialPath(char* path, const LeadByteTable& table);

/// Replaces each bar in a filter by a zero byte, which results in the list of strings that the dialog expects. If the
/// filter already contains zeros, bars after the first zero are not replaced. Two zeros end the list; they must fit in
/// `size` bytes, so a filter that fills the buffer loses its last character.
void splitFilter(char* filter, int size, const LeadByteTable& table);

/// Removes the placeholder of the folder dialog from a chosen path, together with the backslash before it unless the
/// folder is the root of a drive. A path that ends in another name is not changed.
void cutPlaceholder(char* path, const char* placeholder, const LeadByteTable& table);

}  // namespace tamrix
