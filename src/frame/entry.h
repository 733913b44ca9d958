// The library's entry point and its attach counters.
#pragma once

#include <windows.h>

namespace tamrix {

/// Attachments not yet matched by a detachment, one copy for all processes that have the library loaded.
struct SharedCounters {
    LONG processCount;
    LONG threadCount;
};

extern SharedCounters sharedCounters;

/// What happens once before the first entry call: the character table is chosen and the lead-byte table built.
void constructStatics();

}  // namespace tamrix

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID reserved);
