// The library's entry point, all that happens at load, and the attach counters.
#pragma once

#include <windows.h>

namespace tamrix {

/// Attachments not yet matched by a detachment, one copy for all processes that have the library loaded.
struct SharedCounters {
    LONG processCount;
    LONG threadCount;
};

extern SharedCounters sharedCounters;

/// Fills in everything that a process has of its own: lead bytes, the rules for names, the dialogs' font. Keeps no
/// memory and never fails; what can't be read counts as not configured.
void loadProcess();

}  // namespace tamrix

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID reserved);
