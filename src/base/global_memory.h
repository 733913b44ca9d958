// Owner types for the platform's moveable global memory: for a block, and for the lock that yields its address.
#pragma once

#include <windows.h>

#include "base/unique_handle.h"

namespace tamrix {

struct GlobalBlockTraits {
    using Handle = HGLOBAL;
    static constexpr Handle kNone = nullptr;
    static void close(Handle block) { GlobalFree(block); }
};

/// Owns a global memory block.
using GlobalBlock = UniqueHandle<GlobalBlockTraits>;

/// Locks a block for its own lifetime. Does not own the block.
class GlobalBlockLock {
public:
    explicit GlobalBlockLock(HGLOBAL block) : block_(block), bytes_(block ? GlobalLock(block) : nullptr) {}
    ~GlobalBlockLock() {
        if (bytes_) GlobalUnlock(block_);
    }
    GlobalBlockLock(const GlobalBlockLock&) = delete;
    GlobalBlockLock& operator=(const GlobalBlockLock&) = delete;

    /// The first byte; null if the block could not be locked.
    char* bytes() const { return static_cast<char*>(bytes_); }

private:
    HGLOBAL block_;
    void* bytes_;
};

}  // namespace tamrix
