// RegValue, RegKey and the settings that are loaded with them, as operations on a model: values of any type, size and
// source, in a registry that anyone may have written to, and keys in every state.
#pragma once

#include <algorithm>
#include <optional>

#include "code_pages.h"
#include "dialogs/font_settings.h"
#include "entry/entry.h"
#include "macnames/name_settings.h"
#include "properties/property.h"
#include "registry_text.h"
#include "tamrix32/registry.h"

namespace properties {

using Text = std::optional<std::string>;

struct ValueModel {
    Text name, data;
    DWORD type = 0;
    unsigned long length = 0;

    /// What is read of a value of the registry; nothing of one of more than 128 bytes.
    static std::optional<ValueModel> stored(const testing_support::RegistryText& content, const std::string& path,
                                            const Text& name) {
        const auto found = content.find(path + '|' + name.value_or(""));
        if (found == content.end()) return {};
        const std::string bytes = found->second.substr(found->second.find(':') + 1);
        ValueModel value{name, {}, 0, static_cast<unsigned long>(bytes.size())};
        value.set(static_cast<DWORD>(std::stoul(found->second)), bytes + std::string(4, '\0'));
        return bytes.size() <= 128 ? std::optional(value) : std::nullopt;
    }
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
                                      &R::open,  &R::construct, &R::walk, &R::walk, &R::load};
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
    std::string drawnText() {
        const char* const texts[] = {"yes", "True", "1", "on", "oN", "o", "no", "off", "", " yes", "t", "Y"};
        return input_.byte() % 4 ? input_.oneOf(texts) : std::string(127 + input_.byte() % 3, 'x');
    }
    std::string drawnData() {
        const std::uint8_t choice = input_.byte() % 4;
        return choice < 2 ? drawnText() + std::string(choice, '\0')
                          : input_.bytes(9) + (choice == 2 ? "" : drawnText());
    }
    DWORD drawnType() {
        const DWORD types[] = {REG_SZ, REG_SZ, REG_SZ, REG_BINARY, REG_DWORD, REG_DWORD, REG_EXPAND_SZ};
        return input_.oneOf(types);
    }

    /// Changes what is stored, as other programs do; the open key is not deleted.
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

    /// Each source is a block of exactly the bytes that the rule reads; some are part of the value's own data.
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

    /// By name or in a walk, which stops at a value that can't be read.
    void read() {
        const std::uint8_t choice = input_.byte() % 8;
        const bool isWalk = choice > 3;
        Text name = choice ? drawnName() : Text();
        if (choice == 4) valuePosition_ = 0;
        bool isThere = isOpen_;
        if (isWalk) {
            char found[512] = "";
            DWORD size = sizeof found;
            isThere = !RegEnumValueA(key_.Handle(), valuePosition_, found, &size, nullptr, nullptr, nullptr, nullptr);
            isThere = isThere && size < 128;
            name = found;
        }
        require(choice != 4 || !key_.FirstValue(nullptr), "a walk without a value");
        require(!key_.NextValue(nullptr) && !key_.ValueByName("a", nullptr), "no value to read into");
        const int result = isWalk ? key_.NextValue(&value_) : key_.ValueByName(name ? name->c_str() : nullptr, &value_);
        const auto expected = isThere ? ValueModel::stored(testing_support::registryText(), open_, name) : std::nullopt;
        require(result == expected.has_value(), "whether a value is read");
        if (!expected) return;
        model_ = *expected;
        if (isWalk) ++valuePosition_;
    }

    /// Changes some of the settings and loads them, as each process does.
    void load() {
        const std::string path = "Software\\Quillon Systems, Inc.\\File Client";
        const char* const names[] = {"QuoteChars", "QuoteBracketChars", "DialogFont", "DialogFontSize"};
        for (const char* name : names)
            if (input_.byte() % 2)
                testing_support::givenValue(HKEY_LOCAL_MACHINE, path, name, drawnType(), drawnData());
        tamrix::loadProcess();
        const auto content = testing_support::registryText();
        ValueModel settings[4];
        for (std::size_t i = 0; i < 4; ++i)
            settings[i] = ValueModel::stored(content, "MACHINE\\" + path, names[i]).value_or(ValueModel());
        const auto& [set, brackets, face, size] = settings;
        tamrix::QuoteSettings quotes = tamrix::defaultQuotes(tamrix::leadByteTable.hasLeadBytes);
        for (int byte = 0; set.data && byte < 256; ++byte)
            quotes.inSet[byte] = set.data->substr(0, set.length).find(static_cast<char>(byte)) != std::string::npos;
        if (brackets.type == REG_SZ && std::strlen(brackets.data->c_str()) >= 2) {
            quotes.open = static_cast<unsigned char>((*brackets.data)[0]);
            quotes.close = static_cast<unsigned char>((*brackets.data)[1]);
        }
        const tamrix::LeadByteTable& leads = tamrix::leadByteTable;
        const auto* const table =
            tamrix::chooseTranslator(static_cast<std::uint16_t>(GetOEMCP()), leads.hasLeadBytes).table;
        const tamrix::NameRules rules = tamrix::makeNameRules(quotes, leads, table);
        require(!std::memcmp(&tamrix::nameRules, &rules, sizeof rules), "the quote set, brackets and table of names");
        const bool isConfigured = face.type == REG_SZ && size.type == REG_DWORD;
        const char* const loaded = tamrix::dialogFontSettings.face();
        require(loaded ? isConfigured && !std::strcmp(loaded, face.data->c_str()) : !isConfigured, "the font");
        require(tamrix::dialogFontSettings.pointSize == (isConfigured ? size.number() : 0), "the font's size");
    }

    void write() {
        const std::string name = drawnName(), text = drawnText(), path = open_ + '|' + name;
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

    /// Opens, creates, looks for or closes a key, whose path is given before or with the call.
    void open() {
        int (RegKey::*const calls[])() = {&RegKey::Open, &RegKey::Create, &RegKey::Exists, &RegKey::Close};
        int (RegKey::*const callsAt[])(HKEY, const char*) = {&RegKey::Open, &RegKey::Create, &RegKey::Exists};
        const char* const paths[] = {"home", "home", "home\\a", "home\\new\\deep", "none", "", nullptr};
        enum { kOpen, kCreate, kExists, kClose };
        const std::uint8_t call = input_.byte() % 4, form = input_.byte() % 2, under = input_.byte() % 8;
        const char* const path = input_.oneOf(paths);
        const std::string below = path ? path : "";
        const bool isOwn = under == 1 && isOpen_ && open_ != "USER";  // below itself, and it is closed first
        const HKEY ancestor = isOwn ? key_.Handle() : under ? HKEY_CURRENT_USER : nullptr;
        const bool isThere =
            ancestor && !isOwn && (below.empty() || testing_support::registryText().contains("USER\\" + below));
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

    /// Keys made by each constructor, and one that forgets the handle that it owns.
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
        require(RegKey(raw).SetDword("n", 1), "not closed by the key that forgot it");
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
    const UINT pages[] = {1252, 932};
    testing_support::useCodePage(input.oneOf(pages));
    RegistryScene scene(input);
    while (!input.atEnd()) scene.step();
}

}  // namespace properties
