// The extension store as operations on a model: the flat functions, a cursor and other programs change one registry,
// whose whole content, what the cursor holds and what both readers fetch are compared at each step.
#pragma once

#include <algorithm>
#include <climits>
#include <optional>
#include <vector>

#include "code_pages.h"
#include "properties/property.h"
#include "registry_text.h"
#include "tamrix32/extmap.h"

namespace properties {

using Text = std::optional<std::string>;

inline char* bytesOf(const Text& text) {
    return text ? const_cast<char*>(text->c_str()) : nullptr;
}

inline Text textAt(const char* text) {
    return text ? Text(text) : Text();
}

inline bool isSameName(const std::string& left, const std::string& right) {
    const auto small = [](char byte) { return byte >= 'A' && byte <= 'Z' ? byte + 32 : byte; };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [&](char a, char b) { return small(a) == small(b); });
}

/// What the registry has to hold, and what is to be read of it. A key is named by its path, which is empty for none.
struct StoreModel {
    static constexpr char kSettings[] = "Software\\Quillon Systems, Inc.\\File Client";
    testing_support::RegistryText content;

    std::string pathOf(const std::string& name) const {
        for (const auto& entry : content)
            if (isSameName(entry.first, "CLASSES\\" + name)) return entry.first;
        return "";
    }
    std::string make(const std::string& name) {
        if (pathOf(name).empty()) content["CLASSES\\" + name] = "";
        return pathOf(name);
    }
    void put(const std::string& path, const std::string& name, const Text& text) {
        if (text) content[path + '|' + name] = "1:" + *text + '\0';
    }
    /// A string value's bytes; none for another type and for more than `largest`.
    Text stored(const std::string& path, const std::string& name, std::size_t largest) const {
        const auto found = content.find(path + '|' + name);
        const bool isRead = found != content.end() && found->second.starts_with("1:");
        return isRead && found->second.size() - 2 <= largest ? Text(found->second.substr(2)) : Text();
    }
    Text code(const std::string& path, const std::string& name) const {
        const Text bytes = stored(path, name, 5);
        return bytes && bytes->size() == 5 ? Text(bytes->substr(0, 4)) : Text();
    }
    std::string comment(const std::string& path, std::size_t room) const {
        const Text bytes = stored(path, "Mac Comment", room);
        return bytes && (bytes->size() < room || bytes->back() == 0) ? bytes->c_str() : "";
    }
    /// As the cursor reads it.
    Text text(const std::string& path, const std::string& name) const {
        const Text bytes = stored(path, name, 128);
        return bytes ? Text(bytes->c_str()) : Text();
    }
    void removeValues(const std::string& path) {
        for (const char* value : {"Mac Type", "Mac Creator", "Mac Comment"}) content.erase(path + '|' + value);
    }
    void removeKey(const std::string& path) {
        const auto next = std::next(content.find(path));
        const bool isEmpty = std::none_of(content.begin(), content.end(), [&](const auto& other) {
            return other.first.starts_with(path + '|') || other.first.starts_with(path + '\\');
        });
        if (isEmpty) content.erase(std::prev(next));
    }
};

class Store {
public:
    explicit Store(Input& input) : input_(input) { testing_support::emptyRegistry(); }

    void step() {
        using S = Store;
        void (S::*const steps[])() = {&S::byOthers,  &S::byOthers,  &S::add,  &S::remove, &S::read,
                                      &S::enumerate, &S::enumerate, &S::set,  &S::copy,   &S::write,
                                      &S::find,      &S::defaults,  &S::walk, &S::walk,   &S::walk};
        (this->*input_.oneOf(steps))();
        require(testing_support::registryText() == model_.content, "what is stored");
        for (std::size_t i = 0; i < 4; ++i) require(textAt((cursor_.*kHeld[i])()) == held_[i], "what the cursor holds");
    }

private:
    enum { kExtension, kType, kCreator, kComment };
    static constexpr char* (CExtensionMap::*kHeld[])() = {&CExtensionMap::Extension, &CExtensionMap::Type,
                                                          &CExtensionMap::Creator, &CExtensionMap::Comment};
    /// An @ is a character whose second byte is a backslash's where the code page has such; a # is 126 characters.
    Text drawnExtension() {
        const char* const all[] = {"a",
                                   ".a",
                                   ".A",
                                   "B",
                                   ".b",
                                   "12345678901234@",
                                   "1234567890123@y",
                                   ".c",
                                   ".d",
                                   "",
                                   nullptr,
                                   ".12345678901234",
                                   ".123456789012345",
                                   ".1234567890123456",
                                   ".#",
                                   ".#z"};
        const char* const drawn = input_.oneOf(all);
        std::string text = drawn ? drawn : "";
        const char* const letter = GetACP() == 932   ? "\x83\x5C"
                                   : GetACP() == 936 ? "\x81\x5C"
                                   : GetACP() == 949 ? "\xB0\xA1"
                                   : GetACP() == 950 ? "\xA5\x5C"
                                                     : "\xB0";
        if (const auto at = text.find('@'); at != text.npos) text.replace(at, 1, letter);
        if (const auto at = text.find('#'); at != text.npos) text.replace(at, 1, 126, 'y');
        return drawn ? Text(text) : Text();
    }
    Text drawnText() {
        const Text all[] = {"TEXT", "TEXT", "text", "dosa", "dosa", "TEX", "TEXTS", "", std::string(140, 'c'), {}};
        return input_.oneOf(all);
    }
    /// At most so many bytes, up to a character's end.
    static std::string cut(const std::string& text, std::size_t most) {
        const auto leads = leadBytesOf(GetACP());
        std::size_t end = 0, next = 0;
        for (; next <= most && end < text.size(); next = end + (leads.leads(text[end]) ? 2 : 1)) end = next;
        return text.substr(0, end);
    }
    static std::string keyName(const Text& extension) {
        return extension->starts_with('.') ? *extension : "." + cut(*extension, 15);
    }
    /// Any type and size, no terminator, keys that are no mappings: what careless programs leave.
    void byOthers() {
        const Text extension = drawnExtension();
        const std::string name = extension ? keyName(extension) : "a", size(110 + input_.byte() % 160, 'T');
        const char* const values[] = {"Mac Type", "Mac Creator", "Mac Type", "Mac Creator", "Mac Comment", "", "else"};
        const char* const defaults[] = {"Default Mac Type", "Default Mac Creator"};
        const DWORD types[] = {REG_SZ, REG_SZ, REG_SZ, REG_SZ, REG_BINARY, REG_DWORD, REG_EXPAND_SZ, REG_SZ};
        const std::string bytes[] = {{"TEXT", 5}, {"dosa", 5},  {"TEXT", 5}, {"dosa", 5}, {"TE\0x", 5}, "TEXT",
                                     {"text", 5}, {"TEXTS", 6}, "",          size,        size + '\0',  {"DOSA", 5}};
        const DWORD type = input_.oneOf(types);
        const std::string& data = input_.oneOf(bytes);
        const std::uint8_t choice = input_.byte() % 16;
        if (choice == 0)
            RegDeleteKeyA(HKEY_CLASSES_ROOT, name.c_str());
        else if (choice == 1)
            testing_support::givenValue(HKEY_CLASSES_ROOT, name + "\\below", "", type, data);
        else if (choice < 5)
            testing_support::givenValue(HKEY_LOCAL_MACHINE, StoreModel::kSettings, input_.oneOf(defaults), type, data);
        else
            testing_support::givenValue(HKEY_CLASSES_ROOT, name, input_.oneOf(values), type, data);
        model_.content = testing_support::registryText();
    }

    void add() {
        const Text extension = drawnExtension(), type = drawnText(), creator = drawnText(), comment = drawnText();
        SExtensionMap map;
        map.extension = bytesOf(extension);
        map.type = bytesOf(type);
        map.creator = bytesOf(creator);
        map.comment = bytesOf(comment);
        const bool isMapping =
            !extension.value_or("").empty() && type.value_or("").size() == 4 && creator.value_or("").size() == 4;
        require(AddExtMap(&map) == isMapping, "AddExtMap");
        if (!isMapping) return;
        const std::string path = model_.make(keyName(extension));
        model_.put(path, "Mac Comment", comment);
        model_.put(path, "Mac Type", type);
        model_.put(path, "Mac Creator", creator);
    }

    void remove() {
        const Text extension = drawnExtension();
        require(RemoveExtMap(bytesOf(extension)) == 1, "RemoveExtMap");
        const std::string path = extension ? model_.pathOf(keyName(extension)) : "";
        if (path.empty()) return;
        model_.removeValues(path);
        model_.removeKey(path);
    }

    /// A record with buffers of exactly the sizes that it says, some of them missing.
    struct Record : SExtensionMap {
        explicit Record(Input& input)
            : room(input.byte() % 4 ? 256 : 1 + input.byte()),
              extensionRoom(input.byte() % 2 ? 16 : 1 + input.byte() % 18) {
            const std::uint8_t missing = input.byte() % 8;
            for (int i = 0; i < 4; ++i) blocks[i].reset(new char[i < 2 ? 5 : i == 2 ? room : extensionRoom]);
            if (missing != 0) type = blocks[0].get();
            if (missing != 1) creator = blocks[1].get();
            if (missing != 2) comment = blocks[2].get();
            if (missing != 3) extension = blocks[3].get();
            commentSize = room == 256 ? 0 : static_cast<unsigned>(room);
            extensionSize = extensionRoom == 16 ? 0 : static_cast<int>(extensionRoom);
        }
        void expectCodes(const Text& wantedType, const Text& wantedCreator) const {
            require(!type || std::string(type, 5) == *wantedType + '\0', "the type read");
            require(!creator || std::string(creator, 5) == *wantedCreator + '\0', "the creator read");
        }
        std::size_t room, extensionRoom;
        std::unique_ptr<char[]> blocks[4];
    };

    void read() {
        const Text extension = drawnExtension();
        const std::string path = extension ? model_.pathOf(keyName(extension)) : "";
        Text type = model_.code(path, "Mac Type"), creator = model_.code(path, "Mac Creator");
        require(HasExtMap(bytesOf(extension)) == (type && creator), "HasExtMap");
        Record record(input_);
        record.extension = bytesOf(extension);
        const bool isRead = !path.empty() && (!record.type || type) && (!record.creator || creator);
        require(GetExtMap(&record) == isRead, "GetExtMap");
        if (isRead) record.expectCodes(type, creator);
        require(path.empty() || !record.comment || record.comment == model_.comment(path, record.room), "the comment");
        const auto [defaultType, defaultCreator] = defaultCodes(record.type, record.creator);
        GetDefaultExtMap(&record);
        record.expectCodes(defaultType, defaultCreator);
    }

    /// Both or neither, of those that are wanted.
    std::pair<Text, Text> defaultCodes(bool wantsType, bool wantsCreator) {
        const std::string settings = std::string("MACHINE\\") + StoreModel::kSettings;
        const Text type = model_.code(settings, "Default Mac Type"),
                   creator = model_.code(settings, "Default Mac Creator");
        if ((wantsType && !type) || (wantsCreator && !creator)) return {"TEXT", "dosa"};
        return {type, creator};
    }

    /// One step of an enumeration that others go on meanwhile.
    void enumerate() {
        Record record(input_);
        const SExtensionMap given = record;
        const Text type = drawnText(), creator = drawnText();
        const std::uint8_t choice = input_.byte();
        record.index = choice % 64 == 0 ? UINT_MAX : choice % 8 == 1 ? 0 : index_;
        const bool byCodes = choice / 8 % 2;
        if (byCodes) record.type = bytesOf(type), record.creator = bytesOf(creator);
        index_ = record.index;
        const std::vector<std::string> all = testing_support::subkeysOf(HKEY_CLASSES_ROOT);
        std::string found, path;
        while (found.empty() && index_ != UINT_MAX && (!byCodes || (type && creator)) && index_++ < all.size()) {
            const std::string& name = all[index_ - 1];
            path = model_.pathOf(name);
            const Text itsType = model_.code(path, "Mac Type"), itsCreator = model_.code(path, "Mac Creator");
            if (name[0] != '.' || name.size() > 16 || !itsType || !itsCreator) continue;
            if (!byCodes || (type->substr(0, 4) == *itsType && creator->substr(0, 4) == *itsCreator)) found = name;
        }
        require((byCodes ? EnumExtMapCT : EnumExtMap)(&record) == !found.empty(), "whether one was found");
        require(record.index == index_ && record.extension == given.extension && record.comment == given.comment,
                "the record");
        require(record.type == (byCodes ? bytesOf(type) : given.type) &&
                    record.creator == (byCodes ? bytesOf(creator) : given.creator),
                "the codes' buffers");
        if (found.empty()) return;
        if (!byCodes) record.expectCodes(model_.code(path, "Mac Type"), model_.code(path, "Mac Creator"));
        require(!record.comment || record.comment == model_.comment(path, record.room), "the comment");
        require(!record.extension || record.extension == cut(found.substr(1), record.extensionRoom - 1),
                "the extension");
    }

    void set() {
        void (CExtensionMap::*const setters[])(char*) = {&CExtensionMap::SetExtension, &CExtensionMap::SetType,
                                                         &CExtensionMap::SetCreator, &CExtensionMap::SetComment};
        const std::size_t which = input_.byte() % 4;
        char* const held = (cursor_.*kHeld[which])();
        Text text = which == kExtension ? drawnExtension() : drawnText();
        const bool isPart = input_.byte() % 8 == 0 && held;
        if (isPart) text = held + std::strlen(held) / 2;
        (cursor_.*setters[which])(isPart ? held + std::strlen(held) / 2 : bytesOf(text));
        held_[which] = text;
    }

    void write() {
        const bool hasKey = !held_[kExtension].value_or("").empty();
        const std::string path = hasKey ? model_.make(*held_[kExtension]) : "";
        if (input_.byte() % 3 == 0) {
            require(cursor_.Delete() == hasKey, "Delete");
            model_.removeValues(path);
            return;
        }
        require(cursor_.Create() == (hasKey && held_[kCreator] && held_[kType]), "Create");
        if (!hasKey || !held_[kCreator]) return;
        model_.put(path, "Mac Creator", held_[kCreator]);
        if (!held_[kType]) return;
        model_.put(path, "Mac Type", held_[kType]);
        model_.content.erase(path + "|Mac Comment");
        model_.put(path, "Mac Comment", held_[kComment]);
    }

    /// A copy holds the strings and begins no pass; what is assigned ends its own.
    void copy() {
        CExtensionMap copied(cursor_);
        const CExtensionMap& source = input_.byte() % 2 ? cursor_ : copied;
        require(!copied.Next(), "a copy's pass");
        if (&source == &copied) {
            copied.SetType(bytesOf(held_[kType] = "copy"));
            isPassing_ = false;
        }
        cursor_ = source;
    }

    void find() {
        const bool isHeld = input_.byte() % 4 == 0;
        const Text extension = isHeld ? held_[kExtension] : drawnExtension();
        const int result = cursor_.Find(isHeld ? cursor_.Extension() : bytesOf(extension));
        isPassing_ = false;
        const std::string path = extension ? model_.make((extension->starts_with('.') ? "" : ".") + *extension) : "";
        const Text type = model_.text(path, "Mac Type"), creator = model_.text(path, "Mac Creator");
        require(result == (type && creator), "Find");
        if (!result) return;
        held_[kType] = type;
        held_[kCreator] = creator;
    }

    void defaults() {
        const auto [type, creator] = defaultCodes(held_[kType].has_value(), held_[kCreator].has_value());
        cursor_.Default();
        if (held_[kType]) held_[kType] = type->c_str();
        if (held_[kCreator]) held_[kCreator] = creator->c_str();
    }

    /// Starts a pass or goes on with it, by codes or over all.
    void walk() {
        const std::uint8_t choice = input_.byte() % 8;
        const bool byCodes = choice % 2;
        Text type = held_[kType], creator = held_[kCreator];
        int result = 0;
        if (choice < 4)
            result = byCodes ? cursor_.NextCT() : cursor_.Next();
        else if (!byCodes)
            result = cursor_.First();
        else {
            const bool areHeld = choice == 5;  // and exchanged
            creator = areHeld ? held_[kType] : drawnText();
            type = areHeld ? held_[kCreator] : drawnText();
            result = areHeld ? cursor_.FirstCT(cursor_.Type(), cursor_.Creator())
                             : cursor_.FirstCT(bytesOf(creator), bytesOf(type));
            if (!creator || !type || creator->size() > 4 || type->size() > 4) return require(!result, "FirstCT");
        }
        if (choice >= 4) isPassing_ = true, position_ = 0;
        if (!isPassing_) return require(!result, "a step without a pass");
        if (type) type = type->substr(0, 4);
        if (creator) creator = creator->substr(0, 4);
        const std::vector<std::string> all = testing_support::subkeysOf(HKEY_CLASSES_ROOT);
        bool isFound = false;
        while (!isFound && (isPassing_ = position_ < all.size() && all[position_].size() < 128)) {
            const std::string name = all[position_++], path = model_.pathOf(name);
            const Text itsType = model_.text(path, "Mac Type"), itsCreator = model_.text(path, "Mac Creator");
            if (name[0] != '.' || !itsType || !itsCreator) continue;
            held_[kExtension] = name;
            held_[kType] = itsType;
            held_[kCreator] = itsCreator;
            held_[kComment] = model_.text(path, "Mac Comment");
            isFound = !byCodes || (held_[kType] == type && held_[kCreator] == creator);
        }
        if (byCodes) held_[kType] = type, held_[kCreator] = creator;
        require(result == isFound, "what a pass finds");
    }

    Input& input_;
    StoreModel model_;
    CExtensionMap cursor_;
    Text held_[4];
    bool isPassing_ = false;
    std::size_t position_ = 0;
    unsigned index_ = 0;
};

inline void property(Input& input) {
    const UINT pages[] = {1252, 1252, 932, 936, 950};
    testing_support::useCodePage(input.oneOf(pages));
    Store scene(input);
    while (!input.atEnd()) scene.step();
}

}  // namespace properties
