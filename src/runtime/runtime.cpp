// The heap and the few names that every program and library asks for, over msvcrt: there is no vendor C++ runtime. The
// DLL has no more than this: nothing in it is constructed at run time, so that linking fails where something wants to
// be.
#include <stdlib.h>

#include <new>

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
