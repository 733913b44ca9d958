// Win32 calls on registry keys (open, create, enumerate, delete, close), and the functions that control keys.
#include <standin.h>

#include <cstring>

#include "registry_access.h"

namespace standin {
namespace {

const Root* rootOf(HKEY handle) {
    for (const Root& root : registry().roots)
        if (root.handle == handle) return &root;
    return nullptr;
}

REGSAM grantedAccess(REGSAM asked) {
    return asked & MAXIMUM_ALLOWED ? asked | KEY_ALL_ACCESS : asked;
}

// A path may begin with a backslash only if it is relative to the class root.
bool isValidStart(HKEY key, std::string_view path) {
    return path.empty() || path[0] != '\\' || key == HKEY_CLASSES_ROOT;
}

LONG openAs(std::shared_ptr<Key> key, REGSAM access, PHKEY result) {
    if (key->denied) return ERROR_ACCESS_DENIED;
    *result = registry().openHandle(std::move(key), grantedAccess(access));
    return ERROR_SUCCESS;
}

LONG enumerate(RegistryCall& call, HKEY handle, DWORD index, LPSTR name, LPDWORD nameSize, PFILETIME lastWrite) {
    const auto key = call.key(handle, KEY_ENUMERATE_SUB_KEYS);
    if (!key) return call.result();
    const SubkeyEntry* const child = key->enumerated(index);
    if (!child) return ERROR_NO_MORE_ITEMS;
    const std::string_view childName = child->name();
    if (childName.size() >= *nameSize) return ERROR_MORE_DATA;
    std::memcpy(name, childName.data(), childName.size());
    name[childName.size()] = 0;
    *nameSize = static_cast<DWORD>(childName.size());
    if (lastWrite) *lastWrite = {};  // the stand-in stores no times
    return ERROR_SUCCESS;
}

}  // namespace

std::shared_ptr<Key> RegistryCall::key(HKEY handle, REGSAM wanted) {
    if (result_ != ERROR_SUCCESS) return nullptr;
    if (const Root* root = rootOf(handle)) {
        if (root->key->denied) result_ = ERROR_ACCESS_DENIED;
        return root->key->denied ? nullptr : root->key;
    }
    const auto found = registry().open.find(reinterpret_cast<ULONG_PTR>(handle));
    if (found == registry().open.end()) {
        result_ = ERROR_INVALID_HANDLE;
    } else if (found->second.key->deleted) {
        result_ = ERROR_KEY_DELETED;
    } else if ((found->second.access & wanted) != wanted) {
        result_ = ERROR_ACCESS_DENIED;
    }
    return result_ == ERROR_SUCCESS ? found->second.key : nullptr;
}

std::shared_ptr<Key> createKey(std::shared_ptr<Key> key, std::string_view path, bool& created) {
    const auto components = pathComponents(path);
    created = false;
    for (const std::string_view component : components)
        if (component.size() > kMaxKeyName) return nullptr;
    for (const std::string_view component : components) {
        auto child = key->child(component);
        created = !child;
        key = child ? child : key->addChild(component);
    }
    return key;
}

void clearRegistry() {
    const std::scoped_lock lock(registry().guard);
    for (Root& root : registry().roots) root.key->clear();
}

bool denyAccess(HKEY root, const char* path) {
    const std::scoped_lock lock(registry().guard);
    const Root* from = rootOf(root);
    const auto key = from ? findKey(from->key, path) : nullptr;
    if (key) key->denied = true;
    return key != nullptr;
}

std::size_t openKeys() {
    const std::scoped_lock lock(registry().guard);
    return registry().open.size();
}

}  // namespace standin

using namespace standin;

LONG WINAPI RegOpenKeyExA(HKEY key, LPCSTR path, DWORD, REGSAM access, PHKEY result) {
    RegistryCall call;
    if (!result) return ERROR_INVALID_PARAMETER;
    const auto from = call.key(key, 0);
    if (!from) return call.result();
    const std::string_view below = path ? path : "";
    if (!isValidStart(key, below)) return ERROR_BAD_PATHNAME;
    auto found = findKey(from, below);
    return found ? openAs(std::move(found), access, result) : ERROR_FILE_NOT_FOUND;
}

// Creating and deleting keys needs no rights on the parent's handle: the platform checks the permissions of the keys
// themselves.
LONG WINAPI RegCreateKeyExA(HKEY key, LPCSTR path, DWORD reserved, LPSTR, DWORD, REGSAM access, SECURITY_ATTRIBUTES*,
                            PHKEY result, LPDWORD disposition) {
    RegistryCall call;
    if (!result || reserved) return ERROR_INVALID_PARAMETER;
    const auto from = call.key(key, 0);
    if (!from) return call.result();
    if (!path) return ERROR_BADKEY;
    if (!isValidStart(key, path)) return ERROR_BAD_PATHNAME;
    bool created = false;
    auto made = createKey(from, path, created);
    if (!made) return ERROR_INVALID_PARAMETER;
    if (disposition) *disposition = created ? REG_CREATED_NEW_KEY : REG_OPENED_EXISTING_KEY;
    return openAs(std::move(made), access, result);
}

LONG WINAPI RegCreateKeyA(HKEY key, LPCSTR path, PHKEY result) {
    return RegCreateKeyExA(key, path ? path : "", 0, nullptr, REG_OPTION_NON_VOLATILE, MAXIMUM_ALLOWED, nullptr, result,
                           nullptr);
}

LONG WINAPI RegCloseKey(HKEY key) {
    const std::scoped_lock lock(registry().guard);
    if (rootOf(key)) return ERROR_SUCCESS;
    return registry().open.erase(reinterpret_cast<ULONG_PTR>(key)) ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
}

LONG WINAPI RegDeleteKeyA(HKEY key, LPCSTR path) {
    RegistryCall call;
    const auto from = call.key(key, 0);
    if (!from) return call.result();
    if (!path) return ERROR_INVALID_PARAMETER;
    if (!isValidStart(key, path)) return ERROR_BAD_PATHNAME;
    const auto found = findKey(from, path);
    if (!found) return ERROR_FILE_NOT_FOUND;
    if (!found->parent || found->denied || !found->children().empty()) return ERROR_ACCESS_DENIED;
    found->parent->removeChild(*found);
    return ERROR_SUCCESS;
}

LONG WINAPI RegEnumKeyA(HKEY key, DWORD index, LPSTR name, DWORD nameSize) {
    RegistryCall call;
    return enumerate(call, key, index, name, &nameSize, nullptr);
}

LONG WINAPI RegEnumKeyExA(HKEY key, DWORD index, LPSTR name, LPDWORD nameSize, LPDWORD reserved, LPSTR className,
                          LPDWORD classSize, PFILETIME lastWrite) {
    RegistryCall call;
    if (!name || !nameSize || reserved) return ERROR_INVALID_PARAMETER;
    const LONG result = enumerate(call, key, index, name, nameSize, lastWrite);
    if (result == ERROR_SUCCESS && classSize) {
        // Keys in the stand-in have no class.
        if (className && *classSize) *className = 0;
        *classSize = 0;
    }
    return result;
}
