// The settings that attaching a process loads, whatever bytes their values hold, and what the entry point gives.
#include <gtest/gtest.h>

#include "code_pages.h"
#include "dialogs/font_settings.h"
#include "entry/entry.h"
#include "properties/names.h"
#include "registry_text.h"
#include "tamrix32/module.h"

namespace {

using namespace std::string_literals;
using namespace tamrix;

struct Value {
    const char* name;
    DWORD type;
    std::string bytes;
};

/// Attaches with nothing but these values in the settings key; the brackets and the quote set, then the font.
std::string attachedWith(const std::vector<Value>& values) {
    testing_support::emptyRegistry();
    for (const auto& [name, type, bytes] : values)
        EXPECT_TRUE(testing_support::givenValue(HKEY_LOCAL_MACHINE, "Software\\Quillon Systems, Inc.\\File Client",
                                                name, type, bytes));
    EXPECT_EQ(DllMain(TamrixResourceInstance(), DLL_PROCESS_ATTACH, nullptr), 1);
    std::string text = {static_cast<char>(nameRules.open), static_cast<char>(nameRules.close)};
    for (int byte = 0; byte < 256; ++byte)
        if (nameRules.inSet[byte]) text += static_cast<char>(byte);
    const char* face = dialogFontSettings.face();
    return text + '|' + (face ? face : "") + '|' + std::to_string(dialogFontSettings.pointSize);
}

TEST(Settings, HoldWhatTheirValuesSay) {
    const std::string most(128, '#');
    const Value face = {"DialogFont", REG_SZ, "Tahoma\0"s}, size = {"DialogFontSize", REG_DWORD, "\x09\0\1\0"s};
    const struct {
        const char* reason;
        std::vector<Value> values;
        std::string expected;  // * is the default set
    } rows[] = {
        {"a string brings its terminator", {{"QuoteChars", REG_SZ, "#%\0"s}}, "[]\0#%||0"s},
        {"a last byte that leads in 932", {{"QuoteChars", REG_SZ, "#\x81\0"s}}, "[]\0#\x81||0"s},
        {"no bytes: nothing is quoted", {{"QuoteChars", REG_BINARY, ""}}, "[]||0"},
        {"a type without data", {{"QuoteChars", REG_MULTI_SZ, "#\0\0"s}}, "[]*||0"},
        {"two brackets, of which one leads in 932", {{"QuoteBracketChars", REG_SZ, "{\x81!\0"s}}, "{\x81*||0"},
        {"one bracket", {{"QuoteBracketChars", REG_SZ, "{\0}\0"s}}, "[]*||0"},
        {"none before the second", {{"QuoteBracketChars", REG_SZ, "\0}\0"s}}, "[]*||0"},
        {"brackets that are no string", {{"QuoteBracketChars", REG_BINARY, "{}\0"s}}, "[]*||0"},
        {"a face and a size", {face, size}, "[]*|Tahoma|65545"},
        {"no size", {face}, "[]*||0"},
        {"no face, and nothing is left of the last one", {size}, "[]*||0"},
        {"a size that is a string", {face, {"DialogFontSize", REG_SZ, "8\0"s}}, "[]*||0"},
        {"a face that is no string", {size, {"DialogFont", REG_BINARY, "Tahoma\0"s}}, "[]*||0"},
        {"one of 128 without an end", {size, {"DialogFont", REG_SZ, most}}, "[]*|" + most + "|65545"},
        {"nothing configured", {}, "[]*||0"},
    };
    for (const UINT page : testing_support::codePagesAmong({932, 936, 949, 950, 1252})) {
        ASSERT_TRUE(testing_support::useCodePage(page));
        std::string standard = properties::defaultSet(properties::leadBytesOf(page).hasLeadBytes != 0);
        std::ranges::sort(standard, {}, [](char byte) { return static_cast<unsigned char>(byte); });
        for (const auto& [reason, values, expected] : rows) {
            const bool isStorable = std::ranges::all_of(values, [](const Value& value) {
                return value.type != REG_SZ || testing_support::storable(value.bytes) == value.bytes;
            });
            std::string wanted = expected;
            if (wanted[2] == '*') wanted.replace(2, 1, standard);
            if (!isStorable) continue;
            EXPECT_EQ(attachedWith(values), wanted) << page << ' ' << reason;
        }
    }
}

TEST(EntryPoint, StoresTheInstanceAndCountsProcessesAndThreads) {
    HINSTANCE const own = TamrixResourceInstance();
    const SharedCounters ownCounters = sharedCounters;
    const struct {
        const char* why;
        LONG processes, threads;
        DWORD reason;
        BOOL result;
        LONG processesAfter, threadsAfter;
    } calls[] = {
        {"another process", 1, 0, DLL_PROCESS_ATTACH, 1, 2, 0},
        {"a thread", 1, 0, DLL_THREAD_ATTACH, 1, 1, 1},
        {"not the last thread", 1, 5, DLL_THREAD_DETACH, 1, 1, 4},
        {"a thread is left", 1, 1, DLL_PROCESS_DETACH, 0, 0, 1},
        {"another process is left", 2, 0, DLL_PROCESS_DETACH, 0, 1, 0},
        {"the last one", 1, 0, DLL_PROCESS_DETACH, 1, 0, 0},
        {"both below zero", 0, -1, DLL_PROCESS_DETACH, 1, -1, -1},
    };
    for (const auto& call : calls) {
        const auto module = reinterpret_cast<HINSTANCE>(const_cast<char*>(call.why));
        sharedCounters = {call.processes, call.threads};
        const BOOL result = DllMain(module, call.reason, nullptr);
        EXPECT_EQ(std::tuple(result, sharedCounters.processCount, sharedCounters.threadCount),
                  std::tuple(call.result, call.processesAfter, call.threadsAfter))
            << call.why;
        EXPECT_EQ(TamrixResourceInstance(), module) << call.why;
    }
    DllMain(own, DLL_THREAD_ATTACH, nullptr);
    sharedCounters = ownCounters;
}

}  // namespace
