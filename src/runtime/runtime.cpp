// The heap functions and the few symbols that compilers expect in every program and library, based on msvcrt, because
// there is no vendor C++ runtime. The DLL has no other start-up code, so it must have no dynamic initializers; with
// one, linking fails.
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

// A call of a pure virtual function is an error in the caller.
extern "C" int __cdecl _purecall() {
    abort();
}

// Object files that use floating point refer to this symbol, so that they cannot be linked with start-up code that does
// not support it.
extern "C" {
extern const int _fltused;
const int _fltused = 0;
}
