// What the file dialog makes of paths and filters: where it begins, and what the folder mode's placeholder name leaves.
// All of it in place, in zero-terminated buffers whose sizes count the terminator.
#pragma once

#include "strings/lead_bytes.h"

namespace tamrix {

/// Bytes of a path's buffer.
inline constexpr int kBrowsePathSize = 260;

/// Cuts `path` at its last backslash, which leaves the folder to begin in, and gives the file name after it. A path
/// without a backslash names no folder: it becomes empty and the result is null.
const char* splitInitialPath(char* path, const LeadByteTable& table);

/// Makes each bar of a filter a zero byte, so that its parts become the list that the dialog expects. A filter may hold
/// its zeros already: from the first one on, bars stay. Both zeros that close the list fit into `size` bytes: a filter
/// that fills them loses its last character.
void splitFilter(char* filter, int size, const LeadByteTable& table);

/// Cuts the folder mode's placeholder off an accepted path. The backslash stays where it is a drive's root; a path that
/// ends in any other name stays whole.
void cutPlaceholder(char* path, const char* placeholder, const LeadByteTable& table);

}  // namespace tamrix
