// A million name translations by eight threads at once, with the string family, UNC paths and the registry between
// them. scripts/soak compiles it for the thread sanitizer. Fails where a name does not come back or memory grows.
#include <atomic>
#include <cstdio>
#include <cstring>
#include <thread>
#include <vector>

#include "entry/entry.h"
#include "tamrix32/macnames.h"
#include "tamrix32/registry.h"
#include "tamrix32/strings.h"

// The sanitizer's own count; GCC ships no header for it.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();

namespace {

constexpr int kThreads = 8;
constexpr int kTranslations = 1000000;
std::atomic<int> wrong{0};

void translate(int thread) {
    DllMain(nullptr, DLL_THREAD_ATTACH, nullptr);
    char path[16];
    std::snprintf(path, sizeof path, "soak%d", thread);
    RegKey key(HKEY_CURRENT_USER, path);
    RegValue value;
    for (int i = 0; i < kTranslations / kThreads / 2; ++i) {
        char name[40], windows[200], back[40];
        std::snprintf(name, sizeof name, "%d: %d/%d\x8E.", thread, i, i % 7);
        const int size = AFPtoOSCopy(windows, name, sizeof windows);
        if (size < 1 || size > AFPtoOSLen(name) || OStoAFPCopy(back, windows, sizeof back) < 1 ||
            std::strcmp(back, name) != 0)
            ++wrong;
        if (i % 64) continue;
        char zone[40], server[40], volume[40], rest[40];
        if (UNCToStrings("\\\\Zone@Server\\Volume\\a", zone, server, volume, rest, sizeof rest) != 1) ++wrong;
        if (dbcs_stricmp(dbcs_strupr(zone), "zone") != 0) ++wrong;
        if (!key.SetString("name", name) || !key.ValueByName("name", &value) || std::strcmp(value.String(), name) != 0)
            ++wrong;
    }
    DllMain(nullptr, DLL_THREAD_DETACH, nullptr);
}

void runAll() {
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) threads.emplace_back(translate, i);
    for (std::thread& thread : threads) thread.join();
}

}  // namespace

int main() {
    DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr);
    runAll();
    const std::size_t first = __sanitizer_get_current_allocated_bytes();
    runAll();
    const std::size_t second = __sanitizer_get_current_allocated_bytes();
    std::printf(
        "2 x %d translations by %d threads: %d wrong, %zu bytes in use after the first, %zu after the second, %d "
        "threads left counted\n",
        kTranslations, kThreads, wrong.load(), first, second, static_cast<int>(tamrix::sharedCounters.threadCount));
    return wrong == 0 && second <= first && tamrix::sharedCounters.threadCount == 0 ? 0 : 1;
}
