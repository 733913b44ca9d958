// The owner type for an open registry key, and the access rights with which keys are opened.
#pragma once

#include <windows.h>

#include "base/unique_handle.h"

namespace tamrix {

struct RegistryKeyTraits {
    using Handle = HKEY;
    static constexpr Handle kNone = nullptr;
    static void close(Handle key) { RegCloseKey(key); }
};

using UniqueKey = UniqueHandle<RegistryKeyTraits>;

/// Every handle asks for write and delete access, even if a key is only read.
inline constexpr REGSAM kKeyAccess =
    KEY_QUERY_VALUE | KEY_SET_VALUE | KEY_CREATE_SUB_KEY | KEY_ENUMERATE_SUB_KEYS | KEY_NOTIFY | DELETE;
static_assert(kKeyAccess == 0x1001F);

}  // namespace tamrix
