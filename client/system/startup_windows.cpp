// The shipped EXE: the loader starts the DLL, and the mappings are in the system's registry.
#include <string.h>
#include <windows.h>

#include "client/system/error_text.h"
#include "client/system/startup.h"
#include "client/text.h"

namespace tamrix::client {
namespace {

constexpr UINT kMacRoman = 10000;

/// Finds the section with the library's two counters, which all processes share, in the headers of the loaded module.
const long* sharedCounters() {
    const auto* base = reinterpret_cast<const unsigned char*>(GetModuleHandleA("Tamrix32.dll"));
    if (!base) return nullptr;
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS32*>(base + dos->e_lfanew);
    const IMAGE_SECTION_HEADER* section = IMAGE_FIRST_SECTION(headers);
    for (int left = headers->FileHeader.NumberOfSections; left > 0; --left, ++section)
        if (memcmp(section->Name, ".shared", sizeof ".shared") == 0)
            return reinterpret_cast<const long*>(base + section->VirtualAddress);
    return nullptr;
}

/// Waits until no other run changes the mappings; the mutex is released when the process ends. False if waiting fails.
/// Runs of other users count too: every user may open the mutex, and on systems with several sessions it is global.
bool waitForOthers() {
    SECURITY_DESCRIPTOR open;
    SECURITY_ATTRIBUTES everybody = {sizeof everybody, &open, FALSE};
    const bool isSecured = InitializeSecurityDescriptor(&open, SECURITY_DESCRIPTOR_REVISION) &&
                           SetSecurityDescriptorDacl(&open, TRUE, nullptr, FALSE);
    SECURITY_ATTRIBUTES* const attributes = isSecured ? &everybody : nullptr;  // Windows 95 has none
    HANDLE mutex = CreateMutexA(attributes, FALSE, "Global\\Tamrix32 mappings");
    if (!mutex) mutex = CreateMutexA(attributes, FALSE, "Tamrix32 mappings");
    return mutex && WaitForSingleObject(mutex, INFINITE) != WAIT_FAILED;
}

}  // namespace

std::span<const Option> platformOptions() {
    return {};
}

bool startLibrary(const Arguments&, bool changesMappings, std::string& reason) {
    WCHAR letter;
    if (changesMappings && !waitForOthers()) {
        reason = "cannot wait for other programs that change the mappings: " + errorText();
        return false;
    }
    if (!namesAreText || MultiByteToWideChar(kMacRoman, 0, "a", 1, &letter, 1) == 1) return true;
    reason = "this system lacks code page 10000 (Mac Roman); use --bytes";
    return false;
}

bool saveMappings(std::string&) {
    return true;
}

bool readCounters(long& processes, long& threads) {
    const long* counters = sharedCounters();
    if (!counters) return false;
    processes = counters[0];
    threads = counters[1];
    return true;
}

}  // namespace tamrix::client
