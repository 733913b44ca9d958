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

inline std::string textUpToZero(const std::string& bytes) {
    return bytes.substr(0, bytes.find('\0'));
}

struct ValueModel {
    Text name, data;
    DWORD type = 0;
    unsigned long length = 0;

    void set(DWORD newType, const Text& source) {
        type = newType;
        data.reset();
        if (type == REG_SZ) {
            data = textUpToZero(source.value_or(""));
            length = std::max<unsigned long>(length, data->size() + 1);
            data->resize(length);
        } else if (type == REG_BINARY || type == REG_DWORD) {
            if (source) data = source->substr(0, type == REG_BINARY ? length : 4);
            if (source && type == REG_DWORD) data->resize(std::max<unsigned long>(length, 4));
            if (!source) length = 0;
        }
    }
    unsigned long number() const {
        std::uint32_t number = 0;
        if (type == REG_DWORD && data) std::memcpy(&number, data->data(), 4);
        return number;
    }
    bool isYes() const {
        if (!data || type == REG_DWORD) return number() != 0;
        if (type == REG_BINARY) return (*data)[0] != 0;
        const char second = data->size() > 1 ? (*data)[1] : '\0';
        const bool isOn = ((*data)[0] == 'o' || (*data)[0] == 'O') && (second == 'n' || second == 'N');
        return isOn || (*data)[0] == '1' || std::strchr("yYtT", (*data)[0] ? (*data)[0] : '!');
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
        require(key_.Opened() == isOpen_ && (key_.Handle() != nullptr) == isOpen_, "whether the key is open");
        require(!value_.Name() == !model_.name && value_.NameLen() == model_.name.value_or("").size(),
                "the name's length");
        require(!model_.name || value_.Name() == *model_.name, "the name");
        require(static_cast<DWORD>(value_.Type()) == model_.type && value_.DataLen() == model_.length,
                "type and length");
        require(value_.String() == static_cast<void*>(value_.Buffer()) && !value_.Buffer() == !model_.data,
                "the data's place");
        require(!model_.data || std::memcmp(value_.Buffer(), model_.data->data(), model_.data->size()) == 0,
                "the data");
        require(value_.Value() == model_.number() && value_.BoolValue() == model_.isYes(), "number and setting");
    }

private:
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

    /// What other programs store.
    void store() {
        const std::string name = drawnName();
        const std::uint8_t choice = input_.byte() % 8;
        if (choice == 0)
            testing_support::givenValue(HKEY_CURRENT_USER, "home\\" + name, "", REG_SZ, "");
        else if (choice == 1 &&
                 open_ != (name.empty() ? "USER\\home" : "USER\\home\\" + name))  // not under the open key
            RegDeleteKeyA(HKEY_CURRENT_USER, ("home\\" + name).c_str());
        else
            testing_support::givenValue(HKEY_CURRENT_USER, "home", name.c_str(), drawnType(), drawnData());
    }

    void change() {
        const std::string bytes = drawnData();
        const DWORD type = drawnType();
        Text source = bytes;
        // A block of exactly what the rule reads.
        source->resize(type == REG_BINARY ? model_.length : type == REG_DWORD ? 4 : textUpToZero(bytes).size() + 1);
        const std::unique_ptr<unsigned char[]> block(new unsigned char[source->size()]);
        std::memcpy(block.get(), source->data(), source->size());
        const std::uint8_t choice = input_.byte() % 8;
        if (choice == 0) return value_.SetDataLength(model_.length = input_.byte() % 16);
        if (choice == 1) return value_.SetName(bytes.c_str()), void(model_.name = textUpToZero(bytes));
        if (choice == 2) {  // a part of what it holds
            value_.SetName(model_.name ? value_.Name() + model_.name->size() / 2 : nullptr);
            if (model_.name) model_.name->erase(0, model_.name->size() / 2);
        } else if (choice == 3 && model_.type == REG_SZ && model_.data) {
            value_.SetData(RegValString, value_.Buffer() + model_.data->size() / 2);
            model_.set(REG_SZ, model_.data->substr(model_.data->size() / 2));
        } else {
            const bool isNone = choice == 4;
            value_.SetData(RegValType(type), isNone ? nullptr : block.get());
            model_.set(type, isNone ? Text() : source);
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
        auto* const bytes = reinterpret_cast<BYTE*>(data);
        const LONG stored =
            isWalk ? RegEnumValueA(key_.Handle(), valuePosition_, found, &nameSize, nullptr, &type, bytes, &size)
                   : RegQueryValueExA(key_.Handle(), name.c_str(), nullptr, &type, bytes, &size);
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
        const std::string name = drawnName(), text = textUpToZero(drawnData());
        auto expected = testing_support::registryText();
        std::string& stored = expected[open_ + '|' + name];
        const bool isThere = !stored.empty();
        const std::uint8_t choice = input_.byte();
        if (choice % 3 == 0) {
            require(key_.SetString(name.c_str(), choice % 2 ? text.c_str() : nullptr) == (isOpen_ && choice % 2),
                    "SetString");
            if (choice % 2) stored = "1:" + text + '\0';
        } else if (choice % 3 == 1) {
            require(key_.SetDword(name.c_str(), 0x80000000u + choice) == isOpen_, "SetDword");
            stored = std::string("4:") + char(choice) + std::string("\0\0\x80", 3);
        } else {
            require(key_.RemoveValue(name.c_str()) == (isOpen_ && isThere), "RemoveValue");
            stored.clear();
        }
        std::erase_if(expected, [](const auto& entry) {
            return entry.second.empty() && entry.first.find('|') != entry.first.npos;
        });
        require(!isOpen_ || testing_support::registryText() == expected, "what is written");
    }

    /// Describes a key and opens, creates, looks for or closes it, each in both forms.
    void open() {
        const char* const paths[] = {"home", "home", "home\\a", "home\\new\\deep", "none", "", nullptr};
        const std::uint8_t choice = input_.byte() % 8, form = input_.byte() % 4;
        const char* const path = input_.oneOf(paths);
        const std::uint8_t under = input_.byte() % 8;
        const bool isOwn = under == 1 && isOpen_ && open_ != "USER";  // below itself, which is closed first
        const HKEY ancestor = isOwn ? key_.Handle() : under ? HKEY_CURRENT_USER : nullptr;
        if (choice == 7) return require(key_.Close() == 1 && key_.Close() == 1, "Close"), void(isOpen_ = false);
        const std::string below = path ? path : "";
        if (form < 2) {
            key_.SetAncestor(ancestor);
            require(key_.SetRelPath(path) == 1, "SetRelPath");
        }
        HKEY probe = nullptr;
        const bool isThere = !isOwn && RegOpenKeyExA(ancestor, path, 0, 0x1001F, &probe) == ERROR_SUCCESS;
        RegCloseKey(probe);
        const bool creates = choice < 2, looks = choice == 2;
        const bool isFound = looks ? isThere && !below.empty() : creates ? ancestor && !isOwn : isThere;
        int result = 0;
        if (form < 2)
            result = looks ? key_.Exists() : creates ? key_.Create() : key_.Open();
        else
            result = looks     ? key_.Exists(ancestor, path)
                     : creates ? key_.Create(ancestor, path)
                               : key_.Open(ancestor, path);
        require(result == isFound, "opening");
        isOpen_ = !looks && isFound;
        open_ = below.empty() ? "USER" : "USER\\" + below;
        if (!looks) keyPosition_ = valuePosition_ = 0;
        require(!creates || !isFound || below.empty() || testing_support::registryText().contains(open_),
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
        const std::uint8_t choice = input_.byte() % 8;
        if (choice < 2) keyPosition_ = 0;
        const std::vector<std::string> names =
            isOpen_ ? testing_support::subkeysOf(key_.Handle()) : std::vector<std::string>();
        const bool isFound = keyPosition_ < names.size() && names[keyPosition_].size() < 128;
        require(choice != 0 || (!key_.FirstSubKey(static_cast<RegKey*>(nullptr)) &&
                                !key_.FirstSubKey(static_cast<char*>(nullptr))),
                "no child");
        require(!key_.SubKeyByName("a", &child_), "SubKeyByName");
        const std::unique_ptr<char[]> name(new char[128]{"kept"});
        if (choice % 2) {
            require((choice == 1 ? key_.FirstSubKey(name.get()) : key_.NextSubKey(name.get())) == isFound,
                    "whether a name is found");
            require(name.get() == (isFound ? names[keyPosition_] : "kept"), "the subkey's name");
        } else {
            const char* const found = choice == 0 ? key_.FirstSubKey(&child_) : key_.NextSubKey(&child_);
            require(found ? isFound && found == names[keyPosition_] : !isFound, "the subkey that is found");
            if (isFound) isChildOpen_ = true;
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
