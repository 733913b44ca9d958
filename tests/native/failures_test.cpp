// Every operation of the windowless modules while each platform call and each allocation that it makes fails in turn:
// what it gives then, what is stored, and that nothing stays held. The leak detector watches the memory.
#include <gmock/gmock.h>
#include <standin.h>

#include <cstring>

#include "client/mapping_import.h"
#include "client/mapping_store.h"
#include "code_pages.h"
#include "dialogs/mapping_changes.h"
#include "dialogs/template_resource.h"
#include "entry/entry.h"
#include "registry_text.h"
#include "tamrix32/about.h"
#include "tamrix32/extmap.h"
#include "tamrix32/macnames.h"
#include "tamrix32/registry.h"
#include "tamrix32/strings.h"

namespace {

using namespace std::string_literals;
using standin::Kind;
using testing_support::givenValue;
using testing_support::RegistryText;
using testing_support::registryText;

char* bytesOf(const char* constant) {
    return const_cast<char*>(constant);
}

/// What an operation came to, part after part.
struct Part {
    Part(int number) : text(std::to_string(number)) {}
    Part(const char* name) : text(name ? name : "-") {}
    Part(const std::string& name) : text(name) {}
    std::string text;
};
std::string said(std::initializer_list<Part> parts) {
    std::string all;
    for (const Part& part : parts) all += (all.empty() ? "" : " ") + part.text;
    return all;
}

void givenMapping(const std::string& extension, const std::string& type, const std::string& creator,
                  const char* comment) {
    givenValue(HKEY_CLASSES_ROOT, extension, "Mac Type", REG_SZ, type + '\0');
    givenValue(HKEY_CLASSES_ROOT, extension, "Mac Creator", REG_SZ, creator + '\0');
    if (comment) givenValue(HKEY_CLASSES_ROOT, extension, "Mac Comment", REG_SZ, comment + "\0"s);
}

constexpr char kSettings[] = "Software\\Quillon Systems, Inc.\\File Client";

/// What is stored and held before each operation.
struct Scene {
    RegKey key, other;
    RegValue value;
    CExtensionMap cursor;
    SExtensionMap map;
    char type[8] = "", creator[8] = "", text[256] = "", name[128] = "kept";

    Scene() {
        testing_support::emptyRegistry();
        givenMapping(".a", "TEXT", "ttxt", "old");
        givenMapping(".b", "PICT", "ogle", nullptr);
        givenValue(HKEY_CLASSES_ROOT, ".odd", "Mac Type", REG_BINARY, "\1\0"s);
        givenValue(HKEY_CLASSES_ROOT, ".odd", "Mac Comment", REG_SZ, "not terminated");
        givenValue(HKEY_CLASSES_ROOT, ".b", "", REG_SZ, "picture\0"s);
        givenValue(HKEY_LOCAL_MACHINE, kSettings, "Default Mac Type", REG_SZ, "BINA\0"s);
        givenValue(HKEY_LOCAL_MACHINE, kSettings, "Default Mac Creator", REG_SZ, "hDmp\0"s);
        givenValue(HKEY_CURRENT_USER, "home\\first", "", REG_SZ, "");
        givenValue(HKEY_CURRENT_USER, "home\\second", "", REG_SZ, "");
        givenValue(HKEY_CURRENT_USER, "home", "text", REG_SZ, "stored\0"s);
        givenValue(HKEY_CURRENT_USER, "home", "number", REG_DWORD, "\7\0\0\0"s);
        key.Open(HKEY_CURRENT_USER, "home");
        value.SetName("before");
        hold(".a", "PICT", "ogle", "new");
        map.type = type;
        map.creator = creator;
        map.comment = text;
    }
    void hold(const char* extension, const char* newType, const char* newCreator, const char* comment) {
        cursor.SetExtension(bytesOf(extension));
        cursor.SetType(bytesOf(newType));
        cursor.SetCreator(bytesOf(newCreator));
        cursor.SetComment(bytesOf(comment));
    }
    std::string held() { return said({cursor.Extension(), cursor.Type(), cursor.Creator(), cursor.Comment()}); }
    SExtensionMap* mapOf(const char* extension, const char* newType, const char* newCreator) {
        map.extension = bytesOf(extension);
        if (newType) std::strcpy(type, newType), std::strcpy(creator, newCreator), std::strcpy(text, "new");
        return &map;
    }
    std::string read() { return said({value.Name(), value.String()}); }
};

struct Operation {
    const char* name;
    std::string whole, damaged;  // what it gives when nothing fails, and what else it may give, apart by bars
    std::string (*run)(Scene&);
    bool mayLose = false;  // values and keys may be missing that are neither in the old nor in the new content
};

std::string read(Scene& s) {
    return GetExtMap(s.mapOf(".a", nullptr, nullptr)) ? said({s.type, s.creator, s.text}) : "0";
}

std::string enumerated(Scene& s) {
    std::string found;
    while (EnumExtMap(&s.map)) found += s.type + "/"s + s.text + ' ';
    return found;
}

std::string passed(Scene& s) {
    std::string found;
    for (int more = s.cursor.First(); more; more = s.cursor.Next()) found += s.held() + ", ";
    EXPECT_TRUE(!s.cursor.Next() && (found + ".a PICT ogle new, ").find(s.held()) != found.npos);
    return found;
}

std::string imported() {
    const std::vector<tamrix::client::Mapping> wanted = {
        {".a", "TEXT", "MOSS", {}}, {".odd", "PICT", "ogle", "c"}, {".new", "BnHq", "SITx", "n"}};
    const tamrix::client::Refusal refusal = tamrix::client::applyChanges(tamrix::client::changesFor(wanted));
    EXPECT_TRUE(refusal.notUndone.empty());
    return refusal.extension.empty() ? "done" : "refused";
}

std::string listed() {
    std::vector<tamrix::client::Mapping> all;
    EXPECT_TRUE(tamrix::client::allMappings(all) && all.size() == 2);
    return said({all.front().type, all.front().creator, all.back().type, all.back().creator});
}

std::string opened(Scene& s) {
    s.other.SetAncestor(s.key.Handle());
    s.other.SetRelPath("second");
    return said({s.other.Open(), s.other.Create(), s.other.Exists()});
}

std::string translated() {
    char name[40] = "a:b";
    return said({AFPtoOS(name, sizeof name), name});
}

std::string capitals() {
    char text[] = "x\x82\x81y\x82\x82z";
    testing_support::useCodePage(932);
    const char* const result = dbcs_strupr(text);
    testing_support::useCodePage(1252);
    return said({result, text});
}

std::string comparedWhole(Scene& s) {
    testing_support::useCodePage(932);  // 81, 82 and 84 are lead bytes
    s.hold(".c", "TEX\x81", "dos\x82", nullptr);
    const int created = s.cursor.Create(), other = s.cursor.FirstCT(bytesOf("dos\x84"), bytesOf("TEX\x81"));
    const std::string all =
        said({created, other, s.cursor.FirstCT(bytesOf("dos\x82"), bytesOf("TEX\x81")), s.cursor.Type()});
    testing_support::useCodePage(1252);
    return all;
}

std::string copiedResource() {
    CCustomResource resource(standin::fakeModule(7), 501, bytesOf("TESTTEXT"));
    void* const copy = resource.copyData();
    const std::string made = copy ? std::to_string(resource.getSize()) : "none";
    GlobalFree(copy);
    return said({made, resource.isLocked()});
}

std::string preparedDialog() {
    const HINSTANCE module = standin::fakeModule(7);
    const BYTE bytes[] = "bytes";
    standin::addResource(module, RT_DIALOG, "dialog", bytes);
    tamrix::WideFace buffer;
    const int units = int(tamrix::wideFace("Arial", buffer).size() / sizeof *buffer);
    const int size = int(tamrix::dialogResource(module, "dialog").size());
    standin::addResource(module, RT_DIALOG, "dialog", {});  // loaded for as long as its module lives
    return said({units, size});
}

std::string keyedLine(const char* extension, const char* comment) {
    const auto keyed = tamrix::keyedLine(tamrix::joinedLine(extension, comment), tamrix::foldKeyName);
    return said({keyed.line.get(), keyed.key.get()});
}

const Operation kOperations[] = {
    {"a failed code takes the mapping away, the comment doesn't count", "1: PICT ogle new",
     "0|1: PICT ogle old|0: - - -", [](Scene& s) { return said({AddExtMap(s.mapOf(".a", "PICT", "ogle"))}); }, true},
    {"only the comment may be lost", "TEXT ttxt old", "0|TEXT ttxt ", read},
    {"HasExtMap", "1", "0", [](Scene&) { return said({HasExtMap(bytesOf(".a"))}); }},
    {"each value is removed by itself", "1: - - -", "1|1: - - -|1: TEXT - -|1: - ttxt -|1: - - old",
     [](Scene&) { return said({RemoveExtMap(bytesOf("a"))}); }},
    {"a key that holds anything else stays", "1", "1", [](Scene&) { return said({RemoveExtMap(bytesOf(".b"))}); }},
    {"one mapping at most is passed over", "TEXT/old PICT/ ", "TEXT/old |PICT/ |TEXT/ PICT/ |TEXT/old PICT/ ",
     enumerated},
    {"EnumExtMapCT", "1", "0|1", [](Scene& s) { return said({EnumExtMapCT(s.mapOf(nullptr, "PICT", "ogle"))}); }},
    {"the default codes fall back together", "BINA hDmp", "TEXT dosa",
     [](Scene& s) {
         return GetDefaultExtMap(&s.map), said({s.type, s.creator});
     }},
    {"a pass fetches whole mappings only", ".a TEXT ttxt old, .b PICT ogle -, ",
     "|.a TEXT ttxt old, |.b PICT ogle -, |.a TEXT ttxt -, .b PICT ogle -, |.a TEXT ttxt old, .b PICT ogle -, ",
     passed},
    {"the old or the wanted codes are held", "1 0 .b TEXT ttxt -",
     "0 0 .a PICT ogle new|0 0 .a TEXT ttxt new|0 0 .b TEXT ttxt -|1 0 .a TEXT ttxt -|1 0 .a TEXT ttxt old|1 0 .b TEXT "
     "ttxt -",
     [](Scene& s) {
         return said({s.cursor.FirstCT(bytesOf("ttxt"), bytesOf("TEXT")), s.cursor.NextCT(), s.held()});
     }},
    {"both codes are found or neither", "1 .a TEXT ttxt new", "0 .a PICT ogle new",
     [](Scene& s) {
         return said({s.cursor.Find(bytesOf("a")), s.held()});
     }},
    {"no comment without both codes", "1: PICT ogle new", "0|1: PICT ogle old|0: TEXT ogle old",
     [](Scene& s) { return said({s.cursor.Create()}); }},
    {"Delete says whether the key opened", "1: - - -", "0|1: TEXT - -|1: - ttxt -|1: - - old",
     [](Scene& s) { return said({s.cursor.Delete()}); }},
    {"no stale code is held after Default", ".a BINA hDmp new", ".a TEXT dosa new|.a - hDmp new|.a BINA - new",
     [](Scene& s) { return s.cursor.Default(), s.held(); }},
    {"nothing stale is held after the setters", ".b TEXT ttxt x",
     "- TEXT ttxt x|.b - ttxt x|.b TEXT - x|.b TEXT ttxt -",
     [](Scene& s) { return s.hold(".b", "TEXT", "ttxt", "x"), s.held(); }},
    {"an import is all or nothing", "done: TEXT MOSS -", "refused|done: TEXT MOSS -",
     [](Scene&) { return imported(); }},
    {"a list is read again until two passes agree", "TEXT ttxt PICT ogle", "TEXT ttxt PICT ogle",
     [](Scene&) { return listed(); }},
    {"a key is closed before it is opened", "1 1", "0 0",
     [](Scene& s) {
         return said({s.key.Open(), s.key.Opened()});
     }},
    {"a key at a path", "1 1 1 1", "0 1 1 1|1 0 1 1|1 1 0 0|0 0 1 1",
     [](Scene& s) {
         return said({s.other.Exists(HKEY_CURRENT_USER, "home"), s.other.Open(), s.other.Create(s.key.Handle(), "new"),
                      s.other.Opened()});
     }},
    {"a key that can't be made is described", "1 1", "0 1|1 0|0 0",
     [](Scene& s) {
         RegKey third(&s.key, "third");
         return said({third.Opened(), third.Create()});
     }},
    {"a key that can't keep its path is not its ancestor", "1 1 1", "0 0 0|0 1 1|1 0 1|1 1 0", opened},
    {"value and walk stay", "1 text stored 1 number", "0 before - 1 text|1 text stored 0 text",
     [](Scene& s) {
         return said({s.key.FirstValue(&s.value), s.read(), s.key.NextValue(&s.value), s.value.Name()});
     }},
    {"all of a value or none", "1 text stored", "0 before -",
     [](Scene& s) {
         return said({s.key.ValueByName("text", &s.value), s.read()});
     }},
    {"writing and removing", "1 1 1", "0 1 1|1 0 1|1 1 0",
     [](Scene& s) {
         return said({s.key.SetString("s", "x"), s.key.SetDword("d", 1), s.key.RemoveValue("text")});
     }},
    {"name and walk stay", "1 first 1 second", "0 kept 1 first|1 first 0 first",
     [](Scene& s) {
         return said({s.key.FirstSubKey(s.name), s.name, s.key.NextSubKey(s.name), s.name});
     }},
    {"the walk goes on after a child that can't be opened", "first 1 second 1",
     "- 0 first 1|first 0 second 1|first 1 - 1|first 1 second 0",
     [](Scene& s) {
         return said({s.key.FirstSubKey(&s.other), s.other.Opened(), s.key.NextSubKey(&s.other), s.other.Opened()});
     }},
    {"a name that can't be kept is none", "new", "-",
     [](Scene& s) { return s.value.SetName("new"), said({s.value.Name()}); }},
    {"data that can't be kept are none", "before kept 5", "before - 0",
     [](Scene& s) {
         return s.value.SetData(RegValString, reinterpret_cast<unsigned char*>(s.name)),
                said({s.read(), int(s.value.DataLen())});
     }},
    {"codes are held and compared whole", "1 0 1 TEX\x81", "0 0 0 TEX\x81|1 0 0 TEX\x81|1 0 0 -|1 0 1 -|1 0 1 TEX\x81",
     comparedWhole},
    {"a name stays as it is", "8 a[058]b", "-1 a:b", [](Scene&) { return translated(); }},
    {"a resource is copied whole", "6 0", "none 0|0 0", [](Scene&) { return copiedResource(); }},
    {"a template that is there whole, and a face", "6 6", "6 0|0 6", [](Scene&) { return preparedDialog(); }},
    {"a line without its key names nothing", ".txt\tx .TXT", "- -|.txt\tx -",
     [](Scene&) { return keyedLine(".txt", "x"); }},
    {"capitals end where a character can't be mapped", "X\x82\x60Y\x82\x61Z X\x82\x60Y\x82\x61Z",
     "- X\x82\x81y\x82\x82z|- X\x82\x60Y\x82\x82z", [](Scene&) { return capitals(); }},
};

/// Codes and comment of .a.
std::string mappingIn(const RegistryText& content) {
    std::string all;
    for (const char* name : {"Mac Type", "Mac Creator", "Mac Comment"}) {
        const auto found = content.find("CLASSES\\.a|"s + name);
        all += found == content.end() ? " -" : " "s + (found->second.c_str() + 2);
    }
    return all;
}

TEST(Failures, LeaveWhatIsStatedWhicheverCallFails) {
    const BYTE bytes[] = "bytes";
    standin::addResource(standin::fakeModule(7), "TESTTEXT", MAKEINTRESOURCEA(501), bytes);
    for (const Operation& operation : kOperations) {
        RegistryText whole;
        std::size_t failures = 0;
        for (const Kind kind :
             {Kind::fileStep, Kind::registry, Kind::allocation, Kind::conversion, Kind::resource, Kind::globalMemory}) {
            bool isFailing = true;
            for (std::size_t n = 1; isFailing; ++n) {
                SCOPED_TRACE(testing::Message() << operation.name << ", kind " << int(kind) << ", call " << n);
                RegistryText before;
                std::string result;
                {
                    Scene scene;
                    before = registryText();
                    standin::clearFaults();
                    standin::failNth(kind, n);
                    result = operation.run(scene);
                    isFailing = standin::faultHit();
                    standin::clearFaults();
                }
                EXPECT_EQ(standin::openKeys() + standin::openGlobalBlocks() + standin::lockedResources(), 0U);
                const RegistryText now = registryText();
                if (mappingIn(now) != mappingIn(before)) result += ':' + mappingIn(now);
                if (!isFailing) {
                    if (whole.empty()) whole = now;
                    EXPECT_EQ(result, operation.whole);
                    EXPECT_EQ(now, whole);
                    continue;
                }
                ++failures;
                EXPECT_TRUE(result != "refused" || now == before) << "an import was undone in part";
                EXPECT_NE(('|' + operation.damaged + '|').find('|' + result + '|'), std::string::npos) << result;
                for (const auto& [name, stored] : now)
                    EXPECT_TRUE((before.contains(name) && before.at(name) == stored) ||
                                (whole.contains(name) && whole.at(name) == stored))
                        << name;
                for (const auto& [name, stored] : before)
                    EXPECT_TRUE(operation.mayLose || now.contains(name) || !whole.contains(name)) << name << " is lost";
                ASSERT_LT(n, 200U);
            }
        }
        EXPECT_GT(failures, 0U) << operation.name;
    }
    standin::clearResources();
}

TEST(Failures, NoCallIsMadeOnAHandleThatAKeyClosedItself) {
    for (const auto open :
         std::initializer_list<int (RegKey::*)(HKEY, const char*)>{&RegKey::Open, &RegKey::Create, &RegKey::Exists}) {
        Scene s;
        standin::clearFaults();
        EXPECT_EQ((s.key.*open)(s.key.Handle(), "first") + s.key.Open(), 0);
        EXPECT_EQ(standin::calls(Kind::registry), 0U);
        s.key.Open(HKEY_CURRENT_USER, "home");
        EXPECT_EQ(said({s.key.NextSubKey(&s.key), s.key.Opened()}), "first 0") << "its own child in a walk";
    }
}

TEST(Failures, AClassRootThatCantBeEnumeratedEndsThePass) {
    Scene s;
    EXPECT_TRUE(standin::denyAccess(HKEY_CLASSES_ROOT, ""));
    standin::clearFaults();
    EXPECT_EQ(EnumExtMap(&s.map) + s.cursor.First(), 0);
    EXPECT_EQ(standin::calls(Kind::registry), 16U + 1U) << "one failure may pass, sixteen in a row don't";
}

TEST(Failures, KeysThatMayNotBeOpenedAreMissing) {
    Scene s;
    for (const HKEY root : {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE})
        EXPECT_TRUE(standin::denyAccess(root, root == HKEY_CLASSES_ROOT   ? ".A"
                                              : root == HKEY_CURRENT_USER ? "home\\first"
                                                                          : kSettings));
    EXPECT_FALSE(standin::denyAccess(HKEY_CLASSES_ROOT, ".none"));
    const RegistryText before = registryText();
    s.map.extension = bytesOf(".a");
    EXPECT_EQ(GetExtMap(&s.map) + HasExtMap(bytesOf(".a")) + s.cursor.Create() + s.cursor.Delete() +
                  s.cursor.Find(bytesOf(".a")),
              0);
    EXPECT_EQ(RemoveExtMap(bytesOf(".a")), 1);
    GetDefaultExtMap(&s.map);
    EXPECT_EQ(s.type + std::string(s.creator), "TEXTdosa");
    EXPECT_EQ(AddExtMap(&s.map), 0);
    s.map.extension = nullptr;
    EXPECT_TRUE(EnumExtMap(&s.map) && std::string(s.type) == "PICT" && s.cursor.First() &&
                std::string(s.cursor.Type()) == "PICT");
    EXPECT_EQ(said({s.key.FirstSubKey(&s.other), s.other.Opened(), s.key.NextSubKey(&s.other)}), "first 0 second");
    EXPECT_EQ(s.other.Exists(s.key.Handle(), "first"), 0);
    EXPECT_EQ(registryText(), before);
    testing_support::emptyRegistry();
}

}  // namespace
