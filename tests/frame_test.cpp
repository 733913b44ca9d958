// The entry point and the settings that it loads. The settings key is the machine's own: each test starts without it
// and puts back what was there.
#include "tamrix32/frame.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "frame/entry.h"
#include "frame/settings.h"
#include "tamrix32/registry.h"

namespace {

using namespace std::string_literals;
using namespace tamrix;

constexpr char kKey[] = "Software\\Quillon Systems, Inc.\\File Client";

class Settings : public testing::Test {
protected:
    Settings() {
        HKEY key = nullptr;
        if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, kKey, 0, KEY_QUERY_VALUE, &key) == ERROR_SUCCESS) {
            for (const char* name : {"QuoteChars", "QuoteBracketChars", "DialogFont", "DialogFontSize"})
                keep(key, name);
            RegCloseKey(key);
        }
        RegDeleteKeyA(HKEY_LOCAL_MACHINE, kKey);
    }
    ~Settings() override {
        RegDeleteKeyA(HKEY_LOCAL_MACHINE, kKey);
        for (const auto& [name, type, bytes] : kept) givenValue(name.c_str(), type, bytes);
        load();
    }

    static void givenValue(const char* name, DWORD type, const std::string& bytes) {
        RegKey key(HKEY_LOCAL_MACHINE, kKey);
        ASSERT_EQ(RegSetValueExA(key.Handle(), name, 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                                 static_cast<DWORD>(bytes.size())),
                  ERROR_SUCCESS);
    }
    static void givenNumber(const char* name, DWORD number) {
        givenValue(name, REG_DWORD, {reinterpret_cast<const char*>(&number), sizeof number});
    }

    /// What attaching a process does with the settings.
    static void load() {
        delete[] std::exchange(dialogFontSettings.faceName, nullptr);
        dialogFontSettings.pointSize = 0;
        loadQuoteSettings();
        loadDialogFontSettings();
    }

    static std::string quoteSet() {
        return {reinterpret_cast<const char*>(quoteSettings.chars), static_cast<std::size_t>(quoteSettings.count)};
    }
    static std::string brackets() {
        return {static_cast<char>(quoteSettings.open), static_cast<char>(quoteSettings.close)};
    }

private:
    struct Kept {
        std::string name;
        DWORD type;
        std::string bytes;
    };
    void keep(HKEY key, const char* name) {
        DWORD type = 0;
        DWORD size = 0;
        if (RegQueryValueExA(key, name, nullptr, &type, nullptr, &size) != ERROR_SUCCESS) return;
        std::string bytes(size + 1, '\0');
        RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<BYTE*>(bytes.data()), &size);
        kept.push_back({name, type, bytes.substr(0, size)});
    }
    std::vector<Kept> kept;
};

std::string defaultSet(bool doubleByte) {
    std::string set = "\"*/:<>?\\|@`"s + '\0';
    for (char control = 1; control <= 0x1F; ++control) set += control;
    set += '\x7F';
    if (doubleByte) return set + "\x80\xA0\xFD\xFE\xFF";
    return set +
           "\x87\x89\x8F\x90\x91\x92\x93\x94\x95\x97\x98\x99\x9C\x9D\x9E\xB7\xD5\xD8\xDA\xDB\xDD\xDE\xDF"
           "\xE0\xE1\xE2\xE4\xE5\xE8\xFF";
}

std::string ownDefault() {
    return defaultSet(leadByteTable.hasLeadBytes != 0);
}

TEST_F(Settings, DefaultsWithoutAKey) {
    const DefaultQuotes single = defaultQuotes(false);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(single.chars), 74), defaultSet(false));
    EXPECT_EQ(single.count, 74);
    const DefaultQuotes doubled = defaultQuotes(true);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(doubled.chars), 49), defaultSet(true));
    EXPECT_EQ(doubled.count, 49);

    load();
    EXPECT_EQ(quoteSet(), ownDefault());
    EXPECT_EQ(brackets(), "[]");
    EXPECT_EQ(dialogFontSettings.faceName, nullptr);
    EXPECT_EQ(dialogFontSettings.pointSize, 0u);
}

TEST_F(Settings, QuoteCharsReplaceTheSet) {
    const std::string standard = ownDefault();
    const struct {
        const char* reason;
        DWORD type;
        std::string bytes;
        std::string set;
    } rows[] = {
        {"a string brings its terminator", REG_SZ, "#%\0"s, "#%\0"s},
        {"the empty string too", REG_SZ, "\0"s, "\0"s},
        {"bytes", REG_BINARY, "#\0\xFF"s, "#\0\xFF"s},
        {"no bytes: nothing is quoted", REG_BINARY, "", ""},
        {"a number's four bytes", REG_DWORD, "#%:?", "#%:?"},
        {"a number of two bytes", REG_DWORD, "#%", "#%"},
        {"a number that claims more than four", REG_DWORD, "#%:?<>", "#%:?"},
        {"a type without data", REG_MULTI_SZ, "#\0\0"s, standard},
        {"128 bytes", REG_BINARY, std::string(128, '#'), std::string(128, '#')},
        {"129 bytes are not read", REG_BINARY, std::string(129, '#'), standard},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        givenValue("QuoteChars", row.type, row.bytes);
        load();
        EXPECT_EQ(quoteSet(), row.set);
        for (int byte = 0; byte < 256; ++byte)
            EXPECT_EQ(nameRules.inSet[byte], row.set.find(static_cast<char>(byte)) != std::string::npos) << byte;
    }
}

TEST_F(Settings, BracketsAreTwoCharacters) {
    const struct {
        const char* reason;
        DWORD type;
        std::string bytes;
        const char* brackets;
    } rows[] = {
        {"braces", REG_SZ, "{}\0"s, "{}"},
        {"no more than the first two count", REG_SZ, "<>!\0"s, "<>"},
        {"one", REG_SZ, "{\0"s, "[]"},
        {"none", REG_SZ, "\0"s, "[]"},
        {"a second of zero", REG_SZ, "{\0}\0"s, "[]"},
        {"no string", REG_BINARY, "{}\0"s, "[]"},
        {"nor an expandable one", REG_EXPAND_SZ, "{}\0"s, "[]"},
        {"a number", REG_DWORD, "{}{}", "[]"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        givenValue("QuoteBracketChars", row.type, row.bytes);
        load();
        EXPECT_EQ(brackets(), row.brackets);
        EXPECT_EQ(nameRules.open, quoteSettings.open);
        EXPECT_EQ(nameRules.close, quoteSettings.close);
    }
}

TEST_F(Settings, FaceAndSizeActTogether) {
    const auto expectFont = [](const char* reason, const char* face, DWORD size) {
        load();
        EXPECT_STREQ(dialogFontSettings.faceName, face) << reason;
        EXPECT_EQ(dialogFontSettings.pointSize, size) << reason;
    };
    givenValue("DialogFont", REG_SZ, "Tahoma\0"s);
    expectFont("no size", nullptr, 0);
    givenValue("DialogFontSize", REG_SZ, "8\0"s);
    expectFont("the size is a string", nullptr, 0);
    givenNumber("DialogFontSize", 0x10009);
    expectFont("both", "Tahoma", 0x10009);
    givenValue("DialogFont", REG_BINARY, "Tahoma\0"s);
    expectFont("the face is no string", nullptr, 0);
    givenValue("DialogFont", REG_SZ, std::string(128, 'f') + '\0');
    expectFont("a face of 129 bytes is not read", nullptr, 0);
    givenValue("DialogFont", REG_SZ, "Arial\0"s);
    load();
    loadDialogFontSettings();
    EXPECT_STREQ(dialogFontSettings.faceName, "Arial") << "loaded again, the old face freed";
}

class EntryPoint : public testing::Test {
protected:
    ~EntryPoint() override { sharedCounters = before; }
    const SharedCounters before = sharedCounters;
};

TEST_F(EntryPoint, StoresTheInstanceWhateverTheReason) {
    HINSTANCE const own = TamrixResourceInstance();
    int modules[4];
    for (const DWORD reason :
         std::initializer_list<DWORD>{DLL_THREAD_ATTACH, DLL_THREAD_DETACH, DLL_PROCESS_ATTACH, DLL_PROCESS_DETACH}) {
        const auto module = reinterpret_cast<HINSTANCE>(&modules[reason]);
        DllMain(module, reason, nullptr);
        EXPECT_EQ(TamrixResourceInstance(), module) << reason;
    }
    DllMain(own, DLL_THREAD_ATTACH, nullptr);
}

TEST_F(EntryPoint, CountsProcessesAndThreads) {
    HINSTANCE const own = TamrixResourceInstance();
    sharedCounters = {0, 0};
    EXPECT_EQ(DllMain(own, DLL_PROCESS_ATTACH, nullptr), 1);
    EXPECT_EQ(DllMain(own, DLL_PROCESS_ATTACH, nullptr), 1);
    EXPECT_EQ(DllMain(own, DLL_THREAD_ATTACH, nullptr), 1);
    EXPECT_EQ(sharedCounters.processCount, 2);
    EXPECT_EQ(sharedCounters.threadCount, 1);
    EXPECT_EQ(DllMain(own, DLL_PROCESS_DETACH, nullptr), 0) << "another process and a thread are left";
    EXPECT_EQ(DllMain(own, DLL_PROCESS_DETACH, nullptr), 0) << "the last process, but a thread is left";
    EXPECT_EQ(DllMain(own, DLL_THREAD_DETACH, nullptr), 1);
    EXPECT_EQ(sharedCounters.processCount, 0);
    EXPECT_EQ(sharedCounters.threadCount, 0);

    sharedCounters = {2, 0};
    EXPECT_EQ(DllMain(own, DLL_PROCESS_DETACH, nullptr), 0) << "another process is left";
    EXPECT_EQ(DllMain(own, DLL_PROCESS_DETACH, nullptr), 1) << "the last one";
    EXPECT_EQ(DllMain(own, DLL_PROCESS_DETACH, nullptr), 1) << "below zero";
    sharedCounters = {1, -1};
    EXPECT_EQ(DllMain(own, DLL_PROCESS_DETACH, nullptr), 1) << "threads below zero";
}

}  // namespace
