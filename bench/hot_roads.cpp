// The hot roads over fixed inputs, each in a function of its own, for counting their instructions:
// scripts/check-instructions.
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

/// Defines a road: a function that is never inlined, so that the profile shows it with all it calls.
#define ROAD(name, ...)                                                                            \
    extern "C" __attribute__((noinline)) void road_##name([[maybe_unused]] const Texts& mac,       \
                                                          [[maybe_unused]] const Texts& windows) { \
        __VA_ARGS__                                                                                \
    }

ROAD(AFPtoOSCopy, for (const Text& text : mac.each) sink += AFPtoOSCopy(buffer, text.name.c_str(), sizeof buffer);)
ROAD(AFPtoOSLen, for (const Text& text : mac.each) sink += AFPtoOSLen(text.name.c_str());)
ROAD(OStoAFPCopy, for (const Text& text : windows.each) sink += OStoAFPCopy(buffer, text.name.c_str(), sizeof buffer);)
ROAD(OStoAFPLen, for (const Text& text : windows.each) sink += OStoAFPLen(text.name.c_str());)
ROAD(dbcs_stricmp, for (const Text& text : windows.each) sink += calls::compareCase(dbcs_stricmp, buffer, text);)
ROAD(BufStrCpy, for (const Text& text : windows.each) sink += BufStrCpy(buffer, text.name.c_str(), 32);)
ROAD(EnumExtMap, sink += class_keys::mappingPass<SExtensionMap>(EnumExtMap);)
ROAD(CExtensionMap, CExtensionMap cursor; for (int more = cursor.First(); more; more = cursor.Next())++ sink;)

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
    for (const auto road : {road_AFPtoOSCopy, road_AFPtoOSLen, road_OStoAFPCopy, road_OStoAFPLen, road_dbcs_stricmp,
                            road_BufStrCpy, road_EnumExtMap, road_CExtensionMap})
        road(mac, windows);
    return sink > 0 ? 0 : 1;
}
