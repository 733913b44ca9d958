// The stand-in's registry: keys in a tree, their values, and the handles that are open on them.
//
// Nothing here locks or knows the fault plan; the calls in registry_keys.cpp and registry_values.cpp do.
#ifndef TAMRIX_PLATFORM_REGISTRY_TREE_H
#define TAMRIX_PLATFORM_REGISTRY_TREE_H

#include <windows.h>

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "registry_names.h"

namespace standin {

constexpr std::size_t kMaxKeyDepth = 512;     // below a root, in files; what walks the tree calls itself so deep
constexpr std::size_t kMaxKeyName = 255;      // bytes, without terminator
constexpr std::size_t kMaxValueName = 16383;  // bytes, without terminator

struct Value {
    std::string name;
    DWORD type = REG_NONE;
    std::vector<BYTE> data;  // in a block of its own and exactly as large, so that a sanitizer sees what reads past it
};

class Key;

/// A subkey in the order of its siblings. Short names lie in it, so that enumerating and searching walk through one
/// block of memory and don't look at the keys.
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

/// A key and all below it.
class Key {
public:
    explicit Key(std::string_view name) : name_(name) { touch(); }

    const std::string& name() const { return name_; }

    std::shared_ptr<Key> child(std::string_view name) const;
    std::shared_ptr<Key> addChild(std::string_view name);
    /// Takes a child out, with all below it; handles that are open on them find them deleted.
    void removeChild(Key& child);
    /// Sorted by name.
    const std::vector<SubkeyEntry>& children() const { return children_; }
    /// The nth child, which is the one that a pass looks for next by its name; null past the end.
    const SubkeyEntry* enumerated(std::size_t index) const;

    Value* value(std::string_view name);
    Value& addValue(std::string_view name);
    bool removeValue(std::string_view name);
    const std::vector<Value>& values() const { return values_; }

    /// Takes out everything: children, values, denial.
    void clear();
    void touch();

    Key* parent = nullptr;  // none for a root and for a deleted key
    bool deleted = false;
    bool denied = false;
    FILETIME lastWrite{};

private:
    void markDeleted();

    // What opening a key and reading its values needs lies together, here and above; the subkeys come last.
    std::vector<Value> values_;
    std::string name_;
    std::vector<SubkeyEntry> children_;
    mutable std::size_t lastEnumerated_ = 0;
};

struct OpenKey {
    std::shared_ptr<Key> key;
    REGSAM access;
};

/// One root as the registry file spells it.
struct Root {
    HKEY handle;
    const char* name;
    std::shared_ptr<Key> key;
};

/// Everything the registry calls share. Handles are numbers that are never given out twice, so that a stale one is
/// always told from a live one.
struct RegistryState {
    std::mutex guard;
    std::vector<Root> roots;
    std::unordered_map<ULONG_PTR, OpenKey> open;
    ULONG_PTR nextHandle = 0x100;

    RegistryState();
    HKEY openHandle(std::shared_ptr<Key> key, REGSAM access);
};

RegistryState& registry();

/// The key at a path below `from`, made with all that lacks on the way; null when a component is too long. `created`
/// says whether it is new.
std::shared_ptr<Key> createKey(std::shared_ptr<Key> from, std::string_view path, bool& created);

/// The key at a path below `from`; null when there is none.
std::shared_ptr<Key> findKey(const std::shared_ptr<Key>& from, std::string_view path);

}  // namespace standin

#endif
