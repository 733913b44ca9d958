// Eight threads at once make a million name conversions, with the string family, UNC paths and the registry in between.
// scripts/soak compiles this for the thread sanitizer. Fails if a result is wrong or a thread stays counted.
#include <atomic>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "entry/entry.h"
#include "tamrix32/macnames.h"
#include "tamrix32/registry.h"
#include "tamrix32/strings.h"

namespace {

constexpr int kThreads = 8;
constexpr int kConversions = 1000000;
std::atomic<int> wrong{0};

void convert(int thread) {
    DllMain(nullptr, DLL_THREAD_ATTACH, nullptr);
    RegKey key(HKEY_CURRENT_USER, ("soak" + std::to_string(thread)).c_str());
    RegValue value;
    for (int i = 0; i < kConversions / kThreads / 2; ++i) {
        const std::string name = std::to_string(thread) + ": " + std::to_string(i) + "/\x8E.";
        char windows[200], back[40], zone[40], server[40], volume[40], rest[40];
        const int size = AFPtoOSCopy(windows, name.c_str(), sizeof windows);
        wrong += size < 1 || OStoAFPCopy(back, windows, sizeof back) < 1 || back != name;
        if (i % 64) continue;
        wrong += UNCToStrings("\\\\Zone@Server\\Volume\\a", zone, server, volume, rest, sizeof rest) != 1;
        wrong += dbcs_stricmp(dbcs_strupr(zone), "zone") != 0;
        wrong += !key.SetString("name", back) || !key.ValueByName("name", &value) || value.String() != name;
    }
    DllMain(nullptr, DLL_THREAD_DETACH, nullptr);
}

}  // namespace

int main() {
    DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) threads.emplace_back(convert, i);
    for (std::thread& thread : threads) thread.join();
    const LONG counted = tamrix::sharedCounters.threadCount;
    std::printf("%d conversions by %d threads: %d wrong, %d threads still counted\n", kConversions, kThreads,
                wrong.load(), static_cast<int>(counted));
    return wrong != 0 || counted != 0;
}
