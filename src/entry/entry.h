// The library's entry point, its initialization at load, and the attach counters.
#pragma once

#include <windows.h>

namespace tamrix {

/// Numbers of attached processes and threads. All processes that load the library share one copy.
struct SharedCounters {
    LONG processCount;
    LONG threadCount;
};

extern SharedCounters sharedCounters;

/// Initializes the variables of the process: lead bytes, name rules, dialog font. Keeps no allocated memory and never
/// fails; settings that cannot be read count as not configured.
void loadProcess();

}  // namespace tamrix

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID reserved);
