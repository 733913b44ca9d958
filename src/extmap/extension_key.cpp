#include "extmap/extension_key.h"

#include "tamrix32/strings.h"

namespace tamrix {

const char* extensionKeyName(const char* extension, KeyNameBuffer& buffer) {
    if (!extension || extension[0] == '.') return extension;
    buffer[0] = '.';
    BufStrCpy(buffer + 1, extension, kExtensionSize);
    return buffer;
}

}  // namespace tamrix
