// Fresh copies of strings for the fields that own them.
#pragma once

#include <cstring>
#include <new>

namespace tamrix {

/// A copy to be freed by delete[]; null for null and when memory runs out.
inline char* copiedString(const char* text) {
    if (!text) return nullptr;
    const std::size_t size = std::strlen(text) + 1;
    auto* copy = new (std::nothrow) char[size];
    if (copy) std::memcpy(copy, text, size);
    return copy;
}

}  // namespace tamrix
