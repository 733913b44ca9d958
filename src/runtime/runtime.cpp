#include "runtime/runtime.h"

#include <stdlib.h>

#include <new>

// The linker sorts what compilers put into .CRT$XC* between these two.
#pragma section(".CRT$XCA", read)
#pragma section(".CRT$XCZ", read)
extern "C" __declspec(allocate(".CRT$XCA")) tamrix::Step firstInitialiser[1] = {nullptr};
extern "C" __declspec(allocate(".CRT$XCZ")) tamrix::Step lastInitialiser[1] = {nullptr};

namespace {

constexpr int kMostExits = 16;
tamrix::Step exits[kMostExits];
int exitCount;

}  // namespace

void tamrix::runInitialisers() {
    for (Step* step = firstInitialiser; step != lastInitialiser; ++step)
        if (*step) (*step)();
}

void tamrix::runExits() {
    while (exitCount > 0) exits[--exitCount]();
}

extern "C" int __cdecl atexit(void(__cdecl* step)(void)) {
    if (exitCount == kMostExits) return -1;
    exits[exitCount++] = step;
    return 0;
}

const std::nothrow_t std::nothrow;

void* operator new(size_t size, const std::nothrow_t&) noexcept {
    return malloc(size ? size : 1);
}
void* operator new[](size_t size, const std::nothrow_t&) noexcept {
    return malloc(size ? size : 1);
}
void operator delete(void* block) noexcept {
    free(block);
}
void operator delete[](void* block) noexcept {
    free(block);
}
void operator delete(void* block, size_t) noexcept {
    free(block);
}
void operator delete[](void* block, size_t) noexcept {
    free(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
    free(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
    free(block);
}

// A pure virtual slot that is called is a broken caller.
extern "C" int __cdecl _purecall() {
    abort();
}

// Objects that use floating point ask for this name, by which a start-up that knows none would fail to link.
extern "C" {
extern const int _fltused;
const int _fltused = 0;
}
