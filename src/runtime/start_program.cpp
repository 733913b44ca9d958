// Start-up code of a console program, based on msvcrt: static initializers, exit functions, and the functions that
// containers call for memory and errors.
#include <stdlib.h>
#include <windows.h>

#include <new>
#include <string>

int main(int argc, char** argv);

extern "C" {
struct StartInfo {
    int newMode;
};
int __cdecl __getmainargs(int* argc, char*** argv, char*** environment, int expandWildcards, StartInfo* info);
}

namespace {

[[noreturn]] void outOfMemory() {
    static const char message[] = "tamrix: out of memory\n";
    DWORD written;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), message, sizeof message - 1, &written, nullptr);
    ExitProcess(2);
}

void* allocate(size_t size) {
    void* block = malloc(size ? size : 1);
    if (!block) outOfMemory();
    return block;
}

using Step = void (*)();

constexpr int kMaxExits = 16;
Step exits[kMaxExits];
int exitCount;

}  // namespace

// The linker places the pointers from .CRT$XC*, which compilers generate, between these two.
#pragma section(".CRT$XCA", read)
#pragma section(".CRT$XCZ", read)
extern "C" __declspec(allocate(".CRT$XCA")) Step firstInitializer[1] = {nullptr};
extern "C" __declspec(allocate(".CRT$XCZ")) Step lastInitializer[1] = {nullptr};

extern "C" int __cdecl atexit(void(__cdecl* step)(void)) {
    if (exitCount == kMaxExits) return -1;
    exits[exitCount++] = step;
    return 0;
}

void* operator new(size_t size) {
    return allocate(size);
}
void* operator new[](size_t size) {
    return allocate(size);
}

namespace std {
void __throw_length_error(const char*) {
    outOfMemory();
}
void __throw_logic_error(const char*) {
    abort();
}
void __throw_out_of_range(const char*) {
    abort();
}
void __throw_out_of_range_fmt(const char*, ...) {
    abort();
}
void __throw_bad_alloc() {
    outOfMemory();
}
void __throw_bad_array_new_length() {
    outOfMemory();
}
void __throw_bad_function_call() {
    abort();
}
}  // namespace std

// libstdc++ compiles these into its own library, which programs here do not link. From release 13 on, its headers also
// leave _M_replace_cold, a part of every replacement in a string, to that library in C++20.
template class std::allocator<char>;
template class std::basic_string<char>;

extern "C" void __cdecl mainCRTStartup() {
    int argc = 0;
    char** argv = nullptr;
    char** environment = nullptr;
    StartInfo info = {0};
    __getmainargs(&argc, &argv, &environment, 0, &info);
    for (Step* step = firstInitializer; step != lastInitializer; ++step)
        if (*step) (*step)();
    const int status = main(argc, argv);
    while (exitCount > 0) exits[--exitCount]();
    exit(status);
}
