// Fresh copies of strings for the fields that own them.
#pragma once

#include <new>

#include "tamrix32/strings.h"

namespace tamrix {

/// A copy to be freed by delete[]; null for null and when memory runs out.
inline char* copiedString(const char* text) {
    if (!text) return nullptr;
    return dbcs_strcpy(new (std::nothrow) char[static_cast<unsigned>(dbcs_strlen(text)) + 1U], text);
}

}  // namespace tamrix
