// The ABI as an old client uses it: classes by decorated name and through replaced virtual slots, the entry point, and
// the counters that processes share. With TAMRIX_SOAK set: 32 processes and 13,000 loads.
#include <cstdlib>
#include <thread>
#include <vector>

#include "windows/shipped_dll.h"
#include "windows/soak.h"

namespace {

using namespace shipped;
using namespace testing_support;

TEST(Registry, KeepsAMappingAndAKeyInTheirFields) {
    char extension[] = ".tamrix-abi", code[] = "TEXT";
    Storage<36> map;
    member("??0CExtensionMap@@QAE@XZ", map);
    member("?SetExtension@CExtensionMap@@QAEXPAD@Z", map, +extension);
    member("?SetType@CExtensionMap@@QAEXPAD@Z", map, +code);
    member("?SetCreator@CExtensionMap@@QAEXPAD@Z", map, +code);
    EXPECT_EQ(map.at<char*>(4) + std::string(map.at<char*>(8)) + map.at<char*>(12), ".tamrix-abiTEXTTEXT");
    EXPECT_EQ(member<int>("?Create@CExtensionMap@@QAEHXZ", map), 1);

    Storage<24> key;
    Storage<16> value;
    member("??0RegKey@@QAE@XZ", key);
    member("??0RegValue@@QAE@XZ", value);
    EXPECT_EQ(member<int>("?Opened@RegKey@@QAEHXZ", nullptr), 0) << "old clients ask a null key";
    EXPECT_EQ(member<int>("?Open@RegKey@@QAEHPAUHKEY__@@PBD@Z", key, HKEY_CLASSES_ROOT, +extension), 1);
    EXPECT_EQ(member<int>("?FirstValue@RegKey@@QAEHPAVRegValue@@@Z", key, +value.bytes), 1);
    EXPECT_TRUE(key.at<HKEY>(0) == HKEY_CLASSES_ROOT && !std::strcmp(key.at<char*>(4), extension) && key.at<HKEY>(8));
    EXPECT_TRUE(key.at<int>(16) == 1 && key.at<int>(20) == 1) << "the place of the next value; open";
    EXPECT_TRUE(value.at<DWORD>(4) == REG_SZ && value.at<DWORD>(8) == 5 && !std::strcmp(value.at<char*>(12), code));
    member("??1RegValue@@QAE@XZ", value);
    member("??1RegKey@@QAE@XZ", key);
    EXPECT_EQ(member<int>("?Delete@CExtensionMap@@QAEHXZ", map), 1);
    member("??1CExtensionMap@@QAE@XZ", map);
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
    const HGLOBAL copy = slot<void* __thiscall(void*)>(resource, 1)(resource);
    member("??0AutoCustomResource@@QAE@AAVCCustomResource@@@Z", guard, +resource.bytes);
    EXPECT_EQ(std::memcmp(GlobalLock(copy), resource.at<void*>(8), resource.at<std::size_t>(4)), 0);
    member("??1AutoCustomResource@@QAE@XZ", guard);
    EXPECT_EQ(slotCalls, "12323") << "copyData, lock, unlock; lock, unlock";
    GlobalFree(copy);
    slot<void __thiscall(void*, unsigned)>(resource, 0)(resource, 0);
}

TEST(EntryPoint, ReadsTheCodePageAndTellsTheModule) {
    EXPECT_EQ(function<HINSTANCE()>("TamrixResourceInstance")(), dll());
    EXPECT_EQ(function<int(char)>("isdbchar")('\x81'), IsDBCSLeadByte(0x81));
    char name[16];
    function<int(char*, const char*, unsigned)>("AFPtoOSCopy")(name, "Caf\x8E?", sizeof name);
    EXPECT_STREQ(name, GetACP() == 1252 ? "Caf\xE9[063]" : GetACP() == 1251 ? "Caf\x8E[063]" : name) << "an e acute";
}

TEST(EntryPoint, TakesTheHelpWindowsClassAlongWhileTheProcessGoesOn) {
    Storage<24> dialog;
    WNDCLASSA found;
    member("??0CBrowseDlg@@QAE@HHPAXHHHPAD@Z", dialog, 0, 0, nullptr, 0, 0, 7, dllPath.data());
    EXPECT_TRUE(GetClassInfoA(dll(), "browseHelper", &found));
    enter(DLL_PROCESS_DETACH, &found);
    EXPECT_TRUE(GetClassInfoA(dll(), "browseHelper", &found)) << "when the process ends nothing is called";
    enter(DLL_PROCESS_DETACH);
    EXPECT_FALSE(GetClassInfoA(dll(), "browseHelper", &found));
    for (int attachments = 0; attachments < 2; ++attachments) enter(DLL_PROCESS_ATTACH);
}

/// The two counters, found as the section that the DLL shares among all processes: processes, threads.
volatile LONG* sharedCounters() {
    const IMAGE_SECTION_HEADER* section = IMAGE_FIRST_SECTION(headers());
    while (!(section->Characteristics & IMAGE_SCN_MEM_SHARED)) ++section;
    return reinterpret_cast<volatile LONG*>(reinterpret_cast<unsigned char*>(dll()) + section->VirtualAddress);
}

constexpr char kReady[] = "Tamrix32 test: attached", kGo[] = "Tamrix32 test: go";

/// Loads and unloads the library, with its font, many times while threads come and go, then holds it with one thread
/// more until told. 1 when handles or heap blocks stay more than after the first loads. What the last thread had may go
/// a moment after it has ended.
int runClient(int rounds) {
    LoadLibraryA("winspool.drv");  // comes with the common dialogs, and under Wine leaves a handle open each time
    DWORD handles = 0;
    int blocks = 0;
    for (int i = 0; i < rounds; ++i) {
        const HMODULE module = LoadLibraryA(dllPath.c_str());
        std::thread([] {}).join();
        FreeLibrary(module);
        if (i < 100) handles = openHandles(), blocks = heapBlocks();
    }
    const auto leaks = [&] { return openHandles() > handles || heapBlocks() > blocks; };
    for (int tries = 0; leaks() && tries < 100; ++tries) Sleep(20);
    const bool hasLeaked = leaks();
    std::printf("%d loads: %lu handles, then %lu; %d blocks, then %d\n", rounds, handles, openHandles(), blocks,
                heapBlocks());
    if (!dll()) return 2;
    std::thread([] {
        ReleaseSemaphore(OpenSemaphoreA(SEMAPHORE_MODIFY_STATE, FALSE, kReady), 1, nullptr);
        WaitForSingleObject(OpenEventA(SYNCHRONIZE, FALSE, kGo), INFINITE);
    }).join();
    return hasLeaked;
}

TEST(Counters, AreOffByKilledProcessesAlone) {
    const LONG count = soakRounds(6, 32), killed = count / 3;
    const HANDLE ready = CreateSemaphoreA(nullptr, 0, 99, kReady), go = CreateEventA(nullptr, TRUE, FALSE, kGo);
    const LONG processes = sharedCounters()[0], threads = sharedCounters()[1];
    std::vector<HANDLE> clients(count);
    for (HANDLE& client : clients) client = startAgain("--client " + std::to_string(soakRounds(140, 420)));
    for (LONG i = 0; i < count; ++i) ASSERT_EQ(WaitForSingleObject(ready, 300000), WAIT_OBJECT_0);
    EXPECT_EQ(sharedCounters()[0] - processes, count);
    EXPECT_EQ(sharedCounters()[1] - threads, count) << "each with one thread that began later";
    for (LONG i = 0; i < killed; ++i) TerminateProcess(clients[i], 9);
    SetEvent(go);
    for (LONG i = 0; i < count; ++i)
        EXPECT_EQ(exitCode(clients[i]), i < killed ? 9u : 0u) << "1: handles or blocks were left behind";
    EXPECT_EQ(sharedCounters()[0] - processes, killed);
    EXPECT_EQ(sharedCounters()[1] - threads, killed);
}

}  // namespace

int main(int argc, char** argv) {
    begin(argc, argv);
    return argc == 4 ? runClient(std::atoi(argv[3])) : RUN_ALL_TESTS();
}
