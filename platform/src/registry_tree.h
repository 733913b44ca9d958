// The stand-in's registry: keys in a tree, their values, and the handles that are open on them.
//
// The functions here do not lock and do not use the fault plan; the calls in registry_keys.cpp and registry_values.cpp
// do.
#pragma once

#include <windows.h>

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "registry_names.h"

namespace standin {

constexpr std::size_t kMaxKeyDepth = 512;     // levels below a root in a registry file; limits the recursion over keys
constexpr std::size_t kMaxKeyName = 255;      // bytes, without terminator
constexpr std::size_t kMaxValueName = 16383;  // bytes, without terminator

struct Value {
    std::string name;
    DWORD type = REG_NONE;
    std::vector<BYTE> data;  // has its own block of exactly its size, so that a sanitizer detects reads past it
};

class Key;

/// An entry in the sorted list of a key's subkeys. It contains a copy of a short name, so that enumerating and
/// searching access one block of memory instead of every key.
class SubkeyEntry {
public:
    explicit SubkeyEntry(std::shared_ptr<Key> key);

    const std::shared_ptr<Key>& key() const { return key_; }
    std::string_view name() const;

private:
    std::shared_ptr<Key> key_;
    BYTE size_;
    char shortName_[23];
};

/// A key and its subkeys.
class Key {
public:
    explicit Key(std::string_view name) : name_(name) {}

    const std::string& name() const { return name_; }

    std::shared_ptr<Key> child(std::string_view name) const;
    std::shared_ptr<Key> addChild(std::string_view name);
    /// Removes a child with its subkeys. They count as deleted for open handles.
    void removeChild(Key& child);
    /// Sorted by name.
    const std::vector<SubkeyEntry>& children() const { return children_; }
    /// The nth child; null past the end. Remembers it, because an enumeration usually looks it up by name next.
    const SubkeyEntry* enumerated(std::size_t index) const;

    /// Null if there is no such value.
    Value* value(std::string_view name);
    /// Returns an existing value with this name, or adds an empty one.
    Value& addValue(std::string_view name);
    bool removeValue(std::string_view name);
    const std::vector<Value>& values() const { return values_; }

    /// Removes children, values and denial.
    void clear();

    Key* parent = nullptr;  // null for a root and for a deleted key
    bool deleted = false;
    bool denied = false;

private:
    void markDeleted();

    // In this order, the fields that opening a key and reading its values use are next to each other in memory.
    std::vector<Value> values_;
    std::string name_;
    std::vector<SubkeyEntry> children_;
    mutable std::size_t lastEnumerated_ = 0;
};

struct OpenKey {
    std::shared_ptr<Key> key;
    REGSAM access;
};

/// A root and its name in registry files.
struct Root {
    HKEY handle;
    const char* name;
    std::shared_ptr<Key> key;
};

/// The state that the registry calls share. Handles are numbers that are never reused, so that a closed handle is
/// always recognised.
struct RegistryState {
    std::mutex guard;
    std::vector<Root> roots;
    std::unordered_map<ULONG_PTR, OpenKey> open;
    ULONG_PTR nextHandle = 0x100;

    RegistryState();
    HKEY openHandle(std::shared_ptr<Key> key, REGSAM access);
};

RegistryState& registry();

/// The key at a path below `from`; creates missing components. Null if a component is too long. `created` tells whether
/// the key is new.
std::shared_ptr<Key> createKey(std::shared_ptr<Key> from, std::string_view path, bool& created);

/// The key at a path below `from`; null if there is none.
std::shared_ptr<Key> findKey(const std::shared_ptr<Key>& from, std::string_view path);

}  // namespace standin
