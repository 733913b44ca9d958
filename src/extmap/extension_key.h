// Conversion of an extension, as callers pass it, to the name of its key.
#pragma once

#include <memory>

#include "extmap/store_layout.h"

namespace tamrix {

/// Room for a dot, an extension and the terminator.
using KeyNameBuffer = char[1 + kExtensionSize];

/// The key name of an extension. An extension that begins with a dot is the key name, at any length. Any other is
/// truncated to 15 bytes at a character boundary and written to `buffer` after a dot. Null for null.
const char* extensionKeyName(const char* extension, KeyNameBuffer& buffer);

/// The extension with its dot as a copy, at any length. Null for null and when memory runs out.
std::unique_ptr<char[]> dottedExtension(const char* extension);

}  // namespace tamrix
