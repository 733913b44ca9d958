// The owner of an open registry key, and the rights that keys are opened with.
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

/// The rights of every open, also where a key is only read: to write to it and delete it are asked for with each
/// handle.
inline constexpr REGSAM kKeyAccess =
    KEY_QUERY_VALUE | KEY_SET_VALUE | KEY_CREATE_SUB_KEY | KEY_ENUMERATE_SUB_KEYS | KEY_NOTIFY | DELETE;
static_assert(kKeyAccess == 0x1001F);

}  // namespace tamrix
