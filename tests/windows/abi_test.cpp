// The ABI as an old client uses it: virtual functions through replaced slots, and the counters that all processes
// share. The programs in the guides use the classes of the registry and of mappings by decorated name, the suites of
// the dialogs those of the dialogs. With TAMRIX_SOAK set: 32 processes and 13,000 loads.
#include <process.h>

#include <cstdlib>
#include <thread>
#include <vector>

#include "windows/shipped_dll.h"

namespace {

using namespace shipped;

TEST(RegKey, CanBeAskedThroughANullPointer) {
    EXPECT_EQ(member<int>("?Opened@RegKey@@QAEHXZ", nullptr), 0);
}

std::string slotCalls;
template <int index>
int __thiscall notedSlot(void* resource) {
    slotCalls += std::to_string(index);
    return reinterpret_cast<int(__thiscall*)(void*)>(function<void*>("??_7CCustomResource@@6B@")[index])(resource);
}

TEST(CCustomResource, IsLockedThroughTheSlotsOfADerivedClass) {
    Storage<32> resource;
    Storage<4> guard;
    char type[] = "TEXT";
    member("??0CCustomResource@@QAE@PAXHPAD@Z", resource, static_cast<void*>(dll()), 0x10001, +type);
    void* slots[] = {slot<void>(resource, 0), reinterpret_cast<void*>(notedSlot<1>),
                     reinterpret_cast<void*>(notedSlot<2>), reinterpret_cast<void*>(notedSlot<3>)};
    resource.at<void**>(0) = slots;
    GlobalFree(slot<void* __thiscall(void*)>(resource, 1)(resource));
    member("??0AutoCustomResource@@QAE@AAVCCustomResource@@@Z", guard, +resource.bytes);
    member("??1AutoCustomResource@@QAE@XZ", guard);
    EXPECT_EQ(slotCalls, "12323") << "copyData, lock, unlock; lock, unlock";
    slot<void __thiscall(void*, unsigned)>(resource, 0)(resource, 0);
}

/// The two counters, processes and threads, at the start of the section that all processes share.
volatile LONG* sharedCounters() {
    const IMAGE_SECTION_HEADER* section = IMAGE_FIRST_SECTION(headers());
    while (!(section->Characteristics & IMAGE_SCN_MEM_SHARED)) ++section;
    return reinterpret_cast<volatile LONG*>(reinterpret_cast<unsigned char*>(dll()) + section->VirtualAddress);
}

constexpr char kReady[] = "Tamrix32 test: attached", kGo[] = "Tamrix32 test: go";

/// Loads and unloads the library many times while threads start and end, then keeps it loaded with one more thread
/// until told to go on.
int runClient(int rounds) {
    for (; rounds > 0; --rounds) {
        const HMODULE module = LoadLibraryA(dllPath.c_str());
        std::thread([] {}).join();
        FreeLibrary(module);
    }
    if (!dll()) return 1;
    std::thread([] {
        ReleaseSemaphore(OpenSemaphoreA(SEMAPHORE_MODIFY_STATE, FALSE, kReady), 1, nullptr);
        WaitForSingleObject(OpenEventA(SYNCHRONIZE, FALSE, kGo), INFINITE);
    }).join();
    return 0;
}

TEST(Counters, AreOffByKilledProcessesAlone) {
    const bool isSoak = std::getenv("TAMRIX_SOAK");
    const LONG count = isSoak ? 32 : 6, killed = count / 3;
    const HANDLE ready = CreateSemaphoreA(nullptr, 0, count, kReady), go = CreateEventA(nullptr, TRUE, FALSE, kGo);
    const LONG processes = sharedCounters()[0], threads = sharedCounters()[1];
    std::vector<intptr_t> clients(count);
    for (intptr_t& client : clients)
        client = _spawnl(_P_NOWAIT, _pgmptr, _pgmptr, dllPath.c_str(), isSoak ? "420" : "140", nullptr);
    for (LONG i = 0; i < count; ++i) ASSERT_EQ(WaitForSingleObject(ready, 300000), WAIT_OBJECT_0);
    EXPECT_EQ(sharedCounters()[0] - processes, count);
    EXPECT_EQ(sharedCounters()[1] - threads, count) << "each with one thread that began later";
    for (LONG i = 0; i < killed; ++i) TerminateProcess(reinterpret_cast<HANDLE>(clients[i]), 9);
    SetEvent(go);
    for (LONG i = 0; i < count; ++i) {
        int code = 1;
        _cwait(&code, clients[i], 0);
        EXPECT_EQ(code, i < killed ? 9 : 0);
    }
    EXPECT_EQ(sharedCounters()[0] - processes, killed);
    EXPECT_EQ(sharedCounters()[1] - threads, killed);
}

}  // namespace

int main(int argc, char** argv) {
    begin(argc, argv);
    return argc == 3 ? runClient(std::atoi(argv[2])) : RUN_ALL_TESTS();
}
