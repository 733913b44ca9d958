// What the suites of the extension store share: mappings put straight into the registry, and what it holds afterwards.
// All keys begin with ".tmx-" or "tmx-"; the fixture removes them and checks that the class root is as it was.
#pragma once

#include <gmock/gmock.h>
#include <windows.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "registry_home.h"

namespace extmap_store {

using testing_support::givenValue;
using testing_support::Stored;
using testing_support::storedIn;
using testing_support::subkeysOf;

inline const char kSettings[] = "Software\\Quillon Systems, Inc.\\File Client";

class Key {
public:
    static Key open(HKEY root, const std::string& path) {
        Key key;
        if (RegOpenKeyExA(root, path.c_str(), 0, KEY_ALL_ACCESS, &key.handle_) != ERROR_SUCCESS) key.handle_ = nullptr;
        return key;
    }
    Key(Key&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Key& operator=(Key&&) = delete;
    ~Key() {
        if (handle_) RegCloseKey(handle_);
    }
    HKEY get() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }

private:
    Key() = default;
    HKEY handle_ = nullptr;
};

inline void givenText(const std::string& extension, const char* name, const std::string& text) {
    givenValue(HKEY_CLASSES_ROOT, extension, name, REG_SZ, std::string_view(text.c_str(), text.size() + 1));
}

inline void givenMapping(const std::string& extension, const std::string& type, const std::string& creator,
                         const char* comment = nullptr) {
    givenText(extension, "Mac Type", type);
    givenText(extension, "Mac Creator", creator);
    if (comment) givenText(extension, "Mac Comment", comment);
}

/// A string value's text without its terminator; "(none)" when it is missing.
inline std::string stored(const std::string& extension, const char* name) {
    const auto value = storedIn(HKEY_CLASSES_ROOT, extension, name);
    if (!value) return "(none)";
    if (value->type != REG_SZ || !value->bytes.ends_with('\0')) return "(no terminated string)";
    return value->bytes.substr(0, value->bytes.size() - 1);
}

/// Type, creator and comment of an extension as the store holds them.
inline std::string mappingOf(const std::string& extension) {
    return stored(extension, "Mac Type") + ' ' + stored(extension, "Mac Creator") + ' ' +
           stored(extension, "Mac Comment");
}

inline bool exists(const std::string& extension) {
    return static_cast<bool>(Key::open(HKEY_CLASSES_ROOT, extension));
}

inline std::vector<std::string> classKeys() {
    return subkeysOf(HKEY_CLASSES_ROOT);
}

inline bool isOurs(std::string_view name) {
    if (name.starts_with('.')) name.remove_prefix(1);
    return name.starts_with("tmx-") || name.starts_with("TMX-");
}

inline void removeOurKeys() {
    for (const std::string& name : classKeys()) {
        if (!isOurs(name)) continue;
        RegDeleteKeyA(HKEY_CLASSES_ROOT, (name + "\\below").c_str());
        EXPECT_EQ(RegDeleteKeyA(HKEY_CLASSES_ROOT, name.c_str()), ERROR_SUCCESS) << name;
    }
}

/// An extension key name of so many bytes.
inline std::string nameOfLength(std::size_t length) {
    std::string name = ".tmx-";
    name.resize(length, 'x');
    return name;
}

/// Leaves the class root and the default codes as they were.
class StoreTest : public testing::Test {
protected:
    void SetUp() override {
        removeOurKeys();
        before_ = classKeys();
        hadSettings_ = static_cast<bool>(Key::open(HKEY_LOCAL_MACHINE, kSettings));
        for (std::size_t i = 0; i < 2; ++i) defaults_[i] = storedIn(HKEY_LOCAL_MACHINE, kSettings, kDefaults[i]);
        removeDefaults();
    }

    void TearDown() override {
        removeOurKeys();
        EXPECT_EQ(classKeys(), before_) << "other keys of the class root were touched";
        removeDefaults();
        if (!hadSettings_) RegDeleteKeyA(HKEY_LOCAL_MACHINE, kSettings);
        for (std::size_t i = 0; i < 2; ++i)
            if (defaults_[i])
                givenValue(HKEY_LOCAL_MACHINE, kSettings, kDefaults[i], defaults_[i]->type, defaults_[i]->bytes);
    }

    static void givenDefault(const char* name, std::string_view bytes, DWORD type = REG_SZ) {
        givenValue(HKEY_LOCAL_MACHINE, kSettings, name, type, bytes);
    }

    static void removeDefaults() {
        const Key key = Key::open(HKEY_LOCAL_MACHINE, kSettings);
        for (const char* name : kDefaults)
            if (key) RegDeleteValueA(key.get(), name);
    }

private:
    static constexpr const char* kDefaults[2] = {"Default Mac Type", "Default Mac Creator"};
    std::vector<std::string> before_;
    std::optional<Stored> defaults_[2];
    bool hadSettings_ = false;
};

}  // namespace extmap_store
