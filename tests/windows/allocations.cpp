// Every block carries a mark before it that says by which form it was allocated, and begins with nothing that could be
// taken for zeros, nor for what another holds.
#include "windows/allocations.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

constexpr std::uint32_t kCounted = 0x434F554E;
constexpr std::size_t kMarkSize = 16;
constinit std::atomic<std::size_t> open{0};
constinit std::atomic<bool> failing{false};

void* allocate(std::size_t size, std::uint32_t mark) {
    auto* const block = static_cast<std::uint32_t*>(std::malloc(size + kMarkSize));
    if (!block) return nullptr;
    *block = mark;
    if (mark == kCounted) ++open;
    return std::memset(reinterpret_cast<char*>(block) + kMarkSize, 0xA5 ^ static_cast<int>(open & 1), size);
}

void release(void* block) {
    if (!block) return;
    void* const start = static_cast<char*>(block) - kMarkSize;
    if (*static_cast<std::uint32_t*>(start) == kCounted) --open;
    std::free(start);
}

}  // namespace

std::size_t testing_support::openBlocks() {
    return open;
}

void testing_support::failAllocations(bool fail) {
    failing = fail;
}

void* operator new(std::size_t size) {
    void* const block = allocate(size, 0);
    if (!block) std::abort();
    return block;
}
void* operator new[](std::size_t size) {
    return operator new(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return failing ? nullptr : allocate(size, kCounted);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return failing ? nullptr : allocate(size, kCounted);
}
void operator delete(void* block) noexcept {
    release(block);
}
void operator delete[](void* block) noexcept {
    release(block);
}
void operator delete(void* block, std::size_t) noexcept {
    release(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    release(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
    release(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
    release(block);
}
