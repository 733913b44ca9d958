// CExtensionMap: a cursor over the mappings. It stores its strings as heap copies; if memory for one runs out, that
// string is not set.
#include <windows.h>

#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

#include "extmap/extension_key.h"
#include "extmap/store_layout.h"
#include "strings/copied_string.h"
#include "tamrix32/extmap.h"
#include "tamrix32/registry.h"

/// The cursor begins with the same fields as the record.
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

/// Returns a copy; null for null and if memory runs out.
Text copyOf(const char* text) {
    return Text(copiedString(text));
}

void assign(char*& field, Text text) {
    Text old(std::exchange(field, text.release()));
}

/// Moves a string out of its field and clears the field.
Text takeOut(char*& field) {
    return Text(std::exchange(field, nullptr));
}

/// A copy of a string value; null if it is missing, too long or of another type, or memory runs out.
Text readText(RegKey& key, const char* valueName) {
    RegValue value;
    if (!key.ValueByName(valueName, &value) || value.Type() != RegValString) return nullptr;
    return copyOf(value.String());
}

bool fitsCode(const char* code) {
    return code && std::strlen(code) <= kCodeLength;
}

/// Compares byte by byte; a null code is different from every code.
bool isSame(const char* code, const char* wanted) {
    return code && wanted && std::strcmp(code, wanted) == 0;
}

/// Truncates a requested code to four bytes.
void cutToCode(char* code) {
    if (code && !fitsCode(code)) code[kCodeLength] = 0;
}

/// The key of an extension in the class root, created if it is missing. It is not open if the extension is null or
/// empty, so that nothing is written to the root itself.
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

void endEnumeration(RegKey*& rootKey, RegKey*& childKey) {
    delete std::exchange(childKey, nullptr);
    delete std::exchange(rootKey, nullptr);
}

/// Ends an earlier enumeration and starts a new one; none is in progress if memory runs out.
void startEnumeration(RegKey*& rootKey, RegKey*& childKey) {
    endEnumeration(rootKey, childKey);
    rootKey = new (std::nothrow) RegKey(HKEY_CLASSES_ROOT);
    childKey = new (std::nothrow) RegKey;
    if (!rootKey || !childKey) endEnumeration(rootKey, childKey);
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
    endEnumeration(rootKey, childKey);
    SetExtension(other.extension);
    SetType(other.type);
    SetCreator(other.creator);
    SetComment(other.comment);
    return *this;
}

CExtensionMap::~CExtensionMap() {
    endEnumeration(rootKey, childKey);
    for (char** field : {&extension, &type, &creator, &comment}) assign(*field, nullptr);
}

int CExtensionMap::First() {
    startEnumeration(rootKey, childKey);
    return Next();
}

int CExtensionMap::Next() {
    if (!rootKey || !childKey) return 0;
    while (const char* name = rootKey->NextSubKey(childKey)) {
        if (name[0] != '.' || !childKey->Opened()) continue;
        // A mapping that cannot be read completely is skipped, and the cursor's strings are not changed.
        Text fetchedCreator = readText(*childKey, kCreatorValue);
        if (!fetchedCreator) continue;
        Text fetchedType = readText(*childKey, kTypeValue);
        if (!fetchedType) continue;
        Text fetchedExtension = copyOf(name);
        if (!fetchedExtension) continue;
        assign(extension, std::move(fetchedExtension));
        assign(creator, std::move(fetchedCreator));
        assign(type, std::move(fetchedType));
        assign(comment, readText(*childKey, kCommentValue));
        return 1;
    }
    endEnumeration(rootKey, childKey);
    return 0;
}

int CExtensionMap::FirstCT(char* wantedCreator, char* wantedType) {
    if (!fitsCode(wantedCreator) || !fitsCode(wantedType)) return 0;
    // The arguments may be strings of this cursor.
    Text creatorCopy = copyOf(wantedCreator);
    Text typeCopy = copyOf(wantedType);
    if (!creatorCopy || !typeCopy) return 0;
    assign(creator, std::move(creatorCopy));
    assign(type, std::move(typeCopy));
    startEnumeration(rootKey, childKey);
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
    assign(creator, std::move(wantedCreator));
    assign(type, std::move(wantedType));
    return isMatch;
}

int CExtensionMap::Find(char* wanted) {
    // The argument may be a string of this cursor, so it is copied before anything else.
    const Text name = dottedExtension(wanted);
    endEnumeration(rootKey, childKey);
    ExtensionKey key(name.get());
    Text foundCreator = readText(*key, kCreatorValue);
    Text foundType = readText(*key, kTypeValue);
    if (!foundCreator || !foundType) return 0;
    assign(creator, std::move(foundCreator));
    assign(type, std::move(foundType));
    return 1;
}

void CExtensionMap::Default() {
    // A code of the cursor may be shorter than a default, so separate buffers are filled. The default for a code that
    // the cursor does not have is not requested: if it were missing, GetDefaultExtMap would not use the other one
    // either.
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
    assign(extension, copyOf(text));
}
void CExtensionMap::SetType(char* text) {
    assign(type, copyOf(text));
}
void CExtensionMap::SetCreator(char* text) {
    assign(creator, copyOf(text));
}
void CExtensionMap::SetComment(char* text) {
    assign(comment, copyOf(text));
}
