// Owners of the platform's moveable global memory: a block, and the lock that gives its address.
#pragma once

#include <windows.h>

#include <utility>

namespace tamrix {

/// A global block by its handle.
class GlobalBlock {
public:
    explicit GlobalBlock(HGLOBAL block) : block_(block) {}
    ~GlobalBlock() {
        if (block_) GlobalFree(block_);
    }
    GlobalBlock(const GlobalBlock&) = delete;
    GlobalBlock& operator=(const GlobalBlock&) = delete;

    HGLOBAL get() const { return block_; }
    explicit operator bool() const { return block_ != nullptr; }

    /// Hands the block to whoever frees it with GlobalFree.
    HGLOBAL release() { return std::exchange(block_, nullptr); }

private:
    HGLOBAL block_;
};

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
