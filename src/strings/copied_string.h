// Copies of strings, for fields that own their string.
#pragma once

#include <cstring>
#include <new>

namespace tamrix {

/// Returns a copy, which the caller frees with delete[]; null for null and if memory runs out.
inline char* copiedString(const char* text) {
    if (!text) return nullptr;
    const std::size_t size = std::strlen(text) + 1;
    auto* copy = new (std::nothrow) char[size];
    if (copy) std::memcpy(copy, text, size);
    return copy;
}

}  // namespace tamrix
