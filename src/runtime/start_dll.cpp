// The DLL's start: initialisers before the entry point's first call, exits after its last.
#include "frame/entry.h"
#include "runtime/runtime.h"

extern "C" BOOL WINAPI DllMainCRTStartup(HINSTANCE module, DWORD reason, LPVOID reserved) {
    if (reason == DLL_PROCESS_ATTACH) tamrix::runInitialisers();
    const BOOL result = DllMain(module, reason, reserved);
    if (reason == DLL_PROCESS_DETACH) tamrix::runExits();
    return result;
}
