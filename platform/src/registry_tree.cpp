#include "registry_tree.h"

#include <algorithm>
#include <utility>

namespace standin {

std::shared_ptr<Key> findKey(const std::shared_ptr<Key>& from, std::string_view path) {
    std::shared_ptr<Key> key = from;
    for (const std::string_view component : pathComponents(path)) {
        key = key->child(component);
        if (!key) return nullptr;
    }
    return key;
}

SubkeyEntry::SubkeyEntry(std::shared_ptr<Key> key)
    : key_(std::move(key)), size_(static_cast<BYTE>(key_->name().size())), shortName_{} {
    if (size_ <= sizeof shortName_) key_->name().copy(shortName_, size_);
}

std::string_view SubkeyEntry::name() const {
    return size_ <= sizeof shortName_ ? std::string_view(shortName_, size_) : std::string_view(key_->name());
}

namespace {

/// The position of a name among the children, or the position at which to insert it.
auto placeOf(std::string_view name, const std::vector<SubkeyEntry>& children) {
    return std::ranges::partition_point(
        children, [name](const SubkeyEntry& entry) { return compareNames(entry.name(), name) < 0; });
}

}  // namespace

std::shared_ptr<Key> Key::child(std::string_view name) const {
    // An enumeration usually opens the key that it has just read, so it is found in constant time.
    if (lastEnumerated_ < children_.size() && children_[lastEnumerated_].name() == name)
        return children_[lastEnumerated_].key();
    const auto place = placeOf(name, children_);
    return place != children_.end() && compareNames(place->name(), name) == 0 ? place->key() : nullptr;
}

const SubkeyEntry* Key::enumerated(std::size_t index) const {
    if (index >= children_.size()) return nullptr;
    lastEnumerated_ = index;
    return &children_[index];
}

std::shared_ptr<Key> Key::addChild(std::string_view name) {
    auto child = std::make_shared<Key>(name);
    child->parent = this;
    children_.emplace(placeOf(name, children_), child);
    return child;
}

void Key::removeChild(Key& child) {
    child.markDeleted();
    children_.erase(placeOf(child.name(), children_));
}

Value* Key::value(std::string_view name) {
    const auto found =
        std::ranges::find_if(values_, [name](const Value& value) { return compareNames(value.name, name) == 0; });
    return found == values_.end() ? nullptr : &*found;
}

Value& Key::addValue(std::string_view name) {
    if (Value* present = value(name)) return *present;
    values_.push_back({std::string(name), REG_NONE, {}});
    return values_.back();
}

bool Key::removeValue(std::string_view name) {
    const Value* present = value(name);
    if (!present) return false;
    values_.erase(values_.begin() + (present - values_.data()));
    return true;
}

void Key::clear() {
    for (const SubkeyEntry& child : children()) child.key()->markDeleted();
    children_.clear();
    values_.clear();
    denied = false;
}

void Key::markDeleted() {
    deleted = true;
    parent = nullptr;
    for (const SubkeyEntry& child : children()) child.key()->markDeleted();
}

RegistryState::RegistryState()
    : roots{{HKEY_CLASSES_ROOT, "HKEY_CLASSES_ROOT", std::make_shared<Key>("")},
            {HKEY_CURRENT_USER, "HKEY_CURRENT_USER", std::make_shared<Key>("")},
            {HKEY_LOCAL_MACHINE, "HKEY_LOCAL_MACHINE", std::make_shared<Key>("")},
            {HKEY_USERS, "HKEY_USERS", std::make_shared<Key>("")}} {}

HKEY RegistryState::openHandle(std::shared_ptr<Key> key, REGSAM access) {
    const ULONG_PTR handle = nextHandle;
    nextHandle += 4;
    open.emplace(handle, OpenKey{std::move(key), access});
    return reinterpret_cast<HKEY>(handle);
}

RegistryState& registry() {
    // Never destroyed, because static objects of a library may close keys after static objects of this file were
    // destroyed.
    static RegistryState& state = *new RegistryState;
    return state;
}

}  // namespace standin
