// Repeats each operation of the modules without windows with each of its platform calls and allocations failing in
// turn. Checks the result, what is stored, and that everything is released; the leak sanitizer checks the memory.
#include <gtest/gtest.h>
#include <standin.h>

#include <algorithm>
#include <cstring>

#include "client/mapping_import.h"
#include "client/mapping_store.h"
#include "code_pages.h"
#include "dialogs/font_settings.h"
#include "dialogs/mapping_changes.h"
#include "dialogs/template_resource.h"
#include "entry/entry.h"
#include "macnames/name_settings.h"
#include "registry_text.h"
#include "tamrix32/about.h"
#include "tamrix32/extmap.h"
#include "tamrix32/macnames.h"
#include "tamrix32/registry.h"
#include "tamrix32/strings.h"

namespace {

using namespace std::string_literals;
using namespace tamrix;
using standin::Kind;
using testing_support::givenValue;
using testing_support::RegistryText;
using testing_support::registryText;

constexpr char kSettings[] = "Software\\Quillon Systems, Inc.\\File Client";

/// A string for parameters that are not const but are only read.
char* operator""_text(const char* constant, std::size_t) {
    return const_cast<char*>(constant);
}

void givenTexts(HKEY root, const std::string& path, const std::map<std::string, std::string>& texts) {
    const RegKey made(root, path.c_str());
    for (const auto& [name, text] : texts) givenValue(root, path, name, REG_SZ, text + '\0');
}

/// What is stored and open before each operation, and the operation's result as text.
struct Scene {
    RegKey key, other;  // the first one is open
    RegValue value;
    CExtensionMap cursor;
    SExtensionMap map;
    char type[5] = "PICT", creator[5] = "ogle", comment[256] = "new", name[128] = "kept";
    std::string result;

    Scene() {
        testing_support::emptyRegistry();
        givenTexts(HKEY_CLASSES_ROOT, ".a", {{"Mac Type", "TEXT"}, {"Mac Creator", "ttxt"}, {"Mac Comment", "old"}});
        givenTexts(HKEY_CLASSES_ROOT, ".b", {{"Mac Type", "PICT"}, {"Mac Creator", "ogle"}, {"", "picture"}});
        givenTexts(HKEY_LOCAL_MACHINE, kSettings, {{"Default Mac Type", "BINA"}, {"Default Mac Creator", "hDmp"}});
        givenTexts(HKEY_LOCAL_MACHINE, kSettings,
                   {{"QuoteChars", "#"}, {"QuoteBracketChars", "{}"}, {"DialogFont", "Tahoma"}});
        givenTexts(HKEY_CURRENT_USER, "home\\first", {});
        givenTexts(HKEY_CURRENT_USER, "home\\second", {});
        givenTexts(HKEY_CURRENT_USER, "home", {{"text", "stored"}});
        givenValue(HKEY_CURRENT_USER, "home", "number", REG_DWORD, "\7\0\0\0"s);
        givenValue(HKEY_LOCAL_MACHINE, kSettings, "DialogFontSize", REG_DWORD, "\x9\0\0\0"s);
        givenValue(HKEY_CLASSES_ROOT, ".odd", "Mac Type", REG_BINARY, "\1\0"s);
        givenValue(HKEY_CLASSES_ROOT, ".odd", "Mac Comment", REG_SZ, "not terminated");
        key.Open(HKEY_CURRENT_USER, "home");
        value.SetName("before");
        hold(".a"_text, type, creator, comment);
        map.extension = ".a"_text;
        map.type = type;
        map.creator = creator;
        map.comment = comment;
    }
    void hold(char* extension, char* newType, char* newCreator, char* newComment) {
        cursor.SetExtension(extension);
        cursor.SetType(newType);
        cursor.SetCreator(newCreator);
        cursor.SetComment(newComment);
    }

    // These append one part of the result.
    Scene& operator<<(const char* part) {
        result += (result.empty() ? "" : " ") + std::string(part ? part : "-");
        return *this;
    }
    Scene& operator<<(const std::string& part) { return *this << part.c_str(); }
    Scene& operator<<(int part) { return *this << std::to_string(part); }
    Scene& operator<<(CExtensionMap& held) {
        return *this << held.Extension() << held.Type() << held.Creator() << held.Comment();
    }
};

struct Operation {
    const char* name;
    std::string damaged;  // the results that are allowed if a call fails, separated by |
    void (*run)(Scene&);
    bool mayLose = false;  // values may be missing that are in both the old and the new content
};

void import(Scene& s) {
    const std::vector<client::Mapping> wanted = {
        {".a", "TEXT", "MOSS", {}}, {".odd", "PICT", "ogle", "c"}, {".new", "BnHq", "SITx", "n"}};
    const client::Refusal refusal = client::applyChanges(client::changesFor(wanted));
    EXPECT_TRUE(refusal.notUndone.empty());
    s << (refusal.extension.empty() ? "done" : "refused");
}

void list(Scene& s) {
    static std::size_t passes = 0;
    std::vector<client::Mapping> all;
    EXPECT_TRUE(!client::allMappings(all, [] { return std::vector<client::Mapping>(++passes); }) && all.size() == 1);
    EXPECT_TRUE(client::allMappings(all));
    for (const client::Mapping& mapping : all) s << mapping.type << mapping.creator;
}

void putInCapitals(Scene& s) {
    testing_support::useCodePage(932);
    std::strcpy(s.name, "x\x82\x81y\x82\x82z");
    s << dbcs_strupr(s.name) << s.name;
    testing_support::useCodePage(1252);
}

void copyResource(Scene& s) {
    const BYTE bytes[] = "bytes";
    standin::addResource(standin::fakeModule(7), "TESTTEXT", MAKEINTRESOURCEA(501), bytes);
    CCustomResource resource(standin::fakeModule(7), 501, "TESTTEXT"_text);
    void* const copy = resource.copyData();
    s << (copy ? std::to_string(resource.getSize()) : "none") << resource.isLocked();
    GlobalFree(copy);
}

void prepareDialog(Scene& s) {
    const BYTE bytes[] = "bytes";
    WideFace buffer;
    standin::addResource(standin::fakeModule(7), RT_DIALOG, "dialog", bytes);
    s << int(wideFace("Arial", buffer).size() / sizeof *buffer)
      << int(dialogResource(standin::fakeModule(7), "dialog").size());
    standin::addResource(standin::fakeModule(7), RT_DIALOG, "dialog", {});  // loaded for as long as its module lives
}

void keyLine(Scene& s) {
    const KeyedLine keyed = keyedLine(joinedLine(".txt", "x"), foldKeyName);
    s << keyed.line.get() << keyed.key.get();
}

void splitPath(Scene& s) {
    char parts[4][16] = {"?", "?", "?", "?"};
    s << (UNCToStrings(R"(\\Z@S\V\r)", parts[0], parts[1], parts[2], parts[3], 16) != 0);
    for (const char* part : parts) s << part;
}

void attach(Scene& s) {
    s << DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr);
    s << int(std::count(nameRules.decodes, nameRules.decodes + 256, true)) << std::string{char(nameRules.open)}
      << std::string{char(nameRules.close)} << dialogFontSettings.face() << int(dialogFontSettings.pointSize);
}

const Operation kOperations[] = {
    {"a failed code takes the mapping away, the comment doesn't count", "0|1: PICT ogle old|0: - - -",
     [](Scene& s) { s << AddExtMap(&s.map); }, true},
    {"only the comment may be lost", "0|1 TEXT ttxt ",
     [](Scene& s) { GetExtMap(&s.map) ? s << 1 << s.type << s.creator << s.comment : s << 0; }},
    {"each value is removed by itself, and a key that holds anything else stays",
     "1 1|1 1: - - -|1 1: TEXT - -|1 1: - ttxt -|1 1: - - old",
     [](Scene& s) { s << RemoveExtMap("a"_text) << RemoveExtMap(".b"_text); }},
    {"one mapping at most is passed over", "TEXT/old|PICT/|TEXT/ PICT/|TEXT/old PICT/",
     [](Scene& s) {
         s.map.extension = nullptr;
         while (EnumExtMap(&s.map)) s << s.type + "/"s + s.comment;
     }},
    {"the default codes fall back together", "TEXT dosa",
     [](Scene& s) { GetDefaultExtMap(&s.map), s << s.type << s.creator; }},
    {"a pass fetches whole mappings only",
     "|.a TEXT ttxt old|.b PICT ogle -|.a TEXT ttxt - .b PICT ogle -|.a TEXT ttxt old .b PICT ogle -",
     [](Scene& s) {
         for (int more = s.cursor.First(); more; more = s.cursor.Next()) s << s.cursor;
     }},
    {"the old or the wanted codes are held",
     "0 0 .a PICT ogle new|0 0 .a TEXT ttxt new|0 0 .b TEXT ttxt -|1 0 .a TEXT ttxt -|1 0 .a TEXT ttxt old|"
     "1 0 .b TEXT ttxt -",
     [](Scene& s) { s << s.cursor.FirstCT("ttxt"_text, "TEXT"_text) << s.cursor.NextCT() << s.cursor; }},
    {"both codes are found or neither", "0 .a PICT ogle new",
     [](Scene& s) { s << s.cursor.Find("a"_text) << s.cursor; }},
    {"no comment without both codes", "0|1: PICT ogle old|0: TEXT ogle old", [](Scene& s) { s << s.cursor.Create(); }},
    {"Delete says whether the key opened", "0|1: TEXT - -|1: - ttxt -|1: - - old",
     [](Scene& s) { s << s.cursor.Delete(); }},
    {"no stale code is held after Default", ".a TEXT dosa new|.a - hDmp new|.a BINA - new",
     [](Scene& s) { s.cursor.Default(), s << s.cursor; }},
    {"nothing stale is held after the setters", "- TEXT ttxt x|.b - ttxt x|.b TEXT - x|.b TEXT ttxt -",
     [](Scene& s) { s.hold(".b"_text, "TEXT"_text, "ttxt"_text, "x"_text), s << s.cursor; }},
    {"an import is all or nothing", "refused|done: TEXT MOSS -", import},
    {"a list is read again until two passes agree", "TEXT ttxt PICT ogle", list},
    {"a key is closed before it is opened, and keeps its path", "0 1 1 1|0 0 1 1|1 0 1 1|1 1 0 0",
     [](Scene& s) {
         RegKey third(&s.key, "third");
         s << third.Opened() << third.Create() << s.key.Open() << s.key.Opened();
     }},
    {"a key that can't keep its path is not its ancestor", "0 0 0 0|0 1 1 1|1 0 1 1|1 1 0 0",
     [](Scene& s) {
         s << s.other.Exists(s.key.Handle(), "first") << s.other.Open() << s.other.Create() << s.other.Opened();
     }},
    {"all of a value is read or none, and a walk stays at it", "0 before - 1 text 0|1 text stored 0 text 0",
     [](Scene& s) {
         s << s.key.FirstValue(&s.value) << s.value.Name() << s.value.String();
         s << s.key.NextValue(&s.value) << s.value.Name() << int(s.value.Value());
     }},
    {"writing and removing", "0 1 1|1 0 1|1 1 0",
     [](Scene& s) { s << s.key.SetString("s", "x") << s.key.SetDword("d", 1) << s.key.RemoveValue("text"); }},
    {"a walk over names stays at one that can't be read", "0 kept 1 first|1 first 0 first",
     [](Scene& s) { s << s.key.FirstSubKey(s.name) << s.name << s.key.NextSubKey(s.name) << s.name; }},
    {"a walk over keys goes on after a child that can't be opened",
     "- 0 first 1|first 0 second 1|first 1 - 1|first 1 second 0",
     [](Scene& s) {
         s << s.key.FirstSubKey(&s.other) << s.other.Opened() << s.key.NextSubKey(&s.other) << s.other.Opened();
     }},
    {"what a value can't keep is none", "- kept 5|new - 0",
     [](Scene& s) {
         s.value.SetName("new");
         s.value.SetData(RegValString, reinterpret_cast<unsigned char*>(s.name));
         s << s.value.Name() << s.value.String() << int(s.value.DataLen());
     }},

    {"a name stays as it is", "-1 a:b",
     [](Scene& s) { s << AFPtoOS(std::strcpy(s.name, "a:b"), sizeof s.name) << s.name; }},
    {"the parts of a path are cleared", "0    ", splitPath},
    {"capitals end where a character can't be mapped", "- X\x82\x81y\x82\x82z|- X\x82\x60Y\x82\x82z", putInCapitals},
    {"a line without its key names nothing", "- -|.txt\tx -", keyLine},
    {"a resource is copied whole", "none 0|0 0", copyResource},
    {"a template that is there whole, and a face", "6 0|0 6", prepareDialog},
    {"settings that can't be read are not configured",
     "1 76 { } Tahoma 9|1 4 [ ] Tahoma 9|1 76 [ ] Tahoma 9|1 4 { } - 0", attach},
};

/// Type, creator and comment of .a.
std::string mappingIn(const RegistryText& content) {
    std::string all;
    for (const char* name : {"Mac Type", "Mac Creator", "Mac Comment"}) {
        const auto found = content.find("CLASSES\\.a|"s + name);
        all += found == content.end() ? " -" : " "s + (found->second.c_str() + 2);
    }
    return all;
}

constexpr std::size_t kNever = 1000000;

/// The result of an operation, and the registry before and after it.
struct Outcome {
    std::string result;
    bool isFailed;
    RegistryText before, now;
};

Outcome outcomeOf(const Operation& operation, Kind kind, std::size_t failingCall) {
    Outcome outcome;
    {
        Scene scene;
        outcome.before = registryText();
        standin::clearFaults();
        standin::failNth(kind, failingCall);
        operation.run(scene);
        outcome.isFailed = standin::faultHit();
        outcome.result = scene.result;
        standin::clearFaults();
    }
    EXPECT_EQ(standin::openKeys() + standin::openGlobalBlocks() + standin::loadedResources(), 0U);
    outcome.now = registryText();
    if (mappingIn(outcome.now) != mappingIn(outcome.before)) outcome.result += ':' + mappingIn(outcome.now);
    return outcome;
}

/// Each value and key is the old or the new one; it is missing only where that is allowed.
void expectOldOrNew(const Operation& operation, const Outcome& damaged, const RegistryText& whole) {
    for (const auto& entry : damaged.now)
        EXPECT_TRUE(std::ranges::count(damaged.before, entry) || std::ranges::count(whole, entry)) << entry.first;
    for (const auto& [name, stored] : damaged.before)
        EXPECT_TRUE(operation.mayLose || damaged.now.contains(name) || !whole.contains(name)) << name << " is lost";
}

TEST(Failures, LeaveWhatIsStatedWhicheverCallFails) {
    for (const Operation& operation : kOperations) {
        const Outcome whole = outcomeOf(operation, Kind::registry, kNever);
        std::size_t failures = 0;
        for (const Kind kind :
             {Kind::registry, Kind::allocation, Kind::conversion, Kind::resource, Kind::globalMemory}) {
            for (std::size_t call = 1;; ++call, ++failures) {
                SCOPED_TRACE(testing::Message() << operation.name << ", kind " << int(kind) << ", call " << call);
                const Outcome outcome = outcomeOf(operation, kind, call);
                if (!outcome.isFailed) break;
                EXPECT_NE(('|' + operation.damaged + '|').find('|' + outcome.result + '|'), std::string::npos)
                    << outcome.result;
                EXPECT_TRUE(outcome.result != "refused" || outcome.now == outcome.before) << "undone in part";
                expectOldOrNew(operation, outcome, whole.now);
                ASSERT_LT(call, 200U);
            }
        }
        EXPECT_GT(failures, 0U) << operation.name;
    }
    standin::clearResources();
    testing_support::emptyRegistry();
    DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr);
}

TEST(Failures, NoCallIsMadeOnAHandleThatAKeyClosedItself) {
    Scene s;
    for (const auto open :
         std::initializer_list<int (RegKey::*)(HKEY, const char*)>{&RegKey::Open, &RegKey::Create, &RegKey::Exists}) {
        RegKey key(HKEY_CURRENT_USER, "home");
        standin::clearFaults();
        EXPECT_EQ((key.*open)(key.Handle(), "first") + key.Open(), 0);
        EXPECT_EQ(standin::calls(Kind::registry), 0U);
    }
    s << s.key.NextSubKey(&s.key) << s.key.Opened();
    EXPECT_EQ(s.result, "first 0") << "its own child in a walk";
}

TEST(Failures, KeysThatMayNotBeOpenedAreMissing) {
    Scene s;
    EXPECT_TRUE(standin::denyAccess(HKEY_CLASSES_ROOT, ".A"));
    EXPECT_FALSE(standin::denyAccess(HKEY_CLASSES_ROOT, ".none"));
    s << AddExtMap(&s.map) << RemoveExtMap(".a"_text) << s.cursor.Create() << s.cursor.First() << s.cursor;
    EXPECT_EQ(s.result, "0 1 0 1 .b PICT ogle -");
    EXPECT_TRUE(standin::denyAccess(HKEY_CLASSES_ROOT, ""));
    standin::clearFaults();
    EXPECT_EQ(EnumExtMap(&s.map) + s.cursor.First(), 0);
    EXPECT_EQ(standin::calls(Kind::registry), 16U + 1U) << "one failure may pass, sixteen in a row don't";
    testing_support::emptyRegistry();
}

/// The last message box.
std::string shown;

TEST(Failures, AnUnknownReasonToEnterIsShown) {
    EXPECT_EQ(DllMain(nullptr, 4, nullptr), 1);
    EXPECT_EQ(shown, "Unknown DLL entry reason|Error:|65536");
}

}  // namespace

int WINAPI MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT style) {
    shown = std::string(text) + '|' + caption + '|' + std::to_string(style) + (owner ? "|owned" : "");
    return IDOK;
}
