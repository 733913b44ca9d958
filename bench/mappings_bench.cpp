// Compares writing, reading and removing single mappings and registry values with only the registry calls that each
// needs, in a class root of 20,000 keys in the stand-in's registry.
#include <standin.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "base/settings_key.h"
#include "class_keys.h"
#include "entry/entry.h"
#include "measure.h"
#include "registry/unique_key.h"
#include "tamrix32/extmap.h"
#include "tamrix32/registry.h"

namespace {

constexpr int kKeys = 20000;
constexpr int kMappings = 1000;

char type[] = "TEXT";
char creator[] = "ttxt";
char comment[] = "A text";

/// The names of the first mappings' keys.
Inputs<std::string> extensions(int count) {
    Inputs<std::string> names;
    char name[64];
    for (int i = 0; i < count; ++i) names.each.push_back(class_keys::nameOf(name, 10 * i));
    return names;
}

SExtensionMap mappingOf(const std::string& extension) {
    SExtensionMap map;
    map.extension = const_cast<char*>(extension.c_str());
    map.type = type;
    map.creator = creator;
    map.comment = comment;
    return map;
}

HKEY opened(HKEY root, const char* path) {
    HKEY key = nullptr;
    RegOpenKeyExA(root, path, 0, tamrix::kKeyAccess, &key);
    return key;
}

int queried(HKEY key, const char* name, char* data, DWORD size) {
    DWORD kind;
    return RegQueryValueExA(key, name, nullptr, &kind, reinterpret_cast<BYTE*>(data), &size) == ERROR_SUCCESS;
}

int closed(HKEY key, int result) {
    RegCloseKey(key);
    return result;
}

int bareCodes(HKEY key, const char* typeName, const char* creatorName, char* dst) {
    return queried(key, typeName, dst, 5) + queried(key, creatorName, dst + 8, 5);
}

int bareHas(char* dst, const std::string& name) {
    const HKEY key = opened(HKEY_CLASSES_ROOT, name.c_str());
    return closed(key, bareCodes(key, "Mac Type", "Mac Creator", dst));
}

int bareGet(char* dst, const std::string& name) {
    const HKEY key = opened(HKEY_CLASSES_ROOT, name.c_str());
    const int codes = bareCodes(key, "Mac Type", "Mac Creator", dst);
    return closed(key, codes + queried(key, "Mac Comment", dst + 16, 256));
}

int bareDefault(char* dst, const std::string&) {
    const HKEY key = opened(HKEY_LOCAL_MACHINE, tamrix::kSettingsPath);
    return closed(key, bareCodes(key, "Default Mac Type", "Default Mac Creator", dst));
}

int bareAdd(char*, const std::string& name) {
    HKEY key = nullptr;
    RegCreateKeyA(HKEY_CLASSES_ROOT, name.c_str(), &key);
    class_keys::setText(key, "Mac Comment", comment, sizeof comment);
    class_keys::setText(key, "Mac Type", type, sizeof type);
    class_keys::setText(key, "Mac Creator", creator, sizeof creator);
    return closed(key, 1);
}

/// The check whether a key is empty is part of the work.
int bareRemove(char* dst, const std::string& name) {
    const HKEY key = opened(HKEY_CLASSES_ROOT, name.c_str());
    for (const char* value : {"Mac Type", "Mac Creator", "Mac Comment"}) RegDeleteValueA(key, value);
    DWORD size = 32;
    RegEnumKeyA(key, 0, dst, size);
    RegEnumValueA(key, 0, dst, &size, nullptr, nullptr, nullptr, nullptr);
    LONG unnamed = 32;
    RegQueryValueA(key, nullptr, dst, &unnamed);
    RegCloseKey(key);
    return RegDeleteKeyA(HKEY_CLASSES_ROOT, name.c_str()) == ERROR_SUCCESS;
}

HKEY bareCreated(const std::string& name) {
    char keyClass[] = "key";
    DWORD disposition;
    HKEY key = nullptr;
    RegCreateKeyExA(HKEY_CLASSES_ROOT, name.c_str(), 0, keyClass, REG_OPTION_NON_VOLATILE, tamrix::kKeyAccess, nullptr,
                    &key, &disposition);
    return key;
}

int bareFind(char* dst, const std::string& name) {
    const HKEY key = bareCreated(name);
    return closed(key, bareCodes(key, "Mac Type", "Mac Creator", dst));
}

int bareCreate(char*, const std::string& name) {
    const HKEY key = bareCreated(name);
    class_keys::setText(key, "Mac Creator", creator, sizeof creator);
    class_keys::setText(key, "Mac Type", type, sizeof type);
    class_keys::setText(key, "Mac Comment", comment, sizeof comment);
    return closed(key, 1);
}

/// Aborts on failure, because measuring failing calls would be meaningless.
int required(int result) {
    if (!result) std::abort();
    return result;
}

int add(char*, const std::string& name) {
    SExtensionMap map = mappingOf(name);
    return required(AddExtMap(&map));
}

int get(char* dst, const std::string& name) {
    SExtensionMap map = mappingOf(name);
    map.type = dst;
    map.creator = dst + 8;
    map.comment = dst + 16;
    return required(GetExtMap(&map));
}

int has(char*, const std::string& name) {
    return required(HasExtMap(const_cast<char*>(name.c_str())));
}

int getDefault(char* dst, const std::string& name) {
    SExtensionMap map = mappingOf(name);
    map.type = dst;
    map.creator = dst + 8;
    GetDefaultExtMap(&map);
    return required(dst[0] == type[0]);
}

int removeMapping(char*, const std::string& name) {
    return required(RemoveExtMap(const_cast<char*>(name.c_str())));
}

int find(char*, const std::string& name) {
    static CExtensionMap cursor;
    return required(cursor.Find(const_cast<char*>(name.c_str())));
}

int create(char*, const std::string& name) {
    static CExtensionMap cursor;
    cursor.SetExtension(const_cast<char*>(name.c_str()));
    cursor.SetType(type);
    cursor.SetCreator(creator);
    cursor.SetComment(comment);
    return required(cursor.Create());
}

using Work = int (*)(char*, const std::string&);

/// Measures removals. Between the rounds, the mappings are added again; that time is not measured.
void measureRemovals(const std::string& label, const Inputs<std::string>& inputs, Work work) {
    benchmark::RegisterBenchmark(label.c_str(), [=, &inputs](benchmark::State& state) {
        char buffer[512];
        for (auto _ : state) {
            for (const std::string& name : inputs.each) benchmark::DoNotOptimize(work(buffer, name));
            state.PauseTiming();
            for (const std::string& name : inputs.each) bareAdd(buffer, name);
            state.ResumeTiming();
        }
        state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * inputs.each.size()));
    });
}

void registerMappings(const Inputs<std::string>& names) {
    compare("AddExtMap", names, add, "bare calls that write", bareAdd);
    compare("GetExtMap", names, get, "bare calls that read", bareGet);
    compare("HasExtMap", names, has, "bare calls, no comment", bareHas);
    compare("GetDefaultExtMap", names, getDefault, "bare calls, settings", bareDefault);
    measureRemovals("RemoveExtMap", names, removeMapping);
    measureRemovals("bare calls that delete", names, bareRemove);
    rows().push_back({"RemoveExtMap", "bare calls that delete", kNoLimit});
    compare("CExtensionMap::Find", names, find, "bare create and read", bareFind);
    compare("CExtensionMap::Create", names, create, "bare create and write", bareCreate);
}

void registerValues(const Inputs<std::string>& values) {
    static const HKEY bareKey = opened(HKEY_CLASSES_ROOT, ".tmx-values");
    static RegKey key(opened(HKEY_CLASSES_ROOT, ".tmx-values"));
    static RegValue value;
    compare(
        "RegKey::ValueByName", values,
        [](char*, const std::string& name) { return required(key.ValueByName(name.c_str(), &value)); },
        "RegQueryValueExA",
        [](char* dst, const std::string& name) { return queried(bareKey, name.c_str(), dst, 128); });
    static const Inputs<std::string> texts{{"TEXT"}, {std::string(4000, 't')}};
    compare(
        "RegKey::SetString", texts,
        [](char*, const std::string& text) { return required(key.SetString("Text", text.c_str())); }, "RegSetValueExA",
        [](char*, const std::string& text) {
            class_keys::setText(bareKey, "Text", text.c_str(), static_cast<DWORD>(text.size() + 1));
            return 1;
        });
}

}  // namespace

int main(int argc, char** argv) {
    DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr);
    class_keys::fill(kKeys);
    HKEY settings = nullptr;
    RegCreateKeyA(HKEY_LOCAL_MACHINE, tamrix::kSettingsPath, &settings);
    class_keys::setText(settings, "Default Mac Type", type, sizeof type);
    class_keys::setText(settings, "Default Mac Creator", creator, sizeof creator);
    RegCloseKey(settings);
    static const Inputs<std::string> names = extensions(kMappings);
    for (const std::string& name : names.each) bareAdd(nullptr, name);
    bareAdd(nullptr, ".tmx-values");
    registerMappings(names);
    static const Inputs<std::string> values{{"Mac Type", "Mac Creator", "Mac Comment"}, {}};
    registerValues(values);
    return runAndPrint(argc, argv, rows());
}
