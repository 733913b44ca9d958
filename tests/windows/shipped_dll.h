// The shipped DLL as an old client uses it: loaded by name, functions and classes found by their exported names,
// objects in raw storage of the sizes that old compilers reserved, members called in the platform's member convention.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string>

#include "registry_text.h"

namespace shipped {

inline std::string dllPath;  // the first argument of the program

inline HMODULE dll() {
    static const HMODULE module = LoadLibraryA(dllPath.c_str());
    return module;
}

template <typename Function>
Function* function(const char* name) {
    auto* found = reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(dll(), name)));
    if (!found) throw std::runtime_error(std::string(name) + " is not exported");
    return found;
}

/// What a program begins with: a registry of its own, with a configured dialog font that the DLL reads when it is
/// loaded.
inline void begin(int& argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    dllPath = argv[1];
    constexpr char kSettings[] = "Software\\Quillon Systems, Inc.\\File Client", kFace[] = "Liberation Mono";
    testing_support::emptyRegistry();
    testing_support::givenValue(HKEY_LOCAL_MACHINE, kSettings, "DialogFont", REG_SZ, {kFace, sizeof kFace});
    testing_support::givenValue(HKEY_LOCAL_MACHINE, kSettings, "DialogFontSize", REG_DWORD, {"\x0B\0\0\0", 4});
}

/// Calls a member by its decorated name.
template <typename Result = void, typename... Arguments>
Result member(const char* name, void* object, Arguments... arguments) {
    using Member = Result __thiscall(void*, Arguments...);
    return function<Member>(name)(object, arguments...);
}

/// Storage for one object, followed by guard bytes that construction and use must not change.
template <std::size_t size>
struct Storage {
    alignas(8) unsigned char bytes[size + 16];
    Storage() { std::memset(bytes, 0xA5, sizeof bytes); }
    ~Storage() { EXPECT_EQ(std::count(bytes + size, bytes + sizeof bytes, 0xA5), 16); }
    operator void*() { return bytes; }
    template <typename Field>
    Field& at(std::size_t offset) {
        return *reinterpret_cast<Field*>(bytes + offset);
    }
};

/// One virtual slot of an object.
template <typename Function>
Function* slot(void* object, int index) {
    return reinterpret_cast<Function*>((*static_cast<void***>(object))[index]);
}

/// What the linker wrote at the start of the DLL.
inline const IMAGE_NT_HEADERS* headers() {
    auto* base = reinterpret_cast<unsigned char*>(dll());
    return reinterpret_cast<IMAGE_NT_HEADERS*>(base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
}

/// Calls the entry point, as the loader does.
inline BOOL enter(DWORD reason, void* reserved = nullptr) {
    auto* const entry = reinterpret_cast<unsigned char*>(dll()) + headers()->OptionalHeader.AddressOfEntryPoint;
    return reinterpret_cast<BOOL(WINAPI*)(HINSTANCE, DWORD, void*)>(entry)(dll(), reason, reserved);
}

}  // namespace shipped
