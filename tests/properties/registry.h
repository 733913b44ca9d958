// RegValue and RegKey as operations on a model: values of any type, size and source, read from a registry that anyone
// may have written, and keys in every state. What the registry holds is asked of it directly.
#pragma once

#include <algorithm>
#include <optional>

#include "properties/property.h"
#include "registry_text.h"
#include "tamrix32/registry.h"

namespace properties {

using Text = std::optional<std::string>;

struct ValueModel {
    Text name, data;
    DWORD type = 0;
    unsigned long length = 0;

    void set(DWORD newType, const Text& source) {
        type = newType;
        data.reset();
        if (type == REG_SZ) {
            data = source ? source->c_str() : "";
            length = std::max<unsigned long>(length, data->size() + 1);
            data->resize(length);
        } else if (source && type == REG_BINARY) {
            data = source->substr(0, length);
        } else if (source && type == REG_DWORD) {
            data = source->substr(0, 4);
            data->resize(std::max<unsigned long>(length, 4));
        } else if (type == REG_BINARY || type == REG_DWORD) {
            length = 0;
        }
    }
    unsigned long number() const {
        std::uint32_t number = 0;
        if (type == REG_DWORD && data) std::memcpy(&number, data->data(), 4);
        return number;
    }
    bool isYes() const {
        if (type == REG_BINARY) return data && (*data)[0] != 0;
        for (const char* yes : {"1", "y", "Y", "t", "T", "on", "oN", "On", "ON"})
            if (type == REG_SZ && data && data->starts_with(yes)) return true;
        return number() != 0;
    }
};

class RegistryScene {
public:
    explicit RegistryScene(Input& input) : input_(input) {
        testing_support::emptyRegistry();
        testing_support::givenValue(HKEY_CURRENT_USER, "home", "a", REG_SZ, "yes");
        open();
    }

    void step() {
        using R = RegistryScene;
        void (R::*const steps[])() = {&R::store, &R::change,    &R::read, &R::read, &R::write,
                                      &R::open,  &R::construct, &R::walk, &R::walk};
        (this->*input_.oneOf(steps))();
        require(key_.Opened() == isOpen_ && !key_.Handle() == !isOpen_, "whether the key is open");
        const char* const name = value_.Name();
        require(name ? model_.name == name : !model_.name, "the name");
        require(value_.NameLen() == model_.name.value_or("").size(), "the name's length");
        require(static_cast<DWORD>(value_.Type()) == model_.type && value_.DataLen() == model_.length,
                "type and length");
        const unsigned char* const data = value_.Buffer();
        require(data ? model_.data && std::equal(data, data + model_.data->size(), bytesOf(model_.data->data()))
                     : !model_.data,
                "the data");
        require(value_.String() == static_cast<const void*>(data), "the data's place");
        require(value_.Value() == model_.number() && value_.BoolValue() == model_.isYes(), "number and setting");
    }

private:
    static unsigned char* bytesOf(char* text) { return reinterpret_cast<unsigned char*>(text); }
    std::string drawnName() {
        const char* const names[] = {"a", "b", "", "a.b"};
        return input_.byte() % 8 ? input_.oneOf(names) : std::string(126 + input_.byte() % 3, 'n');
    }
    std::string drawnData() {
        const char* const texts[] = {"yes", "True", "1", "on", "oN", "o", "no", "off", "", " yes", "t", "Y"};
        const std::uint8_t choice = input_.byte() % 8;
        if (choice < 4) return std::string(input_.oneOf(texts)) + std::string(choice % 2, '\0');
        const std::string bytes = input_.bytes(9);
        return testing_support::storable(bytes + std::string(choice < 7 ? 0 : 124 + input_.byte() % 8, 'x'));
    }
    DWORD drawnType() {
        const DWORD types[] = {REG_SZ, REG_SZ, REG_BINARY, REG_DWORD, REG_EXPAND_SZ};
        return input_.oneOf(types);
    }

    /// What other programs store. No key goes under the one that is open.
    void store() {
        const std::string name = drawnName(), path = name.empty() ? "home" : "home\\" + name;
        const std::uint8_t choice = input_.byte() % 8;
        if (choice == 1 && open_ != "USER\\" + path)
            RegDeleteKeyA(HKEY_CURRENT_USER, path.c_str());
        else if (choice == 0)
            testing_support::givenValue(HKEY_CURRENT_USER, path, "", REG_SZ, "");
        else
            testing_support::givenValue(HKEY_CURRENT_USER, "home", name, drawnType(), drawnData());
    }

    /// Sources lie in blocks of exactly what the rule reads; some are parts of what the value holds.
    void change() {
        const DWORD type = drawnType();
        std::string source = drawnData();
        source.resize(type == REG_BINARY ? model_.length : type == REG_DWORD ? 4 : std::strlen(source.c_str()) + 1);
        const Block block(source.size());
        source.copy(block, source.size());
        const std::uint8_t choice = input_.byte() % 8;
        if (choice == 0) {
            value_.SetDataLength(model_.length = input_.byte() % 16);
        } else if (choice == 1) {
            value_.SetName(source.c_str());
            model_.name = source.c_str();
        } else if (choice == 2) {
            value_.SetName(model_.name ? value_.Name() + model_.name->size() / 2 : nullptr);
            if (model_.name) model_.name->erase(0, model_.name->size() / 2);
        } else if (choice == 3 && model_.type == REG_SZ && model_.data) {
            value_.SetData(RegValString, value_.Buffer() + model_.data->size() / 2);
            model_.set(REG_SZ, model_.data->substr(model_.data->size() / 2));
        } else {
            value_.SetData(RegValType(type), choice == 4 ? nullptr : bytesOf(block));
            model_.set(type, choice == 4 ? Text() : source);
        }
    }

    /// By name or in a walk, which stops at what does not fit.
    void read() {
        const std::uint8_t choice = input_.byte() % 8;
        const bool isWalk = choice > 3, isUnnamed = choice == 0;
        const std::string name = isUnnamed ? "" : drawnName();
        if (choice == 4) valuePosition_ = 0;
        char found[512] = "", data[512];
        DWORD size = sizeof data, nameSize = sizeof found, type = 0;
        const LONG stored =
            isWalk
                ? RegEnumValueA(key_.Handle(), valuePosition_, found, &nameSize, nullptr, &type, bytesOf(data), &size)
                : RegQueryValueExA(key_.Handle(), name.c_str(), nullptr, &type, bytesOf(data), &size);
        require(choice != 4 || !key_.FirstValue(nullptr), "a walk without a value");
        require(!key_.NextValue(nullptr) && !key_.ValueByName("a", nullptr), "no value to read into");
        const int result =
            isWalk ? key_.NextValue(&value_) : key_.ValueByName(isUnnamed ? nullptr : name.c_str(), &value_);
        const bool isRead = !stored && size <= 128 && std::strlen(found) < 128;
        require(result == isRead, "whether a value is read");
        if (!isRead) return;
        model_.name = isWalk ? Text(found) : isUnnamed ? Text() : name;
        model_.length = size;
        model_.set(type, std::string(data, size) + std::string(4, '\0'));
        if (isWalk) ++valuePosition_;
    }

    void write() {
        const std::string name = drawnName(), text = drawnData().c_str(), path = open_ + '|' + name;
        const std::uint8_t choice = input_.byte();
        auto expected = testing_support::registryText();
        if (choice % 4 == 0) {
            require(!key_.SetString(name.c_str(), nullptr), "SetString without a text");
        } else if (choice % 4 == 1) {
            require(key_.SetString(name.c_str(), text.c_str()) == isOpen_, "SetString");
            expected[path] = "1:" + text + '\0';
        } else if (choice % 4 == 2) {
            require(key_.SetDword(name.c_str(), 0x80000000u + choice) == isOpen_, "SetDword");
            expected[path] = std::string("4:") + char(choice) + std::string("\0\0\x80", 3);
        } else {
            require(key_.RemoveValue(name.c_str()) == (isOpen_ && expected.contains(path)), "RemoveValue");
            expected.erase(path);
        }
        require(!isOpen_ || testing_support::registryText() == expected, "what is written");
    }

    /// Opens, creates, looks for or closes a key, at a place that is given before or with the call.
    void open() {
        int (RegKey::*const calls[])() = {&RegKey::Open, &RegKey::Create, &RegKey::Exists, &RegKey::Close};
        int (RegKey::*const callsAt[])(HKEY, const char*) = {&RegKey::Open, &RegKey::Create, &RegKey::Exists};
        const char* const paths[] = {"home", "home", "home\\a", "home\\new\\deep", "none", "", nullptr};
        enum { kOpen, kCreate, kExists, kClose };
        const std::uint8_t call = input_.byte() % 4, form = input_.byte() % 2, under = input_.byte() % 8;
        const char* const path = input_.oneOf(paths);
        const std::string below = path ? path : "";
        const bool isOwn = under == 1 && isOpen_ && open_ != "USER";  // below itself, which is closed first
        const HKEY ancestor = isOwn ? key_.Handle() : under ? HKEY_CURRENT_USER : nullptr;
        HKEY probe = nullptr;
        const bool isThere = !isOwn && RegOpenKeyExA(ancestor, path, 0, 0x1001F, &probe) == ERROR_SUCCESS;
        RegCloseKey(probe);
        if (form == 0 || call == kClose) {
            key_.SetAncestor(ancestor);
            require(key_.SetRelPath(path) == 1, "SetRelPath");
        }
        const int result = form == 0 || call == kClose ? (key_.*calls[call])() : (key_.*callsAt[call])(ancestor, path);
        const bool isFound = call == kOpen ? isThere : call == kCreate ? ancestor && !isOwn : isThere && !below.empty();
        require(result == (isFound || call == kClose), "opening and closing");
        isOpen_ = call < kExists && isFound;
        open_ = below.empty() ? "USER" : "USER\\" + below;
        if (call < kExists) keyPosition_ = valuePosition_ = 0;
        require(call != kCreate || !isFound || below.empty() || testing_support::registryText().contains(open_),
                "what is created");
    }

    /// Keys of each construction, and one that forgets what it wraps.
    void construct() {
        const char* const paths[] = {"home", "made\\deep", nullptr};
        const char* const path = input_.oneOf(paths);
        const HKEY ancestor = input_.byte() % 2 ? HKEY_CURRENT_USER : nullptr;
        RegKey made(ancestor, path), below(&key_, path), none(static_cast<RegKey*>(nullptr), path);
        require(made.Opened() == (ancestor && path) && below.Opened() == (isOpen_ && path) && !none.Opened(), "made");
        require(RegKey(HKEY_CURRENT_USER).Create(HKEY_CURRENT_USER, "home"), "below a predefined key that it wraps");
        HKEY raw = nullptr;
        RegCreateKeyA(HKEY_CURRENT_USER, "home", &raw);
        RegKey forgetful(raw);
        forgetful.Init();
        require(!forgetful.Opened() && !forgetful.Handle(), "Init");
        require(RegKey(raw).SetDword("n", 1), "not closed by the one that forgot it");
        require(RegDeleteValueA(raw, "n") == ERROR_INVALID_HANDLE, "closed by its owner");
    }

    /// One step over the subkeys, into a key or into a name.
    void walk() {
        const bool starts = input_.byte() % 4 == 0, byName = input_.byte() % 2;
        if (starts) keyPosition_ = 0;
        const std::vector<std::string> names = testing_support::subkeysOf(key_.Handle());
        const bool isFound = keyPosition_ < names.size() && names[keyPosition_].size() < 128;
        require(!key_.NextSubKey(static_cast<RegKey*>(nullptr)) && !key_.NextSubKey(static_cast<char*>(nullptr)),
                "no child");
        require(!key_.SubKeyByName("a", &child_), "SubKeyByName");
        Block name(128);
        std::strcpy(name, "kept");
        if (byName) {
            require((starts ? key_.FirstSubKey(name) : key_.NextSubKey(name)) == isFound, "whether a name is found");
            require(std::string(name) == (isFound ? names[keyPosition_] : "kept"), "the subkey's name");
        } else {
            const char* const found = starts ? key_.FirstSubKey(&child_) : key_.NextSubKey(&child_);
            require(found ? isFound && found == names[keyPosition_] : !isFound, "the subkey that is found");
            isChildOpen_ = isChildOpen_ || isFound;
            require(child_.Opened() == isChildOpen_, "the child");
        }
        if (isFound) ++keyPosition_;
    }

    Input& input_;
    RegKey key_, child_;
    RegValue value_;
    ValueModel model_;
    std::string open_;
    bool isOpen_ = false, isChildOpen_ = false;
    DWORD keyPosition_ = 0, valuePosition_ = 0;
};

inline void property(Input& input) {
    RegistryScene scene(input);
    while (!input.atEnd()) scene.step();
}

}  // namespace properties
