#include "registry_tree.h"

#include <algorithm>
#include <ctime>

#include "code_page.h"

namespace standin {

std::u16string foldedName(std::string_view name) {
    const CodePage& page = ansiCodePage();
    std::u16string folded;
    folded.reserve(name.size());
    while (!name.empty()) {
        const WORD character = page.take(name);
        // Characters without a Unicode value stay apart from each other: a surrogate pair spells them.
        if (const auto unit = page.toUnicode(character)) {
            folded += upperUnit(*unit);
        } else {
            folded += static_cast<WCHAR>(0xD800 + HIBYTE(character));
            folded += static_cast<WCHAR>(0xDC00 + LOBYTE(character));
        }
    }
    return folded;
}

std::vector<std::string_view> pathComponents(std::string_view path) {
    std::vector<std::string_view> components;
    const CodePage& page = ansiCodePage();
    const char* start = path.data();
    const auto finish = [&](const char* end) {
        if (end != start) components.emplace_back(start, static_cast<std::size_t>(end - start));
    };
    while (!path.empty()) {
        const char* at = path.data();
        if (page.take(path) != '\\') continue;
        finish(at);
        start = path.data();
    }
    finish(path.data());
    return components;
}

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

Key::Key(std::string_view name) : name_(name), foldedName_(standin::foldedName(name)) {
    touch();
}

std::shared_ptr<Key> Key::child(std::string_view name) const {
    const auto found = byName_.find(standin::foldedName(name));
    return found == byName_.end() ? nullptr : found->second;
}

namespace {

bool foldsBefore(const SubkeyEntry& left, const SubkeyEntry& right) {
    return left.key().foldedName() < right.key().foldedName();
}

}  // namespace

std::shared_ptr<Key> Key::addChild(std::string_view name) {
    auto child = std::make_shared<Key>(name);
    child->parent = this;
    byName_.emplace(child->foldedName(), child);
    const SubkeyEntry entry(*child);
    ordered_.insert(std::upper_bound(ordered_.begin(), ordered_.end(), entry, foldsBefore), entry);
    touch();
    return child;
}

void Key::removeChild(Key& child) {
    const auto [first, last] = std::equal_range(ordered_.begin(), ordered_.end(), SubkeyEntry(child), foldsBefore);
    child.markDeleted();
    const std::u16string folded = child.foldedName();
    ordered_.erase(first, last);
    byName_.erase(folded);
    touch();
}

Value* Key::value(std::string_view name) {
    const std::u16string folded = standin::foldedName(name);
    const auto found = std::ranges::find(values_, folded, &Value::foldedName);
    return found == values_.end() ? nullptr : &*found;
}

Value& Key::addValue(std::string_view name) {
    if (Value* present = value(name)) return *present;
    values_.push_back({std::string(name), standin::foldedName(name), REG_NONE, {}});
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
    for (const SubkeyEntry& child : ordered_) child.key().markDeleted();
    ordered_.clear();
    byName_.clear();
    values_.clear();
    denied = false;
}

void Key::markDeleted() {
    deleted = true;
    parent = nullptr;
    for (const SubkeyEntry& child : ordered_) child.key().markDeleted();
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
