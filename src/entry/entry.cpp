#include "entry/entry.h"

#include "base/module.h"
#include "dialogs/font_settings.h"
#include "dialogs/helper_class.h"
#include "macnames/name_settings.h"
#include "strings/lead_bytes.h"

namespace tamrix {

// The linker marks this section as shared. Only variables with an explicit initial value are placed in it.
__attribute__((section(".shared"))) SharedCounters sharedCounters = {0, 0};

void loadProcess() {
    buildLeadByteTable();
    loadNameSettings();
    loadDialogFontSettings();
}

namespace {

BOOL detachProcess(bool processEnds) {
    // When the process ends, its windows are already destroyed, and other libraries may be unloaded.
    if (!processEnds) unregisterHelperClass();
    // On Windows 95 the result only tells whether the new count is less than, equal to or greater than zero.
    const LONG left = InterlockedDecrement(&sharedCounters.processCount);
    return sharedCounters.threadCount <= 0 && left <= 0;
}

}  // namespace
}  // namespace tamrix

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID reserved) {
    using namespace tamrix;
    // Writing only on a change avoids a data race with threads that read it.
    if (instance != module) instance = module;
    switch (reason) {
        case DLL_PROCESS_DETACH:
            return detachProcess(reserved != nullptr);
        case DLL_PROCESS_ATTACH:
            loadProcess();
            InterlockedIncrement(&sharedCounters.processCount);
            return 1;
        case DLL_THREAD_ATTACH:
            InterlockedIncrement(&sharedCounters.threadCount);
            return 1;
        case DLL_THREAD_DETACH:
            InterlockedDecrement(&sharedCounters.threadCount);
            return 1;
        default:
            MessageBoxA(nullptr, "Unknown DLL entry reason", "Error:", MB_OK | MB_SETFOREGROUND);
            return 1;
    }
}
