#include "windows/import_hook.h"

#include <cstring>

namespace testing_support {
namespace {

ULONG_PTR* findSlot(HMODULE module, const char* library, const char* function) {
    auto* base = reinterpret_cast<BYTE*>(module);
    const auto* dos = reinterpret_cast<IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (!directory.VirtualAddress) return nullptr;
    auto* import = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
    for (; import->Name; ++import) {
        if (lstrcmpiA(reinterpret_cast<const char*>(base + import->Name), library) != 0) continue;
        auto* name = reinterpret_cast<IMAGE_THUNK_DATA*>(base + import->OriginalFirstThunk);
        auto* slot = reinterpret_cast<IMAGE_THUNK_DATA*>(base + import->FirstThunk);
        for (; name->u1.AddressOfData; ++name, ++slot) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
            const auto* byName = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(byName->Name), function) == 0) return &slot->u1.Function;
        }
    }
    return nullptr;
}

}  // namespace

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
