// CExtensionMap: a cursor over the mappings. Its held strings are heap copies; where memory for one runs out, none is
// held in its place.
#include <windows.h>

#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

#include "extmap/store_layout.h"
#include "strings/copied_string.h"
#include "tamrix32/extmap.h"
#include "tamrix32/registry.h"

/// The cursor begins with the record's fields.
struct ExtensionMapLayout {
    static_assert(std::is_standard_layout_v<CExtensionMap>);
    static_assert(offsetof(CExtensionMap, extension) == offsetof(SExtensionMap, extension));
    static_assert(offsetof(CExtensionMap, type) == offsetof(SExtensionMap, type));
    static_assert(offsetof(CExtensionMap, creator) == offsetof(SExtensionMap, creator));
    static_assert(offsetof(CExtensionMap, comment) == offsetof(SExtensionMap, comment));
    static_assert(offsetof(CExtensionMap, extensionSize) == offsetof(SExtensionMap, extensionSize));
    static_assert(offsetof(CExtensionMap, commentSize) == offsetof(SExtensionMap, commentSize));
    static_assert(sizeof(void*) != 4 || (sizeof(CExtensionMap) == 36 && offsetof(CExtensionMap, rootKey) == 28));
};

namespace tamrix {
namespace {

using Text = std::unique_ptr<char[]>;

/// A copy; null for null and when memory runs out.
Text copyOf(const char* text) {
    return Text(copiedString(text));
}

/// The key name of an extension to find: with a dot in front where it lacks one, never shortened.
Text keyNameOf(const char* extension) {
    if (!extension || extension[0] == '.') return copyOf(extension);
    Text name(new (std::nothrow) char[std::strlen(extension) + 2]);
    if (!name) return nullptr;
    name[0] = '.';
    std::strcpy(name.get() + 1, extension);
    return name;
}

void hold(char*& held, Text text) {
    Text old(std::exchange(held, text.release()));
}

/// Takes a held string out, so that it outlives what is held after it.
Text takeOut(char*& held) {
    return Text(std::exchange(held, nullptr));
}

/// A copy of a string value; null when it is missing, too long, of another type, or memory runs out.
Text readText(RegKey& key, const char* valueName) {
    RegValue value;
    if (!key.ValueByName(valueName, &value) || value.Type() != RegValString) return nullptr;
    return copyOf(value.String());
}

bool fitsCode(const char* code) {
    return code && std::strlen(code) <= kCodeLength;
}

/// Byte for byte; one that is none is like no other.
bool isSame(const char* code, const char* wanted) {
    return code && wanted && std::strcmp(code, wanted) == 0;
}

/// A wanted code counts with its first four bytes.
void cutToCode(char* code) {
    if (code && !fitsCode(code)) code[kCodeLength] = 0;
}

/// The key of one extension in the class root, created where it is missing. It is not open when the extension is none
/// or empty: the root itself is never written to.
class ExtensionKey {
public:
    explicit ExtensionKey(const char* extension)
        : root_(HKEY_CLASSES_ROOT), key_(&root_, extension && extension[0] ? extension : nullptr) {}
    RegKey* operator->() { return &key_; }
    RegKey& operator*() { return key_; }

private:
    RegKey root_;
    RegKey key_;
};

void endPass(RegKey*& rootKey, RegKey*& childKey) {
    delete std::exchange(childKey, nullptr);
    delete std::exchange(rootKey, nullptr);
}

/// Replaces the keys of an earlier pass; leaves no pass when memory runs out.
void startPass(RegKey*& rootKey, RegKey*& childKey) {
    endPass(rootKey, childKey);
    rootKey = new (std::nothrow) RegKey(HKEY_CLASSES_ROOT);
    childKey = new (std::nothrow) RegKey;
    if (!rootKey || !childKey) endPass(rootKey, childKey);
}

}  // namespace
}  // namespace tamrix

using namespace tamrix;

CExtensionMap::CExtensionMap()
    : index(0),
      extension(nullptr),
      type(nullptr),
      creator(nullptr),
      comment(nullptr),
      extensionSize(0),
      commentSize(0),
      rootKey(nullptr),
      childKey(nullptr) {}

CExtensionMap::CExtensionMap(const CExtensionMap& other) : CExtensionMap() {
    *this = other;
}

CExtensionMap& CExtensionMap::operator=(const CExtensionMap& other) {
    if (this == &other) return *this;
    endPass(rootKey, childKey);
    SetExtension(other.extension);
    SetType(other.type);
    SetCreator(other.creator);
    SetComment(other.comment);
    return *this;
}

CExtensionMap::~CExtensionMap() {
    endPass(rootKey, childKey);
    for (char** held : {&extension, &type, &creator, &comment}) hold(*held, nullptr);
}

int CExtensionMap::First() {
    startPass(rootKey, childKey);
    return Next();
}

int CExtensionMap::Next() {
    if (!rootKey || !childKey) return 0;
    while (const char* name = rootKey->NextSubKey(childKey)) {
        if (name[0] != '.' || !childKey->Opened()) continue;
        Text fetchedCreator = readText(*childKey, kCreatorValue);
        Text fetchedType = fetchedCreator ? readText(*childKey, kTypeValue) : nullptr;
        Text fetchedExtension = fetchedType ? copyOf(name) : nullptr;
        // What cannot be fetched whole is passed over, and leaves what was held.
        if (!fetchedExtension) continue;
        hold(extension, std::move(fetchedExtension));
        hold(creator, std::move(fetchedCreator));
        hold(type, std::move(fetchedType));
        hold(comment, readText(*childKey, kCommentValue));
        return 1;
    }
    endPass(rootKey, childKey);
    return 0;
}

int CExtensionMap::FirstCT(char* wantedCreator, char* wantedType) {
    if (!fitsCode(wantedCreator) || !fitsCode(wantedType)) return 0;
    // Either may be a string that this cursor holds.
    Text creatorCopy = copyOf(wantedCreator);
    Text typeCopy = copyOf(wantedType);
    if (!creatorCopy || !typeCopy) return 0;
    hold(creator, std::move(creatorCopy));
    hold(type, std::move(typeCopy));
    startPass(rootKey, childKey);
    return NextCT();
}

int CExtensionMap::NextCT() {
    if (!rootKey || !childKey) return 0;
    Text wantedCreator = takeOut(creator);
    Text wantedType = takeOut(type);
    cutToCode(wantedCreator.get());
    cutToCode(wantedType.get());
    bool isMatch = false;
    while (!isMatch && Next()) isMatch = isSame(creator, wantedCreator.get()) && isSame(type, wantedType.get());
    hold(creator, std::move(wantedCreator));
    hold(type, std::move(wantedType));
    return isMatch;
}

int CExtensionMap::Find(char* wanted) {
    // The wanted extension may be the held one, and outlives the pass in any case.
    const Text name = keyNameOf(wanted);
    endPass(rootKey, childKey);
    ExtensionKey key(name.get());
    Text foundCreator = readText(*key, kCreatorValue);
    Text foundType = readText(*key, kTypeValue);
    if (!foundCreator || !foundType) return 0;
    hold(creator, std::move(foundCreator));
    hold(type, std::move(foundType));
    return 1;
}

void CExtensionMap::Default() {
    // A held code may be shorter than what the lookup fills. A default for a code that is not held is not asked for,
    // and so cannot spoil the other one.
    CodeBuffer defaultType;
    CodeBuffer defaultCreator;
    SExtensionMap defaults;
    if (type) defaults.type = defaultType;
    if (creator) defaults.creator = defaultCreator;
    GetDefaultExtMap(&defaults);
    if (type) SetType(defaultType);
    if (creator) SetCreator(defaultCreator);
}

int CExtensionMap::Create() {
    ExtensionKey key(extension);
    if (!key->Opened()) return 0;
    if (!key->SetString(kCreatorValue, creator) || !key->SetString(kTypeValue, type)) return 0;
    if (comment)
        key->SetString(kCommentValue, comment);
    else
        key->RemoveValue(kCommentValue);
    return 1;
}

int CExtensionMap::Delete() {
    ExtensionKey key(extension);
    if (!key->Opened()) return 0;
    for (const char* valueName : {kCreatorValue, kTypeValue, kCommentValue}) key->RemoveValue(valueName);
    return 1;
}

char* CExtensionMap::Extension() {
    return extension;
}
char* CExtensionMap::Type() {
    return type;
}
char* CExtensionMap::Creator() {
    return creator;
}
char* CExtensionMap::Comment() {
    return comment;
}

void CExtensionMap::SetExtension(char* text) {
    hold(extension, copyOf(text));
}
void CExtensionMap::SetType(char* text) {
    hold(type, copyOf(text));
}
void CExtensionMap::SetCreator(char* text) {
    hold(creator, copyOf(text));
}
void CExtensionMap::SetComment(char* text) {
    hold(comment, copyOf(text));
}
