// The extension store as operations on a model. The flat functions, a cursor and other programs change one registry.
// Each step compares its whole content, the cursor's strings and what is read with the model.
#pragma once

#include <algorithm>
#include <climits>
#include <optional>

#include "code_pages.h"
#include "properties/property.h"
#include "registry_text.h"
#include "tamrix32/extmap.h"
#include "tamrix32/strings.h"

namespace properties {

using Text = std::optional<std::string>;
using Codes = std::pair<Text, Text>;

/// What the registry must contain, and what must be read from it.
struct StoreModel : testing_support::RegistryText {
    static constexpr char kSettings[] = "Software\\Quillon Systems, Inc.\\File Client";

    void put(const std::string& path, const std::string& name, const Text& text) {
        if (text) (*this)[path + '|' + name] = "1:" + *text + '\0';
    }
    void removeValues(const std::string& path) {
        for (const char* name : {"Mac Type", "Mac Creator", "Mac Comment"}) erase(path + '|' + name);
    }
    void removeIfEmpty(const std::string& path) {
        const bool hasSubkeys = lower_bound(path + '\\') != lower_bound(path + ']');
        const bool hasValues = lower_bound(path + '|') != lower_bound(path + '}');
        if (!hasSubkeys && !hasValues) erase(path);
    }
    /// The bytes of a string value; nothing if it has another type or more than `largest` bytes.
    Text bytes(const std::string& path, const std::string& name, std::size_t largest) const {
        const auto found = find(path + '|' + name);
        const bool isRead = found != end() && found->second.starts_with("1:") && found->second.size() - 2 <= largest;
        return isRead ? Text(found->second.substr(2)) : Text();
    }
    // As the flat functions read it,
    Codes codes(const std::string& path, const std::string& prefix = "") const {
        const auto code = [&](const std::string& name) {
            const Text stored = bytes(path, prefix + name, 5);
            return stored && stored->size() == 5 ? Text(stored->substr(0, 4)) : Text();
        };
        return {code("Mac Type"), code("Mac Creator")};
    }
    std::string comment(const std::string& path, std::size_t room) const {
        const Text stored = bytes(path, "Mac Comment", room);
        return stored && (stored->size() < room || stored->back() == 0) ? stored->c_str() : "";
    }
    /// Both or neither, of those that are wanted.
    Codes defaultCodes(bool wantsType, bool wantsCreator) const {
        const Codes found = codes(std::string("MACHINE\\") + kSettings, "Default ");
        const bool isFound = (found.first || !wantsType) && (found.second || !wantsCreator);
        return isFound ? found : Codes("TEXT", "dosa");
    }
    // and as the cursor does.
    Text text(const std::string& path, const std::string& name) const {
        const Text stored = bytes(path, name, 128);
        return stored ? Text(stored->c_str()) : Text();
    }
    Codes texts(const std::string& path) const { return {text(path, "Mac Type"), text(path, "Mac Creator")}; }
};

/// A string that a cursor holds and a record refers to.
struct Field {
    char* (CExtensionMap::*get)();
    void (CExtensionMap::*set)(char*);
    char* SExtensionMap::*inRecord;
};
constexpr Field kFields[] = {{&CExtensionMap::Extension, &CExtensionMap::SetExtension, &SExtensionMap::extension},
                             {&CExtensionMap::Type, &CExtensionMap::SetType, &SExtensionMap::type},
                             {&CExtensionMap::Creator, &CExtensionMap::SetCreator, &SExtensionMap::creator},
                             {&CExtensionMap::Comment, &CExtensionMap::SetComment, &SExtensionMap::comment}};

/// A record with buffers of exactly the sizes that it states; sometimes one buffer is missing.
struct Record : SExtensionMap {
    explicit Record(Input& input)
        : commentRoom(input.byte() % 2 ? 256 : 3 + input.byte() % 4),
          extensionRoom(input.byte() % 2 ? 16 : 1 + input.byte() % 18),
          blocks{Block(extensionRoom), Block(5), Block(5), Block(commentRoom)} {
        const std::uint8_t missing = input.byte() % 8;
        for (std::size_t i = 0; i < 4; ++i)
            this->*kFields[i].inRecord = i == missing ? nullptr : static_cast<char*>(blocks[i]);
        commentSize = commentRoom == 256 ? 0 : static_cast<unsigned>(commentRoom);
        extensionSize = extensionRoom == 16 ? 0 : static_cast<int>(extensionRoom);
    }
    void expect(const Codes& codes) const {
        require(!type || std::string(type, 5) == *codes.first + '\0', "the type read");
        require(!creator || std::string(creator, 5) == *codes.second + '\0', "the creator read");
    }
    std::size_t commentRoom, extensionRoom;
    Block blocks[4];
};

/// A registry and one cursor. All functions are called with the cursor's strings.
class Store {
public:
    explicit Store(Input& input) : input_(input) {
        testing_support::emptyRegistry();
        for (const char* extension : {".a", ".b", ".c", ".d"}) {
            testing_support::givenValue(HKEY_CLASSES_ROOT, extension, "Mac Type", REG_SZ, {"TEXT", 5});
            testing_support::givenValue(HKEY_CLASSES_ROOT, extension, "Mac Creator", REG_SZ, {"dosa", 5});
        }
        model_ = {testing_support::registryText()};
    }

    void step() {
        using S = Store;
        void (S::*const steps[])() = {&S::others, &S::others, &S::others,    &S::set,       &S::set,
                                      &S::set,    &S::set,    &S::add,       &S::create,    &S::remove,
                                      &S::read,   &S::read,   &S::enumerate, &S::walk,      &S::walk,
                                      &S::walk,   &S::find,   &S::copy,      &S::enumerate, &S::defaults};
        (this->*input_.oneOf(steps))();
        require(testing_support::registryText() == model_, "what is stored");
        expectHeld(cursor_);
    }

private:
    void expectHeld(CExtensionMap& cursor) const {
        for (std::size_t i = 0; i < 4; ++i) {
            const char* const text = (cursor.*kFields[i].get)();
            require(text ? held_[i] == text : !held_[i], "what the cursor holds");
        }
    }
    /// With and without a dot, with lengths near each limit; some end in a character whose trail byte may be a
    /// backslash.
    Text drawnExtension() {
        const char* const names[] = {"a", ".a", ".A", "B", ".b", ".c", ".d", ""};
        const std::size_t sizes[] = {13, 14, 15, 16, 126, 127};
        const UINT page = GetACP();
        const char* const letter = page == 932 || page == 936 ? "\x83\x5C" : page == 950 ? "\xA5\x5C" : "\xB0\xA1";
        const std::uint8_t choice = input_.byte() % 16;
        if (choice == 0) return {};
        if (choice < 10) return input_.oneOf(names);
        return (choice % 2 ? "." : "") + std::string(input_.oneOf(sizes), '1') + (choice < 13 ? letter : "");
    }
    /// At most `most` bytes, cut at a character boundary.
    static std::string cut(const std::string& text, std::size_t most) {
        char shortened[256];
        BufStrCpy(shortened, text.c_str(), static_cast<int>(most + 1));
        return shortened;
    }
    /// The key of an extension for the flat functions; without an extension, "", which is no key.
    static std::string pathOf(const Text& extension) {
        if (!extension) return "";
        return "CLASSES\\" + (extension->starts_with('.') ? *extension : "." + cut(*extension, 15));
    }

    /// Stores what other programs may leave: any type and size, no terminator, keys that are no mappings.
    void others() {
        const Text extension = input_.byte() % 2 ? extension_ : drawnExtension();
        const std::string key = pathOf(extension.value_or("a")).substr(8);
        const std::size_t limit = input_.byte() % 2 ? 128 : 256;
        const std::string size(limit - 2 + input_.byte() % 4, 'T');
        const char* const values[] = {"Mac Type", "Mac Creator", "Mac Comment", "Mac Comment", "", "else"};
        const DWORD types[] = {REG_SZ, REG_SZ, REG_SZ, REG_SZ, REG_SZ, REG_BINARY, REG_DWORD, REG_EXPAND_SZ};
        const std::string bytes[] = {{"TEXT", 5},  {"dosa", 5}, {"TE\0x", 5}, {"TEX\x81", 5}, {"TEXTS", 5},
                                     {"TEXTS", 6}, "TEXT",      "",           size,           size + '\0'};
        const std::string value = input_.oneOf(values);
        const DWORD type = input_.oneOf(types);
        const std::string& data = input_.oneOf(bytes);
        const std::uint8_t choice = input_.byte() % 16;
        if (choice == 0)
            RegDeleteKeyA(HKEY_CLASSES_ROOT, key.c_str());
        else if (choice < 4)
            testing_support::givenValue(HKEY_LOCAL_MACHINE, StoreModel::kSettings, "Default " + value, type, data);
        else
            testing_support::givenValue(HKEY_CLASSES_ROOT, choice == 4 ? key + "\\below" : key, value, type, data);
        model_ = {testing_support::registryText()};
    }

    Text drawnText() {
        const char* const texts[] = {"TEXT", "TEXT", "text", "dosa", "dosa", "TEX", "TEXTS", "dosas", "", "TEX"};
        const std::uint8_t choice = input_.byte() % 16;
        if (choice == 0) return {};
        return choice == 1 ? std::string(140, 'c') : input_.oneOf(texts);
    }
    /// Sets a string of the cursor, sometimes to a part of itself.
    void set() {
        const std::size_t field = input_.byte() % 4;
        const Text text = field == 0 ? drawnExtension() : drawnText();
        Text& held = held_[field];
        char* source = text ? const_cast<char*>(text->c_str()) : nullptr;
        if (held && input_.byte() % 16 == 0) source = (cursor_.*kFields[field].get)() + held->size() / 2;
        held = source ? Text(source) : Text();
        (cursor_.*kFields[field].set)(source);
    }

    void add() {
        SExtensionMap map;
        for (const Field& field : kFields) map.*field.inRecord = (cursor_.*field.get)();
        const bool isMapping =
            extension_.value_or("") != "" && type_.value_or("").size() == 4 && creator_.value_or("").size() == 4;
        require(AddExtMap(&map) == isMapping, "AddExtMap");
        if (isMapping) write(pathOf(extension_));
    }
    /// Writes or deletes the values of the cursor's extension; its key is created if it is missing.
    void create() {
        const bool hasKey = extension_.value_or("") != "", writes = input_.byte() % 4 != 0;
        const std::string path = "CLASSES\\" + extension_.value_or("");
        const int result = writes ? cursor_.Create() : cursor_.Delete();
        require(result == (hasKey && (!writes || (type_ && creator_))), "Create or Delete");
        if (!hasKey) return;
        model_.try_emplace(path, "");
        if (!writes) return model_.removeValues(path);
        if (type_ && creator_) model_.erase(path + "|Mac Comment");
        write(path);
    }
    /// The creator is written first; nothing is written after a missing code.
    void write(const std::string& name) {
        const std::string path = model_.try_emplace(name, "").first->first;
        model_.put(path, "Mac Creator", creator_);
        if (creator_) model_.put(path, "Mac Type", type_);
        if (creator_ && type_) model_.put(path, "Mac Comment", comment_);
    }
    void remove() {
        require(RemoveExtMap(cursor_.Extension()) == 1, "RemoveExtMap");
        model_.removeValues(pathOf(extension_));
        model_.removeIfEmpty(pathOf(extension_));
    }

    void expectComment(const Record& record, const std::string& path) {
        require(!record.comment || record.comment == model_.comment(path, record.commentRoom), "the comment");
    }
    void read() {
        const std::string path = pathOf(extension_);
        const Codes codes = model_.codes(path);
        require(HasExtMap(cursor_.Extension()) == (codes.first && codes.second), "HasExtMap");
        Record record(input_);
        record.extension = cursor_.Extension();
        const bool isThere = model_.contains(path);
        const bool isRead = isThere && (!record.type || codes.first) && (!record.creator || codes.second);
        require(GetExtMap(&record) == isRead, "GetExtMap");
        if (isRead) record.expect(codes);
        if (isThere) expectComment(record, path);
        GetDefaultExtMap(&record);
        record.expect(model_.defaultCodes(record.type, record.creator));
    }
    /// Creates the key if it is missing.
    void find() {
        const int result = cursor_.Find(cursor_.Extension());
        isPassing_ = false;
        if (!extension_) return require(!result, "Find without an extension");
        const std::string path = "CLASSES\\" + (extension_->starts_with('.') ? *extension_ : '.' + *extension_);
        model_.try_emplace(path, "");
        const Codes codes = model_.texts(path);
        require(result == (codes.first && codes.second), "Find");
        if (result) std::tie(type_, creator_) = codes;
    }
    void defaults() {
        const Codes codes = model_.defaultCodes(type_.has_value(), creator_.has_value());
        cursor_.Default();
        if (type_) type_ = codes.first->c_str();
        if (creator_) creator_ = codes.second->c_str();
    }

    /// One step of an enumeration, by codes or over all, while others change the registry between the steps.
    void enumerate() {
        Record record(input_);
        const std::uint8_t choice = input_.byte();
        const bool byCodes = choice % 2;
        if (byCodes) record.type = cursor_.Type(), record.creator = cursor_.Creator();
        record.index = choice < 4 ? UINT_MAX : choice < 32 ? 0 : index_;
        const SExtensionMap given = record;
        index_ = record.index;
        const Codes wanted = {type_.value_or("").substr(0, 4), creator_.value_or("").substr(0, 4)};
        const std::vector<std::string> keys = testing_support::subkeysOf(HKEY_CLASSES_ROOT);
        std::string name;
        Codes codes;
        bool isFound = false;
        while (!isFound && index_ != UINT_MAX && !(byCodes && !(type_ && creator_)) && index_++ < keys.size()) {
            name = keys[index_ - 1];
            codes = model_.codes("CLASSES\\" + name);
            const bool isMapping = name[0] == '.' && name.size() <= 16 && codes.first && codes.second;
            isFound = isMapping && (!byCodes || codes == wanted);
        }
        require((byCodes ? EnumExtMapCT : EnumExtMap)(&record) == isFound, "whether one was found");
        require(record.index == index_, "the position");
        for (const Field& field : kFields) require(record.*field.inRecord == given.*field.inRecord, "a buffer's place");
        if (!isFound) return;
        if (!byCodes) record.expect(codes);
        expectComment(record, "CLASSES\\" + name);
        require(!record.extension || record.extension == cut(name.substr(1), record.extensionRoom - 1),
                "the extension");
    }

    /// Starts or continues a pass over all mappings or over those with the cursor's codes, sometimes exchanged first.
    void walk() {
        const bool isRare = input_.byte() % 8 == 0, starts = isPassing_ == isRare;
        const bool byCodes = input_.byte() % 2, exchanges = input_.byte() % 2;
        int result = 0;
        if (starts && byCodes) {
            const bool fit = type_ && type_->size() <= 4 && creator_ && creator_->size() <= 4;
            result = exchanges ? cursor_.FirstCT(cursor_.Type(), cursor_.Creator())
                               : cursor_.FirstCT(cursor_.Creator(), cursor_.Type());
            if (!fit) return require(!result, "FirstCT");
            if (exchanges) std::swap(type_, creator_);
        } else {
            result = starts ? cursor_.First() : byCodes ? cursor_.NextCT() : cursor_.Next();
        }
        if (starts) isPassing_ = true, position_ = 0;
        if (!isPassing_) return require(!result, "a step without a pass");
        if (byCodes && type_) type_ = type_->substr(0, 4);
        if (byCodes && creator_) creator_ = creator_->substr(0, 4);
        const std::vector<std::string> keys = testing_support::subkeysOf(HKEY_CLASSES_ROOT);
        bool isFound = false;
        while (!isFound && (isPassing_ = position_ < keys.size() && keys[position_].size() < 128)) {
            const std::string& name = keys[position_++];
            const Codes codes = model_.texts("CLASSES\\" + name);
            if (name[0] != '.' || !codes.first || !codes.second) continue;
            extension_ = name;
            comment_ = model_.text("CLASSES\\" + name, "Mac Comment");
            if (!byCodes) std::tie(type_, creator_) = codes;
            isFound = codes == Codes(type_, creator_);
        }
        require(result == isFound, "what a pass finds");
    }

    /// A copy has the strings but no pass; assignment ends the pass of its target.
    void copy() {
        CExtensionMap copied(cursor_);
        expectHeld(copied);
        require(!copied.Next(), "a copy's pass");
        const CExtensionMap& same = cursor_;
        cursor_ = same;
        if (input_.byte() % 2) return;
        copied.SetType(copied.Creator());
        type_ = creator_;
        cursor_ = copied;
        isPassing_ = false;
    }

    Input& input_;
    StoreModel model_;
    CExtensionMap cursor_;
    Text held_[4];  // what the cursor has to hold, in the order of its fields
    Text &extension_ = held_[0], &type_ = held_[1], &creator_ = held_[2], &comment_ = held_[3];
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
