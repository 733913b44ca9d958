// Loading, counting, entry reasons and names, through the shipped DLL.
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "windows/shipped_dll.h"

std::string shipped::dllPath;

namespace {

using namespace shipped;

constexpr char kDoneEvent[] = "Tamrix32 test: attached processes may go";

struct Child {
    PROCESS_INFORMATION process{};
    HANDLE attached = nullptr;
};

/// Starts this program again to load the DLL, say so, and wait.
Child startAttachedProcess(int number) {
    Child child;
    char event[64];
    std::snprintf(event, sizeof event, "Tamrix32 test: attached %d", number);
    child.attached = CreateEventA(nullptr, TRUE, FALSE, event);
    char self[MAX_PATH];
    GetModuleFileNameA(nullptr, self, sizeof self);
    std::string command = "\"" + std::string(self) + "\" \"" + dllPath + "\" --attach " + std::to_string(number);
    STARTUPINFOA start{};
    start.cb = sizeof start;
    EXPECT_TRUE(
        CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &child.process));
    EXPECT_EQ(WaitForSingleObject(child.attached, 20000), WAIT_OBJECT_0) << "child " << number;
    return child;
}

int runAttachedProcess(const char* number) {
    if (!dll()) return 1;
    char event[64];
    std::snprintf(event, sizeof event, "Tamrix32 test: attached %s", number);
    SetEvent(OpenEventA(EVENT_MODIFY_STATE, FALSE, event));
    WaitForSingleObject(OpenEventA(SYNCHRONIZE, FALSE, kDoneEvent), 20000);
    FreeLibrary(dll());
    return 0;
}

TEST(SharedCounters, AreOnePairForAllProcesses) {
    const HANDLE done = CreateEventA(nullptr, TRUE, FALSE, kDoneEvent);
    ASSERT_NE(sharedCounters(), nullptr);
    const LONG before = sharedCounters()[0];
    EXPECT_GE(before, 1);
    std::vector<Child> children;
    for (int i = 0; i < 3; ++i) {
        children.push_back(startAttachedProcess(i));
        EXPECT_EQ(sharedCounters()[0], before + i + 1);
    }
    SetEvent(done);
    for (Child& child : children) WaitForSingleObject(child.process.hProcess, 20000);
    EXPECT_EQ(sharedCounters()[0], before);
}

DWORD WINAPI waitFor(void* event) {
    return WaitForSingleObject(event, 20000);
}

TEST(SharedCounters, FollowThreads) {
    ASSERT_NE(dll(), nullptr);
    const LONG before = sharedCounters()[1];
    HANDLE go = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    HANDLE thread = CreateThread(nullptr, 0, waitFor, go, 0, nullptr);
    for (int i = 0; i < 200 && sharedCounters()[1] == before; ++i) Sleep(10);
    EXPECT_EQ(sharedCounters()[1], before + 1);
    SetEvent(go);
    WaitForSingleObject(thread, 20000);
    for (int i = 0; i < 200 && sharedCounters()[1] != before; ++i) Sleep(10);
    EXPECT_EQ(sharedCounters()[1], before);
}

using Entry = BOOL WINAPI(HINSTANCE, DWORD, void*);

Entry* entryPoint() {
    auto* base = reinterpret_cast<unsigned char*>(dll());
    const auto* headers =
        reinterpret_cast<IMAGE_NT_HEADERS*>(base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
    return reinterpret_cast<Entry*>(base + headers->OptionalHeader.AddressOfEntryPoint);
}

struct SeenBox {
    std::string caption, text;
    bool owned = true;
};

/// Waits for the message box, notes what it says, and presses its button.
DWORD WINAPI pressOk(void* seen) {
    auto& box = *static_cast<SeenBox*>(seen);
    for (int i = 0; i < 500; ++i, Sleep(20)) {
        const HWND window = FindWindowA("#32770", "Error:");
        if (!window || !IsWindowVisible(window)) continue;
        char text[128] = "";
        GetWindowTextA(window, text, sizeof text);
        box.caption = text;
        const HWND label = GetDlgItem(window, 0xFFFF);
        GetWindowTextA(label, text, sizeof text);
        box.text = text;
        box.owned = GetWindow(window, GW_OWNER) != nullptr;
        PostMessageA(window, WM_COMMAND, IDOK, 0);
        return 0;
    }
    return 1;
}

TEST(EntryPoint, ShowsAMessageForAnUnknownReason) {
    ASSERT_NE(dll(), nullptr);
    SeenBox box;
    HANDLE thread = CreateThread(nullptr, 0, pressOk, &box, 0, nullptr);
    EXPECT_EQ(entryPoint()(dll(), 4, nullptr), 1);
    WaitForSingleObject(thread, 20000);
    EXPECT_EQ(box.caption, "Error:");
    EXPECT_EQ(box.text, "Unknown DLL entry reason");
    EXPECT_FALSE(box.owned);
}

TEST(EntryPoint, TellsItsModule) {
    EXPECT_EQ(function<HINSTANCE()>("TamrixResourceInstance")(), dll());
}

struct NameCase {
    const char* mac;
    const char* windows;
    const char* why;
};

void expectBothWays(const NameCase& name) {
    char buffer[256];
    const int length = function<int(char*, const char*, unsigned)>("AFPtoOSCopy")(buffer, name.mac, sizeof buffer);
    EXPECT_EQ(length, static_cast<int>(std::strlen(name.windows)) + 1) << name.why;
    EXPECT_STREQ(buffer, name.windows) << name.why;
    const int back = function<int(char*, const char*, unsigned)>("OStoAFPCopy")(buffer, name.windows, sizeof buffer);
    EXPECT_EQ(back, static_cast<int>(std::strlen(name.mac)) + 1) << name.why;
    EXPECT_STREQ(buffer, name.mac) << name.why;
}

bool isDoubleByte() {
    return GetACP() == 932 || GetACP() == 936 || GetACP() == 949 || GetACP() == 950;
}

TEST(Names, TranslateInTheProcessCodePage) {
    expectBothWays({"Q1: Budget?", "Q1[058] Budget[063]", "reserved characters"});
    expectBothWays({"Icon\r", "Icon[013]", "the name of a folder's icon file ends in a carriage return"});
    expectBothWays({"Report.", "Report[046]", "Windows drops a final period"});
    if (isDoubleByte()) {
        // 95 5C is a character in all four code pages; its trail byte is a backslash's.
        expectBothWays({"\x95\x5C.", "\x95\x5C[046]", "a final period behind a double-byte character"});
        // So is 83 83: its trail byte has a lead byte's value.
        expectBothWays({"\x83\x83.", "\x83\x83.", "a final period behind a byte of a lead byte's value stays"});
        expectBothWays({"\x95\x5C:", "\x95\x5C[058]", "a trail byte is no separator"});
    } else if (GetACP() == 1252 && (GetOEMCP() == 437 || GetOEMCP() == 850)) {
        expectBothWays({"Caf\x8E", "Caf\xE9", "e acute is 8E on the Macintosh, E9 on Windows"});
        expectBothWays({"\x87\x88", "[135]\xE0", "87 is in the default set, 88 is not"});
    } else if (GetACP() == 1251) {
        expectBothWays({"\x87\x8E", "[135]\x8E", "without the table bytes stay, the quote set is the same"});
    } else {
        GTEST_FAIL() << "no expectation for code page " << GetACP();
    }
}

TEST(Strings, StepOverDoubleByteCharacters) {
    char out[4];
    const auto bufStrCpy = function<int(char*, const char*, int)>("BufStrCpy");
    const int copied = bufStrCpy(out, "a\x81\x5C\x81\x5C", sizeof out);
    EXPECT_EQ(copied, 3);
    EXPECT_EQ(function<int(char)>("isdbchar")('\x81'), isDoubleByte());
    EXPECT_EQ(bufStrCpy(out, "a\x81\x5C", 3), isDoubleByte() ? 1 : 2);
}

}  // namespace

int runChurn(int seed);
int runReload(int times);

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (argc < 2) return std::fputs("usage: shipped_dll DLL\n", stderr), 2;
    shipped::dllPath = argv[1];
    if (argc == 4 && std::strcmp(argv[2], "--attach") == 0) return runAttachedProcess(argv[3]);
    if (argc == 4 && std::strcmp(argv[2], "--churn") == 0) return runChurn(std::atoi(argv[3]));
    if (argc == 4 && std::strcmp(argv[2], "--reload") == 0) return runReload(std::atoi(argv[3]));
    return RUN_ALL_TESTS();
}
