// Each slot of the import table leads to a few bytes of machine code that know their import's number. They ask
// beforeCall() where to go on; where the result matters, the call returns to afterCall() first, which also learns how
// many bytes of arguments the function takes from the stack: a failing call has to take as many.
#include "windows/calls.h"

#include <cstring>
#include <deque>
#include <vector>

namespace calls {
namespace {

/// Functions that take something, or give it back, and the argument that names it.
constexpr int kResult = -1;
struct Transfer {
    const char* thing;
    int place;
    bool gives;
};
const std::map<std::string, Transfer> kTransfers = {
    {"RegOpenKeyExA", {"key", 4, false}},
    {"RegCreateKeyA", {"key", 2, false}},
    {"RegCreateKeyExA", {"key", 7, false}},
    {"RegCloseKey", {"key", 0, true}},
    {"CreateCompatibleBitmap", {"object", kResult, false}},
    {"CreateFontA", {"object", kResult, false}},
    {"CreatePalette", {"object", kResult, false}},
    {"CreateSolidBrush", {"object", kResult, false}},
    {"DeleteObject", {"object", 0, true}},
    {"CreateCompatibleDC", {"context", kResult, false}},
    {"DeleteDC", {"context", 0, true}},
    {"GetDC", {"screen", kResult, false}},
    {"ReleaseDC", {"screen", 1, true}},
    {"BeginPaint", {"painting", 0, false}},
    {"EndPaint", {"painting", 0, true}},
    {"GlobalAlloc", {"block", kResult, false}},
    {"GlobalFree", {"block", 0, true}},
    {"GlobalLock", {"lock", 0, false}},
    {"GlobalUnlock", {"lock", 0, true}},
    {"malloc", {"memory", kResult, false}},
    {"free", {"memory", 0, true}},
    {"SetTimer", {"timer", 0, false}},
    {"DestroyWindow", {"window", 0, true}},
};
/// What a function that fails gives, where that is not 0; all of the registry's give an error's number.
const std::map<std::string, ULONG_PTR> kFailures = {
    {"RealizePalette", GDI_ERROR},
    {"SetTextColor", CLR_INVALID},
    {"MulDiv", ULONG_PTR(-1)},
    {"DialogBoxParamA", ULONG_PTR(-1)},
    {"DialogBoxIndirectParamA", ULONG_PTR(-1)},
    {"SendMessageA", ULONG_PTR(LB_ERR)},
    {"SendDlgItemMessageA", ULONG_PTR(LB_ERR)},
    {"GlobalFree", 1},
};
const std::set<std::string> kInfallible = {
    "abort",          "free",     "memchr",          "memmove",        "memcpy",   "memset",
    "rand",           "srand",    "strcat",          "strchr",         "strcmp",   "strcpy",
    "strlen",         "strncpy",  "strrchr",         "time",           "GetOEMCP", "IsDBCSLeadByte",
    "DefWindowProcA", "IsWindow", "IsWindowVisible", "GetWindowLongA", "GetPropA", "RemovePropA"};

struct Import {
    std::string name;
    ULONG_PTR* slot;
    const void* target;
    unsigned char* code;
    const Transfer* transfer;
    ULONG_PTR failure;
};
std::deque<Import> imports;

struct Pending {
    Import* import;
    ULONG_PTR* frame;  // the return address, then the arguments
    ULONG_PTR returnsTo;
    ULONG_PTR named;  // by the argument that names what it takes; the stack above the caller's is gone afterwards
    bool failing;
};

struct {
    DWORD thread;
    Plan plan;
    std::map<std::string, int> counts;
    std::multiset<std::pair<std::string, ULONG_PTR>> held, strays;
    bool hasFailed, isLooking;
    std::vector<Pending> pending;
} now;

bool isNobodys(ULONG_PTR thing) {
    return thing == 0 || (thing & 0xFFFFFFF0) == 0x80000000;  // the registry's roots
}

void giveBack(const std::string& thing, ULONG_PTR value) {
    const auto held = now.held.find({thing, value});
    if (held != now.held.end())
        now.held.erase(held);
    else if (!isNobodys(value) && thing != "window")  // windows are counted where they are
        now.strays.insert({thing, value});
}

void take(const Pending& call, ULONG_PTR result) {
    const Transfer& transfer = *call.import->transfer;
    const bool isKey = !std::strcmp(transfer.thing, "key");
    if ((result == 0) != isKey) return;
    const ULONG_PTR named = transfer.place == kResult ? result : call.named;
    const ULONG_PTR value = isKey ? *reinterpret_cast<ULONG_PTR*>(named) : named;
    if (!isNobodys(value) || transfer.place == 0) now.held.insert({transfer.thing, value});
}

extern "C" {
[[gnu::naked]] void leaveCall() {
    // The result and a place for the return address are below what the caller had on its stack.
    asm("push %eax; push %eax; push %esp; call _afterCall; add $4, %esp; pop %eax; ret");
}

[[gnu::naked]] void enterCall() {
    asm("lea 4(%esp), %eax; push %eax; push 4(%esp); call _beforeCall; add $12, %esp; jmp *%eax");
}

[[gnu::used]] void afterCall(ULONG_PTR* returned) {
    const Pending call = now.pending.back();
    now.pending.pop_back();
    const auto taken = static_cast<unsigned short>((returned + 2 - (call.frame + 1)) * sizeof(ULONG_PTR));
    std::memcpy(call.import->code + 22, &taken, sizeof taken);
    if (call.import->transfer && !call.import->transfer->gives) take(call, returned[0]);
    if (call.failing) returned[0] = call.import->failure;
    returned[1] = call.returnsTo;
}

[[gnu::used]] const void* beforeCall(unsigned index, ULONG_PTR* frame) {
    Import& import = imports[index];
    if (GetCurrentThreadId() != now.thread) return import.target;
    const bool fails = ++now.counts[import.name] == now.plan.nth && import.name == now.plan.failing;
    if (now.plan.before && !now.isLooking) {
        now.isLooking = true;
        now.plan.before({import.name, frame + 1});
        now.isLooking = false;
    }
    now.hasFailed = now.hasFailed || fails;
    const ULONG_PTR named = import.transfer ? frame[1 + import.transfer->place] : 0;
    const bool gives = import.transfer && import.transfer->gives;
    if (gives) giveBack(import.transfer->thing, named);
    if (fails && !gives) return import.code + 16;
    now.pending.push_back({&import, frame, frame[0], named, fails});
    frame[0] = reinterpret_cast<ULONG_PTR>(leaveCall);
    return import.target;
}
}

/// `push index; jmp enterCall`, and 16 bytes on `mov eax, failure; ret arguments`.
void writeCode(Import& import, ULONG_PTR index) {
    const auto put = [&](int at, unsigned char operation, ULONG_PTR operand) {
        import.code[at] = operation;
        std::memcpy(import.code + at + 1, &operand, sizeof operand);
    };
    put(0, 0x68, index);
    put(5, 0xE9, reinterpret_cast<ULONG_PTR>(enterCall) - reinterpret_cast<ULONG_PTR>(import.code + 10));
    put(16, 0xB8, import.failure);
    put(21, 0xC2, 0);
    DWORD protection;
    VirtualProtect(import.slot, sizeof *import.slot, PAGE_READWRITE, &protection);
    *import.slot = reinterpret_cast<ULONG_PTR>(import.code);
}

void hookImport(const char* name, ULONG_PTR* slot) {
    constexpr int kCodeSize = 32;
    static auto* code =
        static_cast<unsigned char*>(VirtualAlloc(nullptr, 1000 * kCodeSize, MEM_COMMIT, PAGE_EXECUTE_READWRITE));
    const auto transfer = kTransfers.find(name);
    const auto failure = kFailures.find(name);
    const ULONG_PTR usual = std::strncmp(name, "Reg", 3) || !std::strncmp(name, "Register", 8) ? 0 : ERROR_OUTOFMEMORY;
    imports.push_back({name, slot, reinterpret_cast<void*>(*slot), code + imports.size() * kCodeSize,
                       transfer == kTransfers.end() ? nullptr : &transfer->second,
                       failure == kFailures.end() ? usual : failure->second});
    writeCode(imports.back(), imports.size() - 1);
}

Import& importOf(const std::string& name) {
    for (Import& import : imports)
        if (import.name == name) return import;
    std::abort();
}

}  // namespace

void hook(HMODULE module) {
    if (!imports.empty()) return;
    auto* const base = reinterpret_cast<BYTE*>(module);
    const auto* headers =
        reinterpret_cast<IMAGE_NT_HEADERS*>(base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const DWORD table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + table); library->Name; ++library) {
        auto* name = reinterpret_cast<ULONG_PTR*>(base + library->OriginalFirstThunk);
        auto* slot = reinterpret_cast<ULONG_PTR*>(base + library->FirstThunk);
        for (; *name; ++name, ++slot) hookImport(reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + *name)->Name, slot);
    }
}

void replace(const std::string& name, const void* answering) {
    importOf(name).target = answering;
}

void* imported(const std::string& name) {
    return importOf(name).code;
}

bool canFail(const std::string& name) {
    return kInfallible.count(name) == 0;
}

Watch::Watch(Plan plan) {
    now = {GetCurrentThreadId(), std::move(plan), {}, {}, {}, false, false, {}};
}

Watch::~Watch() {
    now.thread = 0;
}

const std::map<std::string, int>& Watch::counts() const {
    return now.counts;
}

bool Watch::hasFailed() const {
    return now.hasFailed;
}

std::string Watch::uneven() const {
    std::string words;
    for (const auto& [thing, value] : now.held)
        // A timer goes with its window.
        if (thing != "timer" || !value || IsWindow(reinterpret_cast<HWND>(value))) words += thing + " ";
    for (const auto& [thing, value] : now.strays) words += "stray " + thing + " ";
    return words;
}

}  // namespace calls
