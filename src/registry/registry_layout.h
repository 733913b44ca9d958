// The layout of RegKey and RegValue that old clients rely on, and the one function outside the classes that accesses
// their fields.
#pragma once

#include <cstddef>
#include <utility>

#include "tamrix32/registry.h"

struct RegistryLayout {
    /// Swaps the contents of two values.
    static void swap(RegValue& a, RegValue& b) {
        std::swap(a.name, b.name);
        std::swap(a.type, b.type);
        std::swap(a.dataLength, b.dataLength);
        std::swap(a.data, b.data);
    }

    static constexpr bool isAsPublished() {
        if constexpr (sizeof(void*) != 4) return true;
        return offsetof(RegValue, name) == 0 && offsetof(RegValue, type) == 4 && offsetof(RegValue, dataLength) == 8 &&
               offsetof(RegValue, data) == 12 && sizeof(RegValue) == 16 && offsetof(RegKey, ancestor) == 0 &&
               offsetof(RegKey, relativePath) == 4 && offsetof(RegKey, handle) == 8 &&
               offsetof(RegKey, subKeyPosition) == 12 && offsetof(RegKey, valuePosition) == 16 &&
               offsetof(RegKey, opened) == 20 && sizeof(RegKey) == 24;
    }
};

static_assert(RegistryLayout::isAsPublished());
