// The entry point and the settings that it loads. The settings key is the machine's own: each test starts without it
// and puts back what was there.
#include "tamrix32/frame.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "frame/entry.h"
#include "frame/settings.h"
#include "registry_home.h"
#include "tamrix32/registry.h"

namespace {

using namespace std::string_literals;
using namespace tamrix;

constexpr char kKey[] = "Software\\Quillon Systems, Inc.\\File Client";
constexpr const char* kValues[] = {"QuoteChars", "QuoteBracketChars", "DialogFont", "DialogFontSize"};

class Settings : public testing::Test {
protected:
    Settings() {
        for (const char* name : kValues)
            if (const auto value = testing_support::storedIn(HKEY_LOCAL_MACHINE, kKey, name))
                kept.emplace_back(name, *value);
        forget();
    }
    ~Settings() override {
        forget();
        for (const auto& [name, value] : kept) givenValue(name, value.type, value.bytes);
        key.Close();
        if (kept.empty()) RegDeleteKeyA(HKEY_LOCAL_MACHINE, kKey);
        load();
    }

    void forget() {
        for (const char* name : kValues) key.RemoveValue(name);
    }
    void givenValue(const char* name, DWORD type, const std::string& bytes) {
        testing_support::givenValue(key.Handle(), name, type, bytes);
    }

    /// What attaching a process does with the settings.
    static void load() {
        delete[] std::exchange(dialogFontSettings.faceName, nullptr);
        dialogFontSettings.pointSize = 0;
        loadQuoteSettings();
        loadDialogFontSettings();
    }

    /// The brackets and the quote set, which the rules of names agree with.
    static std::string quotes() {
        std::string set(reinterpret_cast<const char*>(quoteSettings.chars), std::size_t(quoteSettings.count));
        for (int byte = 0; byte < 256; ++byte)
            EXPECT_EQ(nameRules.inSet[byte], set.find(static_cast<char>(byte)) != std::string::npos) << byte;
        EXPECT_EQ(nameRules.open, quoteSettings.open);
        EXPECT_EQ(nameRules.close, quoteSettings.close);
        return {static_cast<char>(quoteSettings.open) + (static_cast<char>(quoteSettings.close) + set)};
    }

    RegKey key{HKEY_LOCAL_MACHINE, kKey};
    std::vector<std::pair<const char*, testing_support::Stored>> kept;  // the machine's own
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

TEST_F(Settings, DefaultQuoteSetsAreTwo) {
    for (const bool doubleByte : {false, true}) {
        const auto [chars, count] = defaultQuotes(doubleByte);
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(chars), std::size_t(count)), defaultSet(doubleByte));
    }
    EXPECT_EQ(defaultSet(false).size(), 74u);
    EXPECT_EQ(defaultSet(true).size(), 49u);
}

TEST_F(Settings, ReplaceTheQuoteSetAndTheBrackets) {
    const std::string standard = defaultSet(leadByteTable.hasLeadBytes != 0), largest(128, '#');
    const struct {
        const char* reason;
        const char* name;
        DWORD type;
        std::string bytes, quotes;
    } rows[] = {
        {"a string brings its terminator", "QuoteChars", REG_SZ, "#%\0"s, "[]#%\0"s},
        {"the empty string too", "QuoteChars", REG_SZ, "\0"s, "[]\0"s},
        {"bytes", "QuoteChars", REG_BINARY, "#\0\xFF"s, "[]#\0\xFF"s},
        {"no bytes: nothing is quoted", "QuoteChars", REG_BINARY, "", "[]"},
        {"a number of two bytes", "QuoteChars", REG_DWORD, "#%", "[]#%"},
        {"a number that claims more than four", "QuoteChars", REG_DWORD, "#%:?<", "[]#%:?"},
        {"a type without data", "QuoteChars", REG_MULTI_SZ, "#\0\0"s, "[]" + standard},
        {"128 bytes", "QuoteChars", REG_BINARY, largest, "[]" + largest},
        {"129 bytes are not read", "QuoteChars", REG_BINARY, largest + '#', "[]" + standard},
        {"braces", "QuoteBracketChars", REG_SZ, "{}\0"s, "{}" + standard},
        {"no more than the first two count", "QuoteBracketChars", REG_SZ, "<>!\0"s, "<>" + standard},
        {"one", "QuoteBracketChars", REG_SZ, "{\0"s, "[]" + standard},
        {"a second of zero", "QuoteBracketChars", REG_SZ, "{\0}\0"s, "[]" + standard},
        {"no string", "QuoteBracketChars", REG_BINARY, "{}\0"s, "[]" + standard},
        {"nor an expandable one", "QuoteBracketChars", REG_EXPAND_SZ, "{}\0"s, "[]" + standard},
        {"a number", "QuoteBracketChars", REG_DWORD, "{}{}", "[]" + standard},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        forget();
        givenValue(row.name, row.type, row.bytes);
        load();
        EXPECT_EQ(quotes(), row.quotes);
        key.RemoveValue(row.name);
    }
}

TEST_F(Settings, FaceAndSizeActTogether) {
    const struct {
        const char* reason;
        const char* name;  // what changes
        DWORD type;
        std::string bytes;
        const char* face;
        DWORD size;
    } steps[] = {
        {"no size", "DialogFont", REG_SZ, "Tahoma\0"s, nullptr, 0},
        {"the size is a string", "DialogFontSize", REG_SZ, "8\0"s, nullptr, 0},
        {"both", "DialogFontSize", REG_DWORD, "\x09\0\1\0"s, "Tahoma", 0x10009},
        {"the face is no string", "DialogFont", REG_BINARY, "Tahoma\0"s, nullptr, 0},
        {"a face of 129 bytes is not read", "DialogFont", REG_SZ, std::string(128, 'f') + '\0', nullptr, 0},
        {"another face", "DialogFont", REG_SZ, "Arial\0"s, "Arial", 0x10009},
    };
    for (const auto& step : steps) {
        givenValue(step.name, step.type, step.bytes);
        load();
        EXPECT_STREQ(dialogFontSettings.faceName, step.face) << step.reason;
        EXPECT_EQ(dialogFontSettings.pointSize, step.size) << step.reason;
    }
    loadDialogFontSettings();
    EXPECT_STREQ(dialogFontSettings.faceName, "Arial") << "loaded again, the old face freed";
}

TEST(EntryPoint, StoresTheInstanceAndCountsProcessesAndThreads) {
    HINSTANCE const own = TamrixResourceInstance();
    const SharedCounters ownCounters = sharedCounters;
    const struct {
        SharedCounters before;
        DWORD reason;
        BOOL result;
        SharedCounters after;
        const char* why;
    } calls[] = {
        {{1, 0}, DLL_PROCESS_ATTACH, 1, {2, 0}, "another process"},
        {{1, 0}, DLL_THREAD_ATTACH, 1, {1, 1}, "a thread"},
        {{1, 5}, DLL_THREAD_DETACH, 1, {1, 4}, "not the last thread"},
        {{2, 1}, DLL_PROCESS_DETACH, 0, {1, 1}, "another process and a thread are left"},
        {{1, 1}, DLL_PROCESS_DETACH, 0, {0, 1}, "a thread is left"},
        {{2, 0}, DLL_PROCESS_DETACH, 0, {1, 0}, "another process is left"},
        {{1, 0}, DLL_PROCESS_DETACH, 1, {0, 0}, "the last one"},
        {{0, -1}, DLL_PROCESS_DETACH, 1, {-1, -1}, "both below zero"},
    };
    for (const auto& call : calls) {
        SCOPED_TRACE(call.why);
        const auto module = reinterpret_cast<HINSTANCE>(const_cast<char*>(call.why));
        sharedCounters = call.before;
        EXPECT_EQ(DllMain(module, call.reason, nullptr), call.result);
        EXPECT_EQ(sharedCounters.processCount, call.after.processCount);
        EXPECT_EQ(sharedCounters.threadCount, call.after.threadCount);
        EXPECT_EQ(TamrixResourceInstance(), module);
    }
    DllMain(own, DLL_THREAD_ATTACH, nullptr);
    sharedCounters = ownCounters;
}

}  // namespace
