// Global memory. To reveal errors in callers, a moveable block's handle is not its address, and blocks have exactly the
// requested size.
#include <standin.h>

#include <cstdlib>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "faults.h"

namespace {

using namespace standin;

struct FreeBytes {
    void operator()(void* bytes) const { std::free(bytes); }
};

struct Block {
    std::unique_ptr<void, FreeBytes> bytes;  // null if the size is 0
    SIZE_T size = 0;
    unsigned locks = 0;
    bool moveable = false;
};

struct Blocks {
    std::mutex guard;
    std::unordered_map<HGLOBAL, Block> live;
    ULONG_PTR nextHandle = 0x20002;
};

Blocks& blocks() {
    static Blocks& state = *new Blocks;
    return state;
}

Block* find(HGLOBAL handle) {
    const auto found = blocks().live.find(handle);
    return found == blocks().live.end() ? nullptr : &found->second;
}

}  // namespace

HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T size) {
    if (faultDue(Kind::globalMemory)) return nullptr;
    const std::scoped_lock lock(blocks().guard);
    Block block;
    block.moveable = (flags & GMEM_MOVEABLE) != 0;
    block.size = size;
    // A fixed block of size 0 still has an address, which is its handle.
    if (size || !block.moveable) block.bytes.reset(flags & GMEM_ZEROINIT ? std::calloc(size, 1) : std::malloc(size));
    if (size && !block.bytes) return nullptr;
    HGLOBAL handle = block.bytes.get();
    if (block.moveable) {
        handle = reinterpret_cast<HGLOBAL>(blocks().nextHandle);
        blocks().nextHandle += 4;
    }
    blocks().live.emplace(handle, std::move(block));
    return handle;
}

LPVOID WINAPI GlobalLock(HGLOBAL handle) {
    if (faultDue(Kind::globalMemory)) return nullptr;
    const std::scoped_lock lock(blocks().guard);
    Block* block = find(handle);
    if (!block) return nullptr;
    if (block->moveable && block->bytes) ++block->locks;
    return block->bytes.get();
}

BOOL WINAPI GlobalUnlock(HGLOBAL handle) {
    const std::scoped_lock lock(blocks().guard);
    Block* block = find(handle);
    if (!block) return FALSE;
    if (!block->moveable) return TRUE;
    return block->locks > 0 && --block->locks > 0;
}

SIZE_T WINAPI GlobalSize(HGLOBAL handle) {
    const std::scoped_lock lock(blocks().guard);
    const Block* block = find(handle);
    return block ? block->size : 0;
}

HGLOBAL WINAPI GlobalFree(HGLOBAL handle) {
    const std::scoped_lock lock(blocks().guard);
    if (!handle || blocks().live.erase(handle)) return nullptr;
    return handle;
}

std::size_t standin::openGlobalBlocks() {
    const std::scoped_lock lock(blocks().guard);
    return blocks().live.size();
}
