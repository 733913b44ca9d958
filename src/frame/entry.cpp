#include "frame/entry.h"

#include <type_traits>

#include "frame/settings.h"
#include "strings/lead_bytes.h"
#include "tamrix32/frame.h"

namespace tamrix {

// The linker marks this section as shared; data in it needs an explicit value to be stored there.
__attribute__((section(".shared"))) SharedCounters sharedCounters = {0, 0};

void constructStatics() {
    buildLeadByteTable();
    sbcsTranslator = chooseTranslator(static_cast<std::uint16_t>(GetOEMCP()), leadByteTable.hasLeadBytes != 0);
    // Until the settings are loaded nothing is quoted, but names already end at their terminators.
    nameRules = makeNameRules(quoteSettings, leadByteTable, sbcsTranslator.table);
}

namespace {

/// The only object that is constructed at run time. Its destructor is arranged first and runs after the last entry
/// call.
struct Statics {
    struct QuoteOwner {
        ~QuoteOwner() { freeQuoteSettings(); }
    } quoteOwner;
    Statics() { constructStatics(); }
} statics;

void attachProcess() {
    buildLeadByteTable();
    loadQuoteSettings();
    loadDialogFontSettings();
    InterlockedIncrement(&sharedCounters.processCount);
}

BOOL detachProcess() {
    // On Windows 95 the result says no more than whether the new count is below, at or above zero.
    const LONG left = InterlockedDecrement(&sharedCounters.processCount);
    return sharedCounters.threadCount <= 0 && left <= 0;
}

}  // namespace
}  // namespace tamrix

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
    using namespace tamrix;
    // At every call, but the same value isn't written again under the eyes of threads that read it.
    if (instance != module) instance = module;
    switch (reason) {
        case DLL_PROCESS_DETACH:
            return detachProcess();
        case DLL_PROCESS_ATTACH:
            attachProcess();
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

HINSTANCE TAMRIX_CALL TamrixResourceInstance() {
    return tamrix::instance;
}
