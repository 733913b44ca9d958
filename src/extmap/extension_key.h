// The rule that turns an extension, as callers give it, into the name of its key.
#pragma once

#include "extmap/store_layout.h"

namespace tamrix {

/// Room for a dot, an extension and the terminator.
using KeyNameBuffer = char[1 + kExtensionSize];

/// The key name of an extension: one that begins with a dot is the name, at any length; any other is cut to 15 bytes at
/// a character's boundary and written to `buffer` behind a dot. Null for null.
const char* extensionKeyName(const char* extension, KeyNameBuffer& buffer);

}  // namespace tamrix
