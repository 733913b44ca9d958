#include "registry_tree.h"

#include <algorithm>
#include <ctime>
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

SubkeyEntry::SubkeyEntry(Key& key) : key_(&key), size_(static_cast<BYTE>(key.name().size())), shortName_{} {
    if (size_ <= sizeof shortName_) key.name().copy(shortName_, size_);
}

std::string_view SubkeyEntry::name() const {
    return size_ <= sizeof shortName_ ? std::string_view(shortName_, size_) : std::string_view(key_->name());
}

namespace {

bool comesBefore(const SubkeyEntry& left, const SubkeyEntry& right) {
    return compareNames(left.name(), right.name()) < 0;
}

}  // namespace

/// Where the name lies, or the free place where it would.
std::size_t Subkeys::placeOf(std::string_view name, std::uint32_t hash) const {
    std::size_t place = hash & (places_.size() - 1);
    while (places_[place].key && (places_[place].hash != hash || compareNames(places_[place].key->name(), name) != 0))
        place = after(place);
    return place;
}

std::shared_ptr<Key> Subkeys::find(std::string_view name) const {
    return places_.empty() ? nullptr : places_[placeOf(name, hashName(name))].key;
}

void Subkeys::grow() {
    std::vector<Place> former =
        std::exchange(places_, std::vector<Place>(std::max<std::size_t>(8, places_.size() * 2)));
    for (Place& place : former)
        if (place.key) std::swap(places_[placeOf(place.key->name(), place.hash)], place);
}

void Subkeys::add(std::shared_ptr<Key> key) {
    if (places_.size() < 2 * (ordered_.size() + 1)) grow();
    const SubkeyEntry entry(*key);
    ordered_.insert(std::upper_bound(ordered_.begin(), ordered_.end(), entry, comesBefore), entry);
    const std::uint32_t hash = hashName(key->name());
    const std::size_t place = placeOf(key->name(), hash);
    places_[place] = {std::move(key), hash};
}

void Subkeys::remove(const Key& key) {
    std::size_t free = placeOf(key.name(), hashName(key.name()));
    const auto at = [&key](const SubkeyEntry& entry) { return &entry.key() == &key; };
    ordered_.erase(std::ranges::find_if(ordered_, at));
    const std::shared_ptr<Key> removed = std::move(places_[free].key);
    // Whoever was put behind the free place because it was taken moves up, so that a search still comes by.
    const std::size_t mask = places_.size() - 1;
    for (std::size_t next = after(free); places_[next].key; next = after(next)) {
        const std::size_t wanted = places_[next].hash & mask;
        if (((next - wanted) & mask) < ((next - free) & mask)) continue;
        places_[free] = std::move(places_[next]);
        free = next;
    }
}

void Subkeys::clear() {
    ordered_.clear();
    places_.clear();
}

std::shared_ptr<Key> Key::addChild(std::string_view name) {
    auto child = std::make_shared<Key>(name);
    child->parent = this;
    children_.add(child);
    touch();
    return child;
}

void Key::removeChild(Key& child) {
    child.markDeleted();
    children_.remove(child);
    touch();
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
    touch();
    return true;
}

void Key::clear() {
    for (const SubkeyEntry& child : children()) child.key().markDeleted();
    children_.clear();
    values_.clear();
    denied = false;
}

void Key::markDeleted() {
    deleted = true;
    parent = nullptr;
    for (const SubkeyEntry& child : children()) child.key().markDeleted();
}

void Key::touch() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    // A FILETIME counts units of 100 ns from 1601-01-01.
    const auto ticks = (static_cast<std::uint64_t>(now.tv_sec) + 11644473600u) * 10000000u +
                       static_cast<std::uint64_t>(now.tv_nsec) / 100u;
    lastWrite = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
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
    // Never destroyed: a library's own static objects may close keys after this file's would be gone.
    static RegistryState& state = *new RegistryState;
    return state;
}

}  // namespace standin
