// Each slot of the import table points to an entry of machine code, whose address tells which import it is. All entries
// call forward(), which calls the function with a copy of the arguments. That shows how many bytes of arguments the
// function removes from the stack; a failing call removes as many and does nothing else.
#include "windows/calls.h"

#include <algorithm>
#include <set>
#include <vector>

#include "windows/shipped_dll.h"

namespace calls {
namespace {

/// Functions that take something, and those that give it back.
const std::map<std::string, std::string> kTaking = {{"RegOpenKeyExA", "RegCloseKey"},
                                                    {"RegCreateKeyA", "RegCloseKey"},
                                                    {"RegCreateKeyExA", "RegCloseKey"},
                                                    {"CreateCompatibleBitmap", "DeleteObject"},
                                                    {"CreateFontA", "DeleteObject"},
                                                    {"CreatePalette", "DeleteObject"},
                                                    {"CreateSolidBrush", "DeleteObject"},
                                                    {"CreateCompatibleDC", "DeleteDC"},
                                                    {"GetDC", "ReleaseDC"},
                                                    {"BeginPaint", "EndPaint"},
                                                    {"GlobalAlloc", "GlobalFree"},
                                                    {"GlobalLock", "GlobalUnlock"},
                                                    {"malloc", "free"}};
/// The argument that identifies what is taken or given back, unless the result does.
const std::map<std::string, int> kNaming = {{"RegOpenKeyExA", 4}, {"RegCreateKeyA", 2}, {"RegCreateKeyExA", 7},
                                            {"BeginPaint", 0},    {"GlobalLock", 0},    {"RegCloseKey", 0},
                                            {"DeleteObject", 0},  {"DeleteDC", 0},      {"ReleaseDC", 1},
                                            {"EndPaint", 0},      {"GlobalFree", 0},    {"GlobalUnlock", 0},
                                            {"free", 0}};

/// Functions that return all bits set if they fail; others return 0, those of the registry an error code.
const std::set<std::string> kFailingWithOnes = {
    "RealizePalette", "SetTextColor",        "MulDiv",    "DialogBoxParamA", "DialogBoxIndirectParamA",
    "SendMessageA",   "SendDlgItemMessageA", "GlobalFree"};

ULONG_PTR failureOf(const std::string& name) {
    const bool isRegistrys = name.starts_with("Reg") && !name.starts_with("Register");
    return kFailingWithOnes.count(name) ? ~ULONG_PTR(0) : isRegistrys ? ERROR_OUTOFMEMORY : 0;
}

using Code = void();
struct Import {
    std::string name;
    Code* target;
    ULONG_PTR argumentBytes;  // known once it has returned
};
std::vector<Import> hooked;

struct {
    DWORD thread;
    Plan plan;
    std::map<std::string, int> counts;
    std::map<std::pair<std::string, ULONG_PTR>, int> held;  // by what gives it back
    bool isLooking;
} now;

/// The registry's roots, with handles from 80000000 to 8000000F, are not owned.
void hold(const std::string& givenBackBy, ULONG_PTR value, int change) {
    if (value && value >> 4 != 0x8000000) now.held[{givenBackBy, value}] += change;
}

/// What a call leaves: in this order, the registers eax and edx.
struct Outcome {
    ULONG_PTR result, argumentBytes;
};

extern "C" {
constexpr int kEntrySize = 16;
extern char entries[];
asm(".balign 16\n _entries: .rept 400\n call _enter\n .balign 16\n .endr");

[[gnu::naked, gnu::used]] void enter() {
    asm("lea 4(%esp), %eax; push %eax; push 4(%esp); call _forward; add $12, %esp\n"
        "pop %ecx; add %edx, %esp; jmp *%ecx");
}

/// Calls a function on a copy of 16 words of arguments.
[[gnu::naked]] Outcome callOnCopy(Code*, const ULONG_PTR*) {
    asm("push %ebp; mov %esp, %ebp; push %esi; push %edi\n"
        "mov 12(%ebp), %esi; sub $64, %esp; mov %esp, %edi; mov $16, %ecx; rep movsl\n"
        "mov %esp, %esi; call *8(%ebp); mov %esp, %edx; sub %esi, %edx\n"
        "lea -8(%ebp), %esp; pop %edi; pop %esi; pop %ebp; ret");
}

[[gnu::used]] Outcome forward(const char* entry, const ULONG_PTR* frame) {
    Import& import = hooked[(entry - entries) / kEntrySize];
    const ULONG_PTR* const arguments = frame + 1;
    if (GetCurrentThreadId() != now.thread) return callOnCopy(import.target, arguments);
    const bool fails = ++now.counts[import.name] == now.plan.nth && import.name == now.plan.failing;
    if (!std::exchange(now.isLooking, true)) {
        now.plan.before({import.name, arguments});
        now.isLooking = false;
    }
    const auto taking = kTaking.find(import.name);
    const auto naming = kNaming.find(import.name);
    const bool givesBack = taking == kTaking.end() && naming != kNaming.end();
    if (fails && !givesBack) return {failureOf(import.name), import.argumentBytes};
    const ULONG_PTR argument = naming != kNaming.end() ? arguments[naming->second] : 0;
    if (givesBack) hold(import.name, argument, -1);
    Outcome outcome = callOnCopy(import.target, arguments);
    import.argumentBytes = outcome.argumentBytes;
    if (taking != kTaking.end()) {
        const bool isKey = taking->second == "RegCloseKey";
        const ULONG_PTR named = naming == kNaming.end() ? outcome.result : argument;
        if (isKey == (outcome.result == 0))
            hold(taking->second, isKey ? *reinterpret_cast<const ULONG_PTR*>(named) : named, 1);
    }
    if (fails) outcome.result = failureOf(import.name);
    return outcome;
}
}

}  // namespace

void hook() {
    auto* const base = reinterpret_cast<BYTE*>(shipped::dll());
    const auto& table = shipped::headers()->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + table.VirtualAddress);
    for (; library->Name; ++library) {
        const auto* name = reinterpret_cast<ULONG_PTR*>(base + library->OriginalFirstThunk);
        auto* slot = reinterpret_cast<Code**>(base + library->FirstThunk);
        for (DWORD protection; *name; ++name, ++slot) {
            auto* const entry = reinterpret_cast<Code*>(entries + kEntrySize * hooked.size());
            VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
            const auto* const byName = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + *name);
            hooked.push_back({byName->Name, std::exchange(*slot, entry), 0});
        }
    }
}

void replace(const std::string& name, const void* answering) {
    std::ranges::find(hooked, name, &Import::name)->target = reinterpret_cast<Code*>(const_cast<void*>(answering));
}

std::map<std::string, int> watch(Plan plan, const std::function<void()>& run) {
    now = {GetCurrentThreadId(), std::move(plan), {}, {}, false};
    for (const Import& import : hooked) now.counts[import.name] = 0;
    run();
    now.thread = 0;
    for (const auto& [thing, times] : now.held)
        EXPECT_EQ(times, 0) << "for " << thing.first << ": more is kept, or less";
    return now.counts;
}

}  // namespace calls
