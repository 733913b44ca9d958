#include "windows/import_hook.h"

#include <cstring>

namespace testing_support {
namespace {

/// Calls `visit` with library, function and slot of each import by name until it says that it has found its own.
template <typename Visit>
void visitImports(HMODULE module, Visit visit) {
    auto* base = reinterpret_cast<BYTE*>(module);
    const auto* dos = reinterpret_cast<IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (!directory.VirtualAddress) return;
    auto* import = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
    for (; import->Name; ++import) {
        auto* name = reinterpret_cast<IMAGE_THUNK_DATA*>(base + import->OriginalFirstThunk);
        auto* slot = reinterpret_cast<IMAGE_THUNK_DATA*>(base + import->FirstThunk);
        for (; name->u1.AddressOfData; ++name, ++slot) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
            const auto* byName = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            if (visit(reinterpret_cast<const char*>(base + import->Name), reinterpret_cast<const char*>(byName->Name),
                      &slot->u1.Function))
                return;
        }
    }
}

ULONG_PTR* findSlot(HMODULE module, const char* library, const char* function) {
    ULONG_PTR* found = nullptr;
    visitImports(module, [&](const char* itsLibrary, const char* itsName, ULONG_PTR* slot) {
        if (lstrcmpiA(itsLibrary, library) != 0 || std::strcmp(itsName, function) != 0) return false;
        found = slot;
        return true;
    });
    return found;
}

}  // namespace

std::vector<std::string> importedBy(HMODULE module) {
    std::vector<std::string> names;
    visitImports(module, [&](const char*, const char* name, ULONG_PTR*) {
        names.push_back(name);
        return false;
    });
    return names;
}

void* imported(HMODULE module, const char* library, const char* function) {
    const ULONG_PTR* const slot = findSlot(module, library, function);
    return slot ? reinterpret_cast<void*>(*slot) : nullptr;
}

ImportHook::ImportHook(HMODULE module, const char* library, const char* function, const void* replacement) {
    slot_ = findSlot(module ? module : GetModuleHandleA(nullptr), library, function);
    if (!slot_) return;
    original_ = *slot_;
    write(reinterpret_cast<ULONG_PTR>(replacement));
}

ImportHook::~ImportHook() {
    if (slot_) write(original_);
}

void ImportHook::write(ULONG_PTR value) {
    DWORD protection;
    VirtualProtect(slot_, sizeof *slot_, PAGE_READWRITE, &protection);
    *slot_ = value;
    VirtualProtect(slot_, sizeof *slot_, protection, &protection);
}

}  // namespace testing_support
