#include "client/stored_values.h"

#include "client/mapping_store.h"
#include "client/system/raw_values.h"
#include "tamrix32/registry.h"

namespace tamrix::client {
namespace {

/// The values of a mapping. Other values in its key do not belong to the library.
constexpr std::array kValueNames = {"Mac Type", "Mac Creator", "Mac Comment"};

}  // namespace

std::optional<StoredValues> StoredValues::of(const std::string& extension) {
    StoredValues stored;
    stored.extension_ = extension;
    HKEY handle = nullptr;
    // RegKey cannot distinguish a missing key from one that cannot be opened.
    const LONG opened = RegOpenKeyExA(HKEY_CLASSES_ROOT, extension.c_str(), 0, KEY_QUERY_VALUE, &handle);
    if (opened == ERROR_FILE_NOT_FOUND) return stored;
    if (opened != ERROR_SUCCESS) return std::nullopt;
    RegKey key(handle);
    stored.hasKey_ = true;
    if (!stored.read(handle)) return std::nullopt;
    return stored;
}

bool StoredValues::read(HKEY key) {
    static_assert(kValueNames.size() == std::tuple_size_v<decltype(values_)>);
    for (std::size_t i = 0; i < kValueNames.size(); ++i) {
        Value value;
        DWORD size = 0;
        LONG result = queryRaw(key, kValueNames[i], value.type, nullptr, size);
        if (result == ERROR_FILE_NOT_FOUND) continue;
        value.bytes.resize(size);
        if (result == ERROR_SUCCESS)
            result = queryRaw(key, kValueNames[i], value.type, reinterpret_cast<BYTE*>(value.bytes.data()), size);
        if (result != ERROR_SUCCESS) return false;
        value.bytes.resize(size);
        values_[i] = std::move(value);
    }
    return true;
}

void StoredValues::write(HKEY key) const {
    for (std::size_t i = 0; i < kValueNames.size(); ++i) {
        if (!values_[i]) {
            RegDeleteValueA(key, kValueNames[i]);
            continue;
        }
        // Newer systems extend a string without a terminator by a zero that follows it in memory; the guard prevents
        // it.
        const std::string guarded = values_[i]->bytes + "\1\1";
        setRaw(key, kValueNames[i], values_[i]->type, reinterpret_cast<const BYTE*>(guarded.data()),
               static_cast<DWORD>(values_[i]->bytes.size()));
    }
}

bool StoredValues::restore() const {
    if (hasKey_) {
        RegKey key;
        if (key.Create(HKEY_CLASSES_ROOT, extension_.c_str())) write(key.Handle());
    } else {
        removeMapping(extension_);
    }
    return of(extension_) == *this;
}

}  // namespace tamrix::client
