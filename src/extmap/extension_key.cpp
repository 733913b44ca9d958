#include "extmap/extension_key.h"

#include <cstddef>
#include <cstring>
#include <new>

#include "tamrix32/strings.h"

namespace tamrix {
namespace {

bool hasDot(const char* extension) {
    return extension[0] == '.';
}

}  // namespace

const char* extensionKeyName(const char* extension, KeyNameBuffer& buffer) {
    if (!extension || hasDot(extension)) return extension;
    buffer[0] = '.';
    BufStrCpy(buffer + 1, extension, kExtensionSize);
    return buffer;
}

std::unique_ptr<char[]> dottedExtension(const char* extension) {
    if (!extension) return nullptr;
    const std::size_t dot = hasDot(extension) ? 0 : 1;
    const std::size_t size = std::strlen(extension) + 1;
    std::unique_ptr<char[]> name(new (std::nothrow) char[dot + size]);
    if (!name) return nullptr;
    name[0] = '.';
    std::memcpy(&name[dot], extension, size);
    return name;
}

}  // namespace tamrix
