// Owners of the platform's moveable global memory: a block, and the lock that gives its address.
#pragma once

#include <windows.h>

#include "base/unique_handle.h"

namespace tamrix {

struct GlobalBlockTraits {
    using Handle = HGLOBAL;
    static constexpr Handle kNone = nullptr;
    static void close(Handle block) { GlobalFree(block); }
};

/// A global block by its handle.
using GlobalBlock = UniqueHandle<GlobalBlockTraits>;

/// Keeps a block in place for as long as this lives. The block stays its owner's.
class GlobalBlockLock {
public:
    explicit GlobalBlockLock(HGLOBAL block) : block_(block), bytes_(block ? GlobalLock(block) : nullptr) {}
    ~GlobalBlockLock() {
        if (bytes_) GlobalUnlock(block_);
    }
    GlobalBlockLock(const GlobalBlockLock&) = delete;
    GlobalBlockLock& operator=(const GlobalBlockLock&) = delete;

    /// The first byte; null when the block could not be locked.
    char* bytes() const { return static_cast<char*>(bytes_); }

private:
    HGLOBAL block_;
    void* bytes_;
};

}  // namespace tamrix
