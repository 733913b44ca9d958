#include "windows/failing_imports.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <type_traits>

namespace failing_imports {
namespace {

struct {
    const Import* failing;
    int callsLeft;  // until the one that fails
    bool hasFailed;
    std::map<Thing, int> kept;
} plan;

bool isDue(const Import& import) {
    if (plan.failing != &import || plan.callsLeft == 0 || --plan.callsLeft > 0) return false;
    return plan.hasFailed = true;
}

/// Whether this is something to give back: the registry's roots and null are nobody's.
template <typename Argument>
bool isOwned(Argument argument) {
    const auto value = (ULONG_PTR)argument;
    return value != 0 && (value & 0xFFFFFFF0) != 0x80000000;
}

/// The function that stands in an import's place. `index` is its place in all().
template <int index, class Function>
struct Replacement;

template <int index, class Result, class Function, class... Arguments>
struct ReplacementOf {
    static inline Function original;

    static Result run(Arguments... arguments) {
        const Import& import = all()[index];
        const bool fails = isDue(import);
        bool changes = import.change > 0;
        if constexpr (sizeof...(Arguments) > 0) changes = changes || (isOwned(arguments) || ...);
        if constexpr (std::is_void_v<Result>) {
            plan.kept[import.thing] += changes ? import.change : 0;
            original(arguments...);
        } else {
            const auto failure = (Result)import.failure;
            if (fails && import.change >= 0) return failure;
            const Result result = original(arguments...);
            // Unlocking gives 0 both where it was the last lock and where there was none.
            const bool succeeded = (import.failure ? result == Result() : result != Result()) ||
                                   (import.thing == Thing::lock && import.change < 0);
            plan.kept[import.thing] += changes && succeeded ? import.change : 0;
            return fails ? failure : result;
        }
    }
};

template <int index, class Result, class... Arguments>
struct Replacement<index, Result(WINAPI*)(Arguments...)> {
    using Kept = ReplacementOf<index, Result, Result(WINAPI*)(Arguments...), Arguments...>;
    static Result WINAPI call(Arguments... arguments) { return Kept::run(arguments...); }
};

template <int index, class Result, class... Arguments>
struct Replacement<index, Result(__cdecl*)(Arguments...)> {
    using Kept = ReplacementOf<index, Result, Result(__cdecl*)(Arguments...), Arguments...>;
    static Result __cdecl call(Arguments... arguments) { return Kept::run(arguments...); }
};

template <int index, class Function>
Import makeImport(const char* library, const char* name, LONG_PTR failure, Thing thing, int change) {
    using Replaced = Replacement<index, Function>;
    using Original = decltype(Replaced::Kept::original);
    return {library, name, failure, thing, change, reinterpret_cast<const void*>(&Replaced::call), [](void* original) {
                Replaced::Kept::original = reinterpret_cast<Original>(original);
            }};
}

}  // namespace

const std::vector<Import>& all() {
    constexpr int kFirst = __COUNTER__ + 1;
#define TAMRIX_IMPORT(library, function, failure, thing, change) \
    makeImport<__COUNTER__ - kFirst, decltype(&function)>(library, #function, failure, Thing::thing, change)
#define TAMRIX_REGISTRY(function) TAMRIX_IMPORT("advapi32.dll", function, ERROR_NOT_ENOUGH_MEMORY, none, 0)
#define TAMRIX_PLAIN(library, function) TAMRIX_IMPORT(library, function, 0, none, 0)
    static const std::vector<Import> imports = {
        TAMRIX_IMPORT("advapi32.dll", RegOpenKeyExA, ERROR_NOT_ENOUGH_MEMORY, key, 1),
        TAMRIX_IMPORT("advapi32.dll", RegCreateKeyA, ERROR_NOT_ENOUGH_MEMORY, key, 1),
        TAMRIX_IMPORT("advapi32.dll", RegCreateKeyExA, ERROR_NOT_ENOUGH_MEMORY, key, 1),
        TAMRIX_IMPORT("advapi32.dll", RegCloseKey, ERROR_INVALID_HANDLE, key, -1),
        TAMRIX_REGISTRY(RegDeleteKeyA),
        TAMRIX_REGISTRY(RegDeleteValueA),
        TAMRIX_REGISTRY(RegEnumKeyA),
        TAMRIX_REGISTRY(RegEnumKeyExA),
        TAMRIX_REGISTRY(RegEnumValueA),
        TAMRIX_REGISTRY(RegQueryValueA),
        TAMRIX_REGISTRY(RegQueryValueExA),
        TAMRIX_REGISTRY(RegSetValueExA),
        TAMRIX_PLAIN("comdlg32.dll", GetOpenFileNameA),
        TAMRIX_PLAIN("comdlg32.dll", GetSaveFileNameA),
        TAMRIX_PLAIN("gdi32.dll", BitBlt),
        TAMRIX_IMPORT("gdi32.dll", CreateCompatibleBitmap, 0, object, 1),
        TAMRIX_IMPORT("gdi32.dll", CreateFontA, 0, object, 1),
        TAMRIX_IMPORT("gdi32.dll", CreatePalette, 0, object, 1),
        TAMRIX_IMPORT("gdi32.dll", CreateSolidBrush, 0, object, 1),
        TAMRIX_IMPORT("gdi32.dll", DeleteObject, 0, object, -1),
        TAMRIX_IMPORT("gdi32.dll", CreateCompatibleDC, 0, context, 1),
        TAMRIX_IMPORT("gdi32.dll", DeleteDC, 0, context, -1),
        TAMRIX_PLAIN("gdi32.dll", GetDeviceCaps),
        TAMRIX_PLAIN("gdi32.dll", GetObjectA),
        TAMRIX_PLAIN("gdi32.dll", GetStockObject),
        TAMRIX_PLAIN("gdi32.dll", GetTextMetricsA),
        TAMRIX_PLAIN("gdi32.dll", IntersectClipRect),
        TAMRIX_IMPORT("gdi32.dll", RealizePalette, -1, none, 0),
        TAMRIX_PLAIN("gdi32.dll", SelectObject),
        TAMRIX_PLAIN("gdi32.dll", SelectPalette),
        TAMRIX_PLAIN("gdi32.dll", SetBkMode),
        TAMRIX_PLAIN("gdi32.dll", SetStretchBltMode),
        TAMRIX_IMPORT("gdi32.dll", SetTextColor, -1, none, 0),
        TAMRIX_PLAIN("gdi32.dll", StretchBlt),
        TAMRIX_PLAIN("gdi32.dll", StretchDIBits),
        TAMRIX_PLAIN("kernel32.dll", FindResourceA),
        TAMRIX_PLAIN("kernel32.dll", LoadResource),
        TAMRIX_PLAIN("kernel32.dll", FreeResource),
        TAMRIX_PLAIN("kernel32.dll", LockResource),
        TAMRIX_PLAIN("kernel32.dll", SizeofResource),
        TAMRIX_IMPORT("kernel32.dll", GlobalAlloc, 0, block, 1),
        TAMRIX_IMPORT("kernel32.dll", GlobalFree, 1, block, -1),
        TAMRIX_PLAIN("kernel32.dll", GlobalReAlloc),
        TAMRIX_PLAIN("kernel32.dll", GlobalSize),
        TAMRIX_IMPORT("kernel32.dll", GlobalLock, 0, lock, 1),
        TAMRIX_IMPORT("kernel32.dll", GlobalUnlock, 0, lock, -1),
        TAMRIX_PLAIN("kernel32.dll", LCMapStringA),
        TAMRIX_IMPORT("kernel32.dll", MulDiv, -1, none, 0),
        TAMRIX_PLAIN("kernel32.dll", MultiByteToWideChar),
        TAMRIX_PLAIN("kernel32.dll", WideCharToMultiByte),
        TAMRIX_IMPORT("msvcrt.dll", malloc, 0, memory, 1),
        TAMRIX_IMPORT("msvcrt.dll", free, 0, memory, -1),
        TAMRIX_PLAIN("user32.dll", BeginPaint),
        TAMRIX_PLAIN("user32.dll", EndPaint),
        TAMRIX_PLAIN("user32.dll", CreateDialogIndirectParamA),
        TAMRIX_IMPORT("user32.dll", CreateDialogParamA, 0, window, 1),
        TAMRIX_IMPORT("user32.dll", CreateWindowExA, 0, window, 1),
        TAMRIX_IMPORT("user32.dll", DestroyWindow, 0, window, -1),
        TAMRIX_IMPORT("user32.dll", DialogBoxIndirectParamA, -1, none, 0),
        TAMRIX_IMPORT("user32.dll", DialogBoxParamA, -1, none, 0),
        TAMRIX_PLAIN("user32.dll", DrawIcon),
        TAMRIX_PLAIN("user32.dll", DrawTextA),
        TAMRIX_PLAIN("user32.dll", EnableWindow),
        TAMRIX_PLAIN("user32.dll", EndDialog),
        TAMRIX_PLAIN("user32.dll", FillRect),
        TAMRIX_IMPORT("user32.dll", GetDC, 0, screen, 1),
        TAMRIX_IMPORT("user32.dll", ReleaseDC, 0, screen, -1),
        TAMRIX_PLAIN("user32.dll", GetDlgItem),
        TAMRIX_PLAIN("user32.dll", GetDlgItemTextA),
        TAMRIX_PLAIN("user32.dll", GetSystemMetrics),
        TAMRIX_PLAIN("user32.dll", InflateRect),
        TAMRIX_PLAIN("user32.dll", InvalidateRect),
        TAMRIX_PLAIN("user32.dll", SetTimer),
        TAMRIX_PLAIN("user32.dll", KillTimer),
        TAMRIX_PLAIN("user32.dll", LoadIconA),
        TAMRIX_PLAIN("user32.dll", LoadStringA),
        TAMRIX_PLAIN("user32.dll", MessageBoxA),
        TAMRIX_PLAIN("user32.dll", MoveWindow),
        TAMRIX_PLAIN("user32.dll", RegisterClassA),
        TAMRIX_PLAIN("user32.dll", RegisterWindowMessageA),
        TAMRIX_IMPORT("user32.dll", SendDlgItemMessageA, LB_ERR, none, 0),
        TAMRIX_IMPORT("user32.dll", SendMessageA, LB_ERR, none, 0),
        TAMRIX_PLAIN("user32.dll", SetDlgItemTextA),
        TAMRIX_PLAIN("user32.dll", SetFocus),
        TAMRIX_PLAIN("user32.dll", SetWindowLongA),
        TAMRIX_PLAIN("user32.dll", ShowWindow),
        TAMRIX_PLAIN("user32.dll", WinHelpA),
    };
#undef TAMRIX_PLAIN
#undef TAMRIX_REGISTRY
#undef TAMRIX_IMPORT
    return imports;
}

bool isInfallible(const std::string& name) {
    // GetWindowLongA is asked of windows that are there.
    static const std::set<std::string> names = {
        "GetPropA", "SetPropA",       "RemovePropA",    "PostMessageA",  "DrawTextA", "StretchBlt", "abort",
        "memchr",   "memmove",        "memcpy",         "memset",        "rand",      "srand",      "strcat",
        "strchr",   "strcmp",         "strcpy",         "strlen",        "strncpy",   "strrchr",    "time",
        "GetOEMCP", "IsDBCSLeadByte", "DefWindowProcA", "GetWindowLongA"};
    return names.count(name) != 0;
}

Watch::Watch(HMODULE module, const std::map<std::string, void*>& standIns) {
    start();
    for (const Import& import : all()) {
        const auto& hook = hooks_.emplace_back(module, import.library, import.name, import.replacement);
        EXPECT_TRUE(hook.installed()) << import.name << " is not imported any more";
        const auto standIn = standIns.find(import.name);
        import.setOriginal(standIn != standIns.end() ? standIn->second : hook.original<void*>());
    }
}

void Watch::start(const Import* failing, int nth) {
    plan = {failing, nth, false, {}};
}

std::string failure() {
    return plan.failing ? plan.failing->name : "none";
}

bool Watch::hasFailed() const {
    return plan.hasFailed;
}

std::map<Thing, int> Watch::kept() const {
    auto things = plan.kept;
    things.erase(Thing::none);
    // A window that can't be marked as closing is asked to go once more while it goes.
    std::erase_if(things, [](const auto& thing) {
        return thing.second == 0 || (thing.first == Thing::window && thing.second < 0);
    });
    return things;
}

}  // namespace failing_imports
