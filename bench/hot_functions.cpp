// Calls of the most frequently used functions with fixed inputs. scripts/check-instructions counts their instructions.
#include <standin.h>

#include "calls.h"
#include "class_keys.h"
#include "entry/entry.h"
#include "tamrix32/extmap.h"
#include "tamrix32/macnames.h"
#include "tamrix32/strings.h"

namespace {

constexpr std::size_t kNames = 1000;
constexpr int kKeys = 200;
char buffer[256];
int sink;

}  // namespace

/// Defines a function that is never inlined, so that the profile shows it with the functions that it calls.
#define HOT(name, ...)                                                                            \
    extern "C" __attribute__((noinline)) void hot_##name([[maybe_unused]] const Texts& mac,       \
                                                         [[maybe_unused]] const Texts& windows) { \
        __VA_ARGS__                                                                               \
    }

HOT(AFPtoOSCopy, for (const Text& text : mac.each) sink += AFPtoOSCopy(buffer, text.name.c_str(), sizeof buffer);)
HOT(AFPtoOSLen, for (const Text& text : mac.each) sink += AFPtoOSLen(text.name.c_str());)
HOT(OStoAFPCopy, for (const Text& text : windows.each) sink += OStoAFPCopy(buffer, text.name.c_str(), sizeof buffer);)
HOT(OStoAFPLen, for (const Text& text : windows.each) sink += OStoAFPLen(text.name.c_str());)
HOT(dbcs_stricmp, for (const Text& text : windows.each) sink += calls::compareCase(dbcs_stricmp, buffer, text);)
HOT(BufStrCpy, for (const Text& text : windows.each) sink += BufStrCpy(buffer, text.name.c_str(), 32);)
HOT(EnumExtMap, sink += class_keys::mappingPass<SExtensionMap>(EnumExtMap);)
HOT(CExtensionMap, CExtensionMap cursor; for (int more = cursor.First(); more; more = cursor.Next())++ sink;)

int main() {
    DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr);
    Texts mac;
    Texts windows;
    for (const std::string& name : sampleNames(kNames, "\x80\x8A\x9F\xA5\xD0")) {
        char translated[256];
        AFPtoOSCopy(translated, name.c_str(), sizeof translated);
        mac.add(name);
        windows.add(translated);
    }
    class_keys::fill(kKeys);
    for (const auto function : {hot_AFPtoOSCopy, hot_AFPtoOSLen, hot_OStoAFPCopy, hot_OStoAFPLen, hot_dbcs_stricmp,
                                hot_BufStrCpy, hot_EnumExtMap, hot_CExtensionMap})
        function(mac, windows);
    return sink > 0 ? 0 : 1;
}
