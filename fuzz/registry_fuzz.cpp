// Values of any type and size in the registry, where another program may have put them: read as values, as settings and
// as extension mappings. What is read is bounded by what is stored, settings never keep a name from being written, and
// a mapping written among such values comes back and can be removed.
#include <standin.h>

#include <cstring>
#include <memory>
#include <string>

#include "frame/settings.h"
#include "fuzz_input.h"
#include "tamrix32/extmap.h"
#include "tamrix32/macnames.h"
#include "tamrix32/registry.h"

namespace {

using fuzzing::require;

constexpr std::size_t kLargestRead = 128;
constexpr char kSettings[] = "software\\Quillon Systems, Inc.\\File Client";
constexpr const char* kSettingNames[] = {"QuoteChars",     "QuoteBracketChars", "DialogFont",
                                         "DialogFontSize", "Default Mac Type",  "Default Mac Creator"};
constexpr const char* kMappingNames[] = {"Mac Type", "Mac Creator", "Mac Comment"};

struct Stored {
    DWORD type;
    std::string bytes;
};

Stored drawn(fuzzing::Input& input) {
    constexpr DWORD kTypes[] = {REG_SZ, REG_SZ, REG_BINARY, REG_DWORD, REG_NONE, 7, 0xFFFFFFFF};
    const DWORD type = kTypes[input.byte() % (sizeof kTypes / sizeof *kTypes)];
    return {type, input.bytes(140)};
}

void store(RegKey& key, const char* name, const Stored& value) {
    require(RegSetValueExA(key.Handle(), name, 0, value.type, reinterpret_cast<const BYTE*>(value.bytes.data()),
                           static_cast<DWORD>(value.bytes.size())) == ERROR_SUCCESS);
}

void expectAsStored(RegValue& value, const Stored& stored) {
    require(static_cast<DWORD>(value.Type()) == stored.type && value.DataLen() >= stored.bytes.size());
    value.BoolValue();
    if (stored.type == REG_SZ) require(std::strlen(value.String()) < value.DataLen());
    if (stored.type == REG_BINARY)
        require(value.DataLen() == stored.bytes.size() &&
                std::memcmp(value.Buffer(), stored.bytes.data(), stored.bytes.size()) == 0);
    if (stored.type == REG_DWORD) {
        std::uint32_t number = 0;
        std::memcpy(&number, stored.bytes.data(), std::min<std::size_t>(4, stored.bytes.size()));
        require(value.Value() == number);
    } else {
        require(value.Value() == 0);
    }
}

/// Reads one value by its name and by a walk.
void readBack(RegKey& key, const char* name, const Stored& stored) {
    const bool fits = stored.bytes.size() <= kLargestRead;
    RegValue value;
    require(key.ValueByName(name, &value) == fits);
    if (fits) expectAsStored(value, stored);
    require(key.FirstValue(&value) == (fits && std::strlen(name) < kLargestRead));
    if (!fits || std::strlen(name) >= kLargestRead) return;
    require(std::strcmp(value.Name(), name) == 0 && value.NameLen() == std::strlen(name));
    value.SetName(value.Name() + value.NameLen() / 2);
    require(value.NameLen() == (std::strlen(name) + 1) / 2);
}

struct Record {
    Record() {
        map.extension = extension;
        map.type = type;
        map.creator = creator;
        map.comment = comment;
    }
    char extension[16] = "", type[5], creator[5], comment[256];
    SExtensionMap map;
};

void readMappings() {
    Record found;
    // Codes may hold zero bytes of their own.
    while (EnumExtMap(&found.map))
        require(!found.type[4] && !found.creator[4] && std::memchr(found.comment, 0, sizeof found.comment));
    GetDefaultExtMap(&found.map);
    require(!found.type[4] && !found.creator[4]);
    CExtensionMap cursor;
    for (int more = cursor.First(); more; more = cursor.Next()) require(cursor.Type() && cursor.Creator());
}

/// Walks the mappings of the codes. The function looks at four bytes of each, the cursor refuses more.
void readMappingsOf(std::string type, std::string creator) {
    SExtensionMap wanted;
    wanted.type = type.data();
    wanted.creator = creator.data();
    while (EnumExtMapCT(&wanted)) require(type.size() >= 4 && creator.size() >= 4);
    CExtensionMap cursor;
    for (int more = cursor.FirstCT(creator.data(), type.data()); more; more = cursor.NextCT())
        require(creator == cursor.Creator() && type == cursor.Type() && cursor.Extension()[0] == '.');
}

/// A mapping is there from its writing to its deletion, whatever stood in its key.
void changeMapping(std::string extension, std::string type, std::string creator, std::string comment) {
    SExtensionMap map;
    map.extension = extension.data();
    map.type = type.data();
    map.creator = creator.data();
    map.comment = comment.data();
    if (AddExtMap(&map)) {
        Record found;
        found.map.extension = extension.data();
        require(GetExtMap(&found.map) && HasExtMap(extension.data()));
        require(type == found.type && creator == found.creator && comment == found.comment);
    } else {
        require(extension.empty() || type.size() != 4 || creator.size() != 4);
    }
    readMappingsOf(type, creator);
    RemoveExtMap(extension.data());
    require(!HasExtMap(extension.data()));
}

void nameUnderSettings(const std::string& name) {
    const int capacity = AFPtoOSLen(name.c_str());
    const std::unique_ptr<char[]> windows(new char[static_cast<std::size_t>(capacity)]);
    require(AFPtoOSCopy(windows.get(), name.c_str(), static_cast<unsigned>(capacity)) > 0);
    const int back = OStoAFPLen(windows.get());
    const std::unique_ptr<char[]> mac(new char[static_cast<std::size_t>(back)]);
    require(OStoAFPCopy(mac.get(), windows.get(), static_cast<unsigned>(back)) == back);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::Input input(data, size);
    {
        const std::string name = input.text(200);
        const Stored any = drawn(input);
        RegKey key(HKEY_CURRENT_USER, "any");
        store(key, name.c_str(), any);
        readBack(key, name.c_str(), any);
        RegKey settings(HKEY_LOCAL_MACHINE, kSettings), mapping(HKEY_CLASSES_ROOT, ".x");
        for (const char* setting : kSettingNames) store(settings, setting, drawn(input));
        for (const char* code : kMappingNames) store(mapping, code, drawn(input));
    }
    tamrix::loadQuoteSettings();
    tamrix::loadDialogFontSettings();
    readMappings();
    const std::string extension = input.byte() % 4 ? input.text(20) : ".x";
    const std::string type = input.text(5), creator = input.text(5);
    changeMapping(extension, type, creator, input.text(200));
    nameUnderSettings(input.rest());
    require(standin::openKeys() == 0);
    standin::clearRegistry();
    return 0;
}
