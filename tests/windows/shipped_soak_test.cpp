// The shipped DLL loaded and unloaded many times over, by one process and by many at once. With TAMRIX_SOAK set: 10,000
// times and 32 processes.
#include <cstdio>
#include <random>
#include <vector>

#include "windows/shipped_dll.h"
#include "windows/soak.h"

namespace {

using testing_support::heapBlocks;
using testing_support::openHandles;
using testing_support::soakRounds;

constexpr int kThreads = 4;

/// Starts this program again for one of its tasks, with a number.
HANDLE startTask(const char* task, int number) {
    char self[MAX_PATH];
    GetModuleFileNameA(nullptr, self, sizeof self);
    std::string command =
        "\"" + std::string(self) + "\" \"" + shipped::dllPath + "\" " + task + " " + std::to_string(number);
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    EXPECT_TRUE(
        CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process));
    CloseHandle(process.hThread);
    return process.hProcess;
}

DWORD exitCode(HANDLE process) {
    DWORD code = STILL_ACTIVE;
    EXPECT_EQ(WaitForSingleObject(process, 1000000), WAIT_OBJECT_0);
    GetExitCodeProcess(process, &code);
    CloseHandle(process);
    return code;
}

DWORD WINAPI sleepFor(void* milliseconds) {
    Sleep(static_cast<DWORD>(reinterpret_cast<ULONG_PTR>(milliseconds)));
    return 0;
}

TEST(SharedCounters, AreWrongByTheKilledProcessesAtMost) {
    ASSERT_NE(shipped::dll(), nullptr);
    volatile LONG* const counters = shipped::sharedCounters();
    const LONG processes = counters[0], threads = counters[1];
    const int count = soakRounds(8, 32);
    std::mt19937 random(8);
    std::vector<HANDLE> tasks;
    for (int i = 0; i < count; ++i) tasks.push_back(startTask("--churn", i));
    int killed = 0;
    for (int i = 0; i < count; i += 4) {
        Sleep(random() % 400);
        if (TerminateProcess(tasks[static_cast<std::size_t>(i)], 9)) ++killed;
    }
    for (const HANDLE task : tasks) {
        const DWORD code = exitCode(task);
        EXPECT_TRUE(code == 0 || code == 9) << code;
    }
    std::printf("%d processes, %d of them killed: the counters are off by %ld processes and %ld threads\n", count,
                killed, counters[0] - processes, counters[1] - threads);
    EXPECT_GE(counters[0], processes);
    EXPECT_LE(counters[0], processes + killed);
    EXPECT_GE(counters[1], threads);
    EXPECT_LE(counters[1], threads + killed * kThreads);
}

TEST(Loading, LeavesNothingBehindManyTimes) {
    EXPECT_EQ(exitCode(startTask("--reload", soakRounds(200, 10000))), 0u);
}

}  // namespace

/// Attaches, starts and ends threads, and detaches at random; at its end the process may still be attached.
int runChurn(int seed) {
    std::mt19937 random(static_cast<unsigned>(seed));
    for (int round = 0; round < 30; ++round) {
        const HMODULE module = LoadLibraryA(shipped::dllPath.c_str());
        if (!module) return 1;
        HANDLE threads[kThreads];
        DWORD started = 0;
        while (started < kThreads && random() % 4) {
            void* const pause = reinterpret_cast<void*>(static_cast<ULONG_PTR>(random() % 20));
            threads[started++] = CreateThread(nullptr, 0, sleepFor, pause, 0, nullptr);
        }
        if (started) WaitForMultipleObjects(started, threads, TRUE, INFINITE);
        while (started) CloseHandle(threads[--started]);
        if (round < 29 || random() % 2) FreeLibrary(module);
    }
    return 0;
}

/// Whether handles and heap blocks are as many after so many loads as after the first ones.
int runReload(int times) {
    const auto reload = [](int count) {
        while (count-- > 0) FreeLibrary(LoadLibraryA(shipped::dllPath.c_str()));
    };
    // Wine's printer library, which comes and goes with the common dialogs, leaves a handle open each time.
    LoadLibraryA("winspool.drv");
    reload(100);
    if (GetModuleHandleA("Tamrix32.dll")) return 2;
    const DWORD handles = openHandles();
    const int blocks = heapBlocks();
    reload(times);
    const DWORD handlesAfter = openHandles();
    const int blocksAfter = heapBlocks();
    std::printf("%d loads: lowest free handle %lu -> %lu, heap blocks %d -> %d\n", times, handles, handlesAfter, blocks,
                blocksAfter);
    return handlesAfter <= handles && blocksAfter <= blocks ? 0 : 1;
}
