// The settings that attaching a process loads, whatever bytes their values hold, and what the entry point gives.
#include <gtest/gtest.h>

#include "dialogs/font_settings.h"
#include "entry/entry.h"
#include "properties/names.h"
#include "registry_text.h"
#include "tamrix32/frame.h"

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

class Settings : public testing::TestWithParam<UINT> {
protected:
    void SetUp() override { ASSERT_TRUE(testing_support::useCodePage(GetParam())); }
    void TearDown() override {
        testing_support::useCodePage(1252);
        attachedWith({});
    }
};

TEST_P(Settings, HoldWhatTheirValuesSay) {
    std::string standard = properties::defaultSet(properties::leadBytesOf(GetParam()).hasLeadBytes != 0),
                most(128, '#');
    std::sort(standard.begin(), standard.end(), [](unsigned char a, unsigned char b) { return a < b; });
    const Value face = {"DialogFont", REG_SZ, "Tahoma\0"s}, size = {"DialogFontSize", REG_DWORD, "\x09\0\1\0"s};
    const struct {
        const char* reason;
        std::vector<Value> values;
        std::string expected;
    } rows[] = {
        {"nothing configured", {}, "[]" + standard + "||0"},
        {"a string brings its terminator", {{"QuoteChars", REG_SZ, "#%\0"s}}, "[]\0#%||0"s},
        {"a last byte that leads in 932", {{"QuoteChars", REG_SZ, "#\x81\0"s}}, "[]\0#\x81||0"s},
        {"a bracket that does", {{"QuoteBracketChars", REG_SZ, "{\x81\0"s}}, "{\x81" + standard + "||0"},
        {"bytes", {{"QuoteChars", REG_BINARY, "#\xFF"}}, "[]#\xFF||0"},
        {"no bytes: nothing is quoted", {{"QuoteChars", REG_BINARY, ""}}, "[]||0"},
        {"a number of two bytes", {{"QuoteChars", REG_DWORD, "#%"}}, "[]#%||0"},
        {"a number of more than four, zero from there on", {{"QuoteChars", REG_DWORD, "#%&?<"}}, "[]\0#%&?||0"s},
        {"a type without data", {{"QuoteChars", REG_MULTI_SZ, "#\0\0"s}}, "[]" + standard + "||0"},
        {"128 bytes", {{"QuoteChars", REG_BINARY, most}}, "[]#||0"},
        {"129 bytes are not read", {{"QuoteChars", REG_BINARY, most + '#'}}, "[]" + standard + "||0"},
        {"no more than the first two count", {{"QuoteBracketChars", REG_SZ, "<>!\0"s}}, "<>" + standard + "||0"},
        {"one bracket", {{"QuoteBracketChars", REG_SZ, "{\0"s}}, "[]" + standard + "||0"},
        {"a second of zero", {{"QuoteBracketChars", REG_SZ, "{\0}\0"s}}, "[]" + standard + "||0"},
        {"brackets that are no string", {{"QuoteBracketChars", REG_BINARY, "{}\0"s}}, "[]" + standard + "||0"},
        {"an expandable one", {{"QuoteBracketChars", REG_EXPAND_SZ, "{}\0"s}}, "[]" + standard + "||0"},
        {"a face and a size", {face, size}, "[]" + standard + "|Tahoma|65545"},
        {"no size", {face}, "[]" + standard + "||0"},
        {"no face", {size}, "[]" + standard + "||0"},
        {"a size that is a string", {face, {"DialogFontSize", REG_SZ, "8\0"s}}, "[]" + standard + "||0"},
        {"a face that is no string", {size, {"DialogFont", REG_BINARY, "Tahoma\0"s}}, "[]" + standard + "||0"},
        {"a face of 129 bytes", {size, {"DialogFont", REG_SZ, most + '\0'}}, "[]" + standard + "||0"},
        {"one of 128 without an end", {size, {"DialogFont", REG_SZ, most}}, "[]" + standard + '|' + most + "|65545"},
    };
    for (const auto& row : rows) {
        const bool isStored = std::all_of(row.values.begin(), row.values.end(), [](const Value& value) {
            return value.type != REG_SZ || testing_support::storable(value.bytes) == value.bytes;
        });
        if (isStored) {
            EXPECT_EQ(attachedWith(row.values), row.expected) << row.reason;
        }
    }
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(Settings);  // under other languages' code pages

INSTANTIATE_TEST_SUITE_P(CodePages, Settings,
                         testing::ValuesIn(testing_support::codePagesAmong({1252u, 932u, 936u, 949u, 950u})));

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
        {{1, 1}, DLL_PROCESS_DETACH, 0, {0, 1}, "a thread is left"},
        {{2, 0}, DLL_PROCESS_DETACH, 0, {1, 0}, "another process is left"},
        {{1, 0}, DLL_PROCESS_DETACH, 1, {0, 0}, "the last one"},
        {{0, -1}, DLL_PROCESS_DETACH, 1, {-1, -1}, "both below zero"},
    };
    for (const auto& call : calls) {
        const auto module = reinterpret_cast<HINSTANCE>(const_cast<char*>(call.why));
        sharedCounters = call.before;
        EXPECT_EQ(DllMain(module, call.reason, nullptr), call.result) << call.why;
        EXPECT_EQ(sharedCounters.processCount, call.after.processCount) << call.why;
        EXPECT_EQ(sharedCounters.threadCount, call.after.threadCount) << call.why;
        EXPECT_EQ(TamrixResourceInstance(), module) << call.why;
    }
    DllMain(own, DLL_THREAD_ATTACH, nullptr);
    sharedCounters = ownCounters;
}

}  // namespace
