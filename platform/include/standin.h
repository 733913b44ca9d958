// Controls the stand-in for Win32 (windows.h in this folder). The native command selects code pages and reads and
// writes the registry as text. Everything else is for tests and benchmarks: the contents of the registry and of the
// modules' resources, injected failures of platform calls, and counts of open handles. All state is process-wide.
// Several threads may use the registry, the counters and the fault plan.
#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace standin {

// Code pages.

/// Sets the active code pages to `ansi` and `oem`: 437, 850, 866, 932, 936, 949, 950, 1251 or 1252. Initially they are
/// 1252 and 437. False, with nothing changed, for another number and if the system's iconv cannot convert the code
/// page. Registry keys keep the case folding of the code page under which they were created, so clear the registry
/// first if names contain bytes from 0x80 on.
bool setCodePages(UINT ansi, UINT oem);

// Registry.

/// Removes every key, value and denial below the roots. Open handles stay open and refer to deleted keys.
void clearRegistry();

/// Makes opening, creating or deleting the existing key `path` fail with ERROR_ACCESS_DENIED. Open handles and keys
/// below it are not affected. For a root itself (an empty path) every call fails. False if there is no such key.
bool denyAccess(HKEY root, const char* path);

/// The first error in a registry's text: a sentence without a final period, and the number of the line, counted from 1,
/// or 0 in an empty text.
struct TextError {
    std::size_t line = 0;
    std::string message;
};

/// Merges the keys and values of a REGEDIT4 text in the active ANSI code page into the registry. Returns the first
/// error, and then nothing is merged.
std::optional<TextError> mergeRegistry(std::string_view text);

/// The whole registry as REGEDIT4 text; none, with the reason, if there is a name that would not read back unchanged.
std::optional<std::string> registryAsText(std::string& reason);

// Modules and resources.

/// A fake module handle, different for each `number`; 0 means the program itself, as a null handle does.
HINSTANCE fakeModule(unsigned number);

/// Adds or replaces a resource. `type` and `name` are strings or integer ids (MAKEINTRESOURCEA); the bytes are copied.
void addResource(HINSTANCE module, const char* type, const char* name, std::span<const unsigned char> bytes);

/// Removes all resources of all modules, including data that is still loaded.
void clearResources();

// Faults and counts.

/// Kinds of calls that can be made to fail. Calls that release something (close, free, unlock) are never made to fail
/// and are not counted.
enum class Kind {
    allocation,    ///< new (std::nothrow): null
    registry,      ///< ERROR_NOT_ENOUGH_MEMORY
    conversion,    ///< MultiByteToWideChar, LCMapStringA: 0
    resource,      ///< FindResourceA, SizeofResource, LoadResource, LockResource: null or 0
    globalMemory,  ///< GlobalAlloc, GlobalLock: null
};

/// Makes only the nth call of the kind from now (1: the next one) fail. There is one plan per kind.
void failNth(Kind kind, std::size_t n);

/// Removes all plans and sets all call counters to 0.
void clearFaults();

/// Whether a planned failure has happened since clearFaults.
bool faultHit();

/// Number of calls of the kind since clearFaults, including failed ones.
std::size_t calls(Kind kind);

/// Numbers of unreleased objects: open registry keys, global memory blocks, loaded resources without a FreeResource.
std::size_t openKeys();
std::size_t openGlobalBlocks();
std::size_t loadedResources();

}  // namespace standin
