// The ABI as an old client uses it: what the binary exports and imports, classes by decorated name and through replaced
// virtual slots, and the counters that processes share. With TAMRIX_SOAK set: 32 processes and 13,000 loads.
#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <vector>

#include "windows/import_hook.h"
#include "windows/shipped_dll.h"
#include "windows/soak.h"

std::string shipped::dllPath;

namespace {

using namespace shipped;
using namespace testing_support;

/// The last words of the lines of a list in the source tree, without its comments.
std::vector<std::string> listed(const char* file) {
    std::ifstream in(TAMRIX_TOP + std::string(file));
    std::vector<std::string> names;
    for (std::string line; std::getline(in, line);)
        if (!line.empty() && line[0] != '#') names.push_back(line.substr(line.rfind(' ') + 1));
    return names;
}

TEST(Binary, ExportsWhatIsListedAndImportsWhatWindows95Has) {
    const auto names = listed("/tests/windows/exports.txt");
    for (const std::string& name : names) EXPECT_NE(GetProcAddress(dll(), name.c_str()), nullptr) << name;
    const DWORD exports = headers()->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress;
    const auto* start = reinterpret_cast<unsigned char*>(dll());
    EXPECT_EQ(reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(start + exports)->NumberOfNames, names.size());
    EXPECT_THAT(listed("/scripts/windows_95_nt4_functions.txt"), testing::IsSupersetOf(importedBy(dll())));
}

TEST(VirtualTables, HoldTheirOperationsInOrder) {
    const std::pair<const char*, std::vector<const char*>> tables[] = {
        {"??_7CBrowseDlg@@6B@", {"?invoke@CBrowseDlg@@UAEHPAXPAD1@Z"}},
        {"??_7CCustomResource@@6B@",
         {"?copyData@CCustomResource@@UAEPAXXZ", "?lock@CCustomResource@@UAEHXZ", "?unlock@CCustomResource@@UAEHXZ"}},
        {"??_7CAboutQuillonAppleTalk@@6B@",
         {"?invoke@CAboutQuillonAppleTalk@@UAEXH@Z", "?revoke@CAboutQuillonAppleTalk@@UAEXXZ",
          "?animate@CAboutQuillonAppleTalk@@MAEXXZ", "?canClose@CAboutQuillonAppleTalk@@MAEHXZ",
          "?doTimer@CAboutQuillonAppleTalk@@MAEXI@Z", "?dialogDestroyed@CAboutQuillonAppleTalk@@MAEXXZ",
          "?initDialog@CAboutQuillonAppleTalk@@MAEXPAX@Z", "?paint@CAboutQuillonAppleTalk@@MAEXPAX@Z",
          "?parseText@CAboutQuillonAppleTalk@@MAEHXZ"}}};
    for (const auto& [table, names] : tables) {
        void** slot = function<void*>(table);  // begins with the destructor, which is not exported in this form
        for (const char* const name : names) EXPECT_EQ(*++slot, function<void>(name)) << name;
    }
}

TEST(Registry, KeepsAMappingAndAKeyInTheirFields) {
    char extension[] = ".tamrix-abi", type[] = "TEXT", creator[] = "TEXT";
    Storage<36> map;
    member("??0CExtensionMap@@QAE@XZ", map);
    member("?SetExtension@CExtensionMap@@QAEXPAD@Z", map, +extension);
    member("?SetType@CExtensionMap@@QAEXPAD@Z", map, +type);
    member("?SetCreator@CExtensionMap@@QAEXPAD@Z", map, +creator);
    EXPECT_EQ(std::string(map.at<char*>(4)) + map.at<char*>(8) + map.at<char*>(12), ".tamrix-abiTEXTTEXT");
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
    EXPECT_TRUE(value.at<DWORD>(4) == REG_SZ && value.at<DWORD>(8) == 5 && !std::strcmp(value.at<char*>(12), "TEXT"));
    member("??1RegValue@@QAE@XZ", value);
    member("??1RegKey@@QAE@XZ", key);
    EXPECT_EQ(member<int>("?Delete@CExtensionMap@@QAEHXZ", map), 1);
    member("??1CExtensionMap@@QAE@XZ", map);
}

std::string resourceCalls;
template <int index>
int __thiscall notedSlot(void* resource) {
    resourceCalls += index == 2 ? "lock " : "unlock ";
    return reinterpret_cast<int(__thiscall*)(void*)>(function<void*>("??_7CCustomResource@@6B@")[index])(resource);
}

TEST(CCustomResource, IsLockedThroughTheSlotsOfADerivedClass) {
    Storage<32> resource;
    Storage<4> guard;
    char type[] = "TEXT";
    member("??0CCustomResource@@QAE@PAXHPAD@Z", resource, static_cast<void*>(dll()), 0x10001, +type);
    void** const table = resource.at<void**>(0);
    void* derived[] = {table[0], table[1], reinterpret_cast<void*>(notedSlot<2>),
                       reinterpret_cast<void*>(notedSlot<3>)};
    resource.at<void**>(0) = derived;
    const HGLOBAL copy = slot<void* __thiscall(void*)>(resource, 1)(resource);
    member("??0AutoCustomResource@@QAE@AAVCCustomResource@@@Z", guard, +resource.bytes);
    EXPECT_EQ(std::memcmp(GlobalLock(copy), resource.at<void*>(8), resource.at<std::size_t>(4)), 0);
    member("??1AutoCustomResource@@QAE@XZ", guard);
    EXPECT_EQ(resourceCalls, "lock unlock lock unlock ");
    GlobalFree(copy);
    slot<void __thiscall(void*, unsigned)>(resource, 0)(resource, 0);
}

std::string shown;
int WINAPI noteMessage(HWND owner, LPCSTR text, LPCSTR caption, UINT) {
    shown = std::string(caption) + " " + text + (owner ? " (owned)" : "");
    return IDOK;
}

TEST(EntryPoint, ReadsTheCodePageTellsTheModuleAndReportsAnUnknownReason) {
    const ImportHook hook(dll(), "user32.dll", "MessageBoxA", reinterpret_cast<const void*>(noteMessage));
    auto* const entry = reinterpret_cast<unsigned char*>(dll()) + headers()->OptionalHeader.AddressOfEntryPoint;
    EXPECT_EQ(reinterpret_cast<BOOL(WINAPI*)(HINSTANCE, DWORD, void*)>(entry)(dll(), 4, nullptr), 1);
    EXPECT_EQ(shown, "Error: Unknown DLL entry reason");
    EXPECT_EQ(function<HINSTANCE()>("TamrixResourceInstance")(), dll());
    EXPECT_EQ(function<int(char)>("isdbchar")('\x81'), IsDBCSLeadByte(0x81));
    char name[16];
    function<int(char*, const char*, unsigned)>("AFPtoOSCopy")(name, "Caf\x8E?", sizeof name);
    EXPECT_STREQ(name, GetACP() == 1252 ? "Caf\xE9[063]" : GetACP() == 1251 ? "Caf\x8E[063]" : name) << "an e acute";
}

constexpr char kReady[] = "Tamrix32 test: attached", kGo[] = "Tamrix32 test: go";

DWORD WINAPI waitToGo(void*) {
    ReleaseSemaphore(OpenSemaphoreA(SEMAPHORE_MODIFY_STATE, FALSE, kReady), 1, nullptr);
    return WaitForSingleObject(OpenEventA(SYNCHRONIZE, FALSE, kGo), INFINITE);
}

DWORD WINAPI endAtOnce(void*) {
    return 0;
}

/// Loads and unloads the library many times while threads come and go, then holds it with one thread more until told.
/// 1 when handles or heap blocks stay more than after the first loads. What the last thread had may go a moment after
/// it has ended.
int runClient(int rounds) {
    LoadLibraryA("winspool.drv");  // comes with the common dialogs, and under Wine leaves a handle open each time
    DWORD handles = 0;
    int blocks = 0;
    for (int i = 0; i < rounds; ++i) {
        const HMODULE module = LoadLibraryA(dllPath.c_str());
        const HANDLE thread = CreateThread(nullptr, 0, endAtOnce, nullptr, 0, nullptr);
        WaitForSingleObject(thread, INFINITE);
        CloseHandle(thread);
        FreeLibrary(module);
        if (i < 100) handles = openHandles(), blocks = heapBlocks();
    }
    bool leaks = true;
    for (int tries = 0; leaks && tries < 100; ++tries) {
        leaks = openHandles() > handles || heapBlocks() > blocks;
        if (leaks) Sleep(20);
    }
    if (!dll()) return 2;
    WaitForSingleObject(CreateThread(nullptr, 0, waitToGo, nullptr, 0, nullptr), INFINITE);
    return leaks;
}

TEST(Counters, AreOffByKilledProcessesAlone) {
    const LONG count = soakRounds(6, 32), killed = count / 3;
    const HANDLE ready = CreateSemaphoreA(nullptr, 0, 99, kReady), go = CreateEventA(nullptr, TRUE, FALSE, kGo);
    const LONG processes = sharedCounters()[0], threads = sharedCounters()[1];
    std::vector<HANDLE> clients;
    for (LONG i = 0; i < count; ++i) {
        STARTUPINFOA start{};
        PROCESS_INFORMATION client{};
        std::string command = GetCommandLineA() + std::string(" --client ") + std::to_string(soakRounds(140, 420));
        CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &client);
        clients.push_back(client.hProcess);
    }
    for (LONG i = 0; i < count; ++i) ASSERT_EQ(WaitForSingleObject(ready, 300000), WAIT_OBJECT_0);
    EXPECT_EQ(sharedCounters()[0] - processes, count);
    EXPECT_EQ(sharedCounters()[1] - threads, count) << "each with one thread that began later";
    for (std::size_t i = 0; i < clients.size(); ++i)
        if (i % 3 == 2) TerminateProcess(clients[i], 9);
    SetEvent(go);
    for (std::size_t i = 0; i < clients.size(); ++i) {
        DWORD code = 99;
        WaitForSingleObject(clients[i], 60000);
        GetExitCodeProcess(clients[i], &code);
        EXPECT_EQ(code, i % 3 == 2 ? 9u : 0u) << "1: handles or blocks were left behind";
    }
    EXPECT_EQ(sharedCounters()[0] - processes, killed);
    EXPECT_EQ(sharedCounters()[1] - threads, killed);
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (argc < 2) return std::fputs("usage: abi DLL\n", stderr), 2;
    dllPath = argv[1];
    return argc == 4 ? runClient(std::atoi(argv[3])) : RUN_ALL_TESTS();
}
