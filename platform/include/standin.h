// Control over the stand-in for Win32 (windows.h beside this file), for tests and for the native command: which code
// pages are active, what the registry and the modules' resources hold, which platform call is to fail, and what was
// left open. Process-wide; the registry, the counters and the fault plan may be used from several threads.
#ifndef TAMRIX_PLATFORM_STANDIN_H
#define TAMRIX_PLATFORM_STANDIN_H

#include <windows.h>

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace standin {

// Code pages.

/// Makes `ansi` and `oem` the active code pages: 437, 850, 932, 936, 949, 950, 1251 or 1252. At start they are 1252 and
/// 437. False, and nothing changes, for another number and for one that the system's iconv can't convert. Registry keys
/// keep the case folding of the code page under which they were made, so clear the registry first when names hold bytes
/// from 0x80 on.
bool setCodePages(UINT ansi, UINT oem);

// Registry.

/// Takes away every key, value and denial below the roots. Handles that are open stay open on deleted keys.
void clearRegistry();

/// From now on opening, creating or deleting the existing key `path` gives ERROR_ACCESS_DENIED; handles that are open
/// already, and keys below it, are not concerned. On a root itself (an empty path) every call gives it. False when
/// there is no such key.
bool denyAccess(HKEY root, const char* path);

/// What loading or saving came to. On failure `message` says why in a sentence without a final period; `line` is the
/// line of the file at fault, counted from 1, or 0 when it is not a matter of one line; `reason` is the system's own
/// for refusing a call, or empty.
struct FileResult {
    bool ok = false;
    bool missing = false;  ///< loading only: there is no such file
    std::size_t line = 0;
    std::string message;
    std::string reason;
};

/// Merges the keys and values of a REGEDIT4 text file into the registry. A malformed file is refused whole; what is no
/// regular file is refused unread.
FileResult loadRegistry(const std::string& path);

/// Writes the whole registry as a REGEDIT4 text file in the active ANSI code page, as replaceFile does.
FileResult saveRegistry(const std::string& path);

/// Writes a file, or what a symbolic link leads to, through a new file beside it that takes its place, with its
/// permissions, when all of it is on the disk. A cut by plan (Kind::fileStep) leaves everything as the end of the
/// process at that step would; any other failure removes the new file.
FileResult replaceFile(const std::string& path, std::string_view text);

// Modules and resources.

/// A module handle that is nobody's, different for each `number`; 0 is the program itself, as a null handle is.
HINSTANCE fakeModule(unsigned number);

/// Adds a resource, or replaces it. `type` and `name` are strings or integer ids (MAKEINTRESOURCEA); bytes are copied.
void addResource(HINSTANCE module, const char* type, const char* name, std::span<const unsigned char> bytes);

/// Takes every resource of every module away; data that is still loaded is gone with it.
void clearResources();

// Message boxes.

struct MessageBox {
    HWND owner = nullptr;
    std::string text;
    std::string caption;
    UINT style = 0;
};

/// The message boxes asked for since the last call, oldest first. Each was answered with IDOK.
std::vector<MessageBox> takeMessageBoxes();

// Faults and counts.

/// The calls that can be made to fail. Calls that give something back (close, free, unlock) never fail by plan and are
/// not counted.
enum class Kind {
    allocation,    ///< new (std::nothrow): null
    registry,      ///< ERROR_NOT_ENOUGH_MEMORY
    conversion,    ///< MultiByteToWideChar, WideCharToMultiByte, LCMapStringA: 0
    resource,      ///< FindResourceA, SizeofResource, LoadResource, LockResource: null or 0
    globalMemory,  ///< GlobalAlloc, GlobalReAlloc, GlobalLock: null
    fileStep,      ///< saving: each byte written counts as one step, as do opening, flushing and renaming
};

/// Makes the nth call of the kind from now (1: the next one) fail, and only that one. One plan a kind.
void failNth(Kind kind, std::size_t n);

/// Drops all plans and sets all counters of calls to 0.
void clearFaults();

/// Whether a planned failure has happened since clearFaults.
bool faultHit();

/// Planned failures since the process began; clearFaults does not forget them.
std::size_t faultsInjected();

/// Calls of the kind since clearFaults, the failed ones included.
std::size_t calls(Kind kind);

/// What is held and not given back: open registry keys, global blocks, loads of resources without a FreeResource.
std::size_t openKeys();
std::size_t openGlobalBlocks();
std::size_t lockedResources();

}  // namespace standin

#endif
