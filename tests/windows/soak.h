// How long the tests that wait for leaks go on, and what they count.
#pragma once

#include <windows.h>

#include <cstdlib>

namespace testing_support {

/// `full` rounds when TAMRIX_SOAK is set in the environment, else `usual`.
inline int soakRounds(int usual, int full) {
    const char* const soak = std::getenv("TAMRIX_SOAK");
    return soak && *soak ? full : usual;
}

/// The lowest handle that is free, as a number that grows with the handles that stay open: Wine does not count them.
inline DWORD openHandles() {
    const HANDLE probe = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    CloseHandle(probe);
    return static_cast<DWORD>(reinterpret_cast<ULONG_PTR>(probe));
}

/// Blocks in use on all heaps of the process, of which no other thread may run.
inline int heapBlocks() {
    HANDLE heaps[64];
    int blocks = 0;
    for (DWORD left = GetProcessHeaps(64, heaps); left > 0; --left)
        for (PROCESS_HEAP_ENTRY entry{}; HeapWalk(heaps[left - 1], &entry);)
            blocks += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0;
    return blocks;
}

}  // namespace testing_support
