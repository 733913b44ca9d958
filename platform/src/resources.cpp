// Modules and their resources, which tests and the command add. The bytes of each resource are in a block of exactly
// their size.
#include <standin.h>

#include <algorithm>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "faults.h"

namespace {

using namespace standin;

struct Resource {
    HINSTANCE module;
    std::string type;  // the name in upper case, or "#" and the number
    std::string name;
    std::unique_ptr<unsigned char[]> bytes;
    DWORD size;
    unsigned loads = 0;
};

struct Resources {
    std::mutex guard;
    std::vector<std::unique_ptr<Resource>> all;
};

Resources& resources() {
    static Resources& state = *new Resources;
    return state;
}

// Returns the form in which types and names are compared: the string "#12" means the number 12, and names are
// case-insensitive. Leading zeros of numbers are not supported.
std::string identifier(const char* nameOrId) {
    if (IS_INTRESOURCE(nameOrId)) return '#' + std::to_string(reinterpret_cast<ULONG_PTR>(nameOrId));
    std::string name = nameOrId;
    for (char& letter : name)
        if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
    return name;
}

HINSTANCE moduleOrProgram(HINSTANCE module) {
    return module ? module : fakeModule(0);
}

Resource* find(HINSTANCE module, const std::string& type, const std::string& name) {
    for (const auto& resource : resources().all)
        if (resource->module == module && resource->type == type && resource->name == name) return resource.get();
    return nullptr;
}

template <typename Handle>
Resource* resourceOf(Handle handle) {
    for (const auto& resource : resources().all)
        if (static_cast<void*>(resource.get()) == static_cast<void*>(handle)) return resource.get();
    return nullptr;
}

}  // namespace

HINSTANCE standin::fakeModule(unsigned number) {
    return reinterpret_cast<HINSTANCE>(ULONG_PTR{0x400000} + ULONG_PTR{number} * 0x10000);
}

void standin::addResource(HINSTANCE module, const char* type, const char* name, std::span<const unsigned char> bytes) {
    const std::scoped_lock lock(resources().guard);
    const HINSTANCE owner = moduleOrProgram(module);
    const std::string typeId = identifier(type), nameId = identifier(name);
    const Resource* present = find(owner, typeId, nameId);
    std::erase_if(resources().all, [&](const auto& resource) { return resource.get() == present; });
    auto copy = std::make_unique<unsigned char[]>(bytes.size());
    std::ranges::copy(bytes, copy.get());
    resources().all.push_back(
        std::make_unique<Resource>(Resource{owner, typeId, nameId, std::move(copy), static_cast<DWORD>(bytes.size())}));
}

void standin::clearResources() {
    const std::scoped_lock lock(resources().guard);
    resources().all.clear();
}

std::size_t standin::loadedResources() {
    const std::scoped_lock lock(resources().guard);
    std::size_t loads = 0;
    for (const auto& resource : resources().all) loads += resource->loads;
    return loads;
}

HMODULE WINAPI GetModuleHandleA(LPCSTR name) {
    return name ? nullptr : standin::fakeModule(0);
}

HRSRC WINAPI FindResourceA(HMODULE module, LPCSTR name, LPCSTR type) {
    if (faultDue(Kind::resource)) return nullptr;
    const std::scoped_lock lock(resources().guard);
    Resource* found = find(moduleOrProgram(module), identifier(type), identifier(name));
    return reinterpret_cast<HRSRC>(found);
}

DWORD WINAPI SizeofResource(HMODULE, HRSRC resource) {
    if (faultDue(Kind::resource)) return 0;
    const std::scoped_lock lock(resources().guard);
    const Resource* found = resourceOf(resource);
    return found ? found->size : 0;
}

HGLOBAL WINAPI LoadResource(HMODULE, HRSRC resource) {
    if (faultDue(Kind::resource)) return nullptr;
    const std::scoped_lock lock(resources().guard);
    Resource* found = resourceOf(resource);
    if (found) ++found->loads;
    return found;
}

LPVOID WINAPI LockResource(HGLOBAL data) {
    if (faultDue(Kind::resource)) return nullptr;
    const std::scoped_lock lock(resources().guard);
    const Resource* found = resourceOf(data);
    return found ? found->bytes.get() : nullptr;
}

BOOL WINAPI FreeResource(HGLOBAL data) {
    const std::scoped_lock lock(resources().guard);
    Resource* found = resourceOf(data);
    if (found && found->loads > 0) --found->loads;
    return FALSE;
}
