// The owner of an open registry key.
#pragma once

#include <windows.h>

#include "strings/unique_handle.h"

namespace tamrix {

struct RegistryKeyTraits {
    using Handle = HKEY;
    static constexpr Handle kNone = nullptr;
    static void close(Handle key) { RegCloseKey(key); }
};

using UniqueKey = UniqueHandle<RegistryKeyTraits>;

}  // namespace tamrix
