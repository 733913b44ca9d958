// What the entry point gives and counts. What attaching a process loads is part of the registry's property.
#include "entry/entry.h"

#include <gtest/gtest.h>

#include "tamrix32/module.h"

namespace {

using namespace tamrix;

TEST(EntryPoint, StoresTheInstanceAndCountsProcessesAndThreads) {
    HINSTANCE const own = TamrixResourceInstance();
    const SharedCounters ownCounters = sharedCounters;
    const struct {
        DWORD reason;
        LONG processes, threads;  // how many more there are
    } calls[] = {
        {DLL_PROCESS_ATTACH, 1, 0}, {DLL_THREAD_ATTACH, 0, 1}, {DLL_THREAD_DETACH, 0, -1}, {DLL_PROCESS_DETACH, -1, 0}};
    for (const SharedCounters before : {SharedCounters{1, 0}, {2, 0}, {1, 1}, {0, -1}}) {
        for (const auto& call : calls) {
            const auto module = reinterpret_cast<HINSTANCE>(const_cast<DWORD*>(&call.reason));
            sharedCounters = before;
            const bool isLeft = before.processCount > 1 || before.threadCount > 0;
            EXPECT_EQ(DllMain(module, call.reason, nullptr), call.reason != DLL_PROCESS_DETACH || !isLeft);
            EXPECT_EQ(sharedCounters.processCount, before.processCount + call.processes);
            EXPECT_EQ(sharedCounters.threadCount, before.threadCount + call.threads);
            EXPECT_EQ(TamrixResourceInstance(), module);
        }
    }
    DllMain(own, DLL_THREAD_ATTACH, nullptr);
    sharedCounters = ownCounters;
}

}  // namespace
