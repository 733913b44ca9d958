// tamrix info: the settings that the library uses, which are found by calling it.
#include <windows.h>

#include "base/settings_key.h"
#include "client/command.h"
#include "client/json.h"
#include "client/library_names.h"
#include "client/output.h"
#include "client/system/startup.h"
#include "tamrix32/registry.h"

namespace tamrix::client {
namespace {

constexpr Option kOptions[] = {kJsonOption};

struct Info {
    long ansi = 0;
    long oem = 0;
    ByteRules rules;
    std::string quoteSet;   // in ascending order
    std::string leadBytes;  // in ascending order
    bool hasCounters = false;
    long processes = 0;
    long threads = 0;
    std::string fontFace;  // empty if none is configured
    long fontSize = 0;
};

/// Reads the dialog font, which takes effect only if both face and size are configured.
void readFont(Info& info) {
    RegKey key;
    RegValue face, size;
    if (!key.Open(HKEY_LOCAL_MACHINE, kSettingsPath)) return;
    if (!key.ValueByName("DialogFont", &face) || face.Type() != RegValString || !face.String()) return;
    if (!key.ValueByName("DialogFontSize", &size) || size.Type() != RegValDword) return;
    info.fontFace = face.String();
    info.fontSize = static_cast<long>(size.Value());
}

/// Whether a byte is in the quote set. Bracketed numbers of space and period convert back with any quote set, so they
/// cannot be used to find out. A space inside a name is never quoted, so it counts as not in the set.
bool isInSet(const ByteRules& rules, int value) {
    if (value == ' ') return false;
    return value == '.' ? rules.isQuoted[value] : rules.decodes[value];
}

Info gather() {
    Info info;
    info.ansi = static_cast<long>(GetACP());
    info.oem = static_cast<long>(GetOEMCP());
    info.rules = askLibrary();
    for (int value = 0; value < 256; ++value) {
        if (isInSet(info.rules, value)) info.quoteSet += static_cast<char>(value);
        if (info.rules.isLead[value]) info.leadBytes += static_cast<char>(value);
    }
    info.hasCounters = readCounters(info.processes, info.threads);
    readFont(info);
    return info;
}

/// Ascending bytes as ranges, such as "00-1F 22 2A".
std::string ranges(const std::string& bytes) {
    std::string text;
    for (std::size_t first = 0; first < bytes.size();) {
        std::size_t last = first;
        while (last + 1 < bytes.size() &&
               static_cast<unsigned char>(bytes[last]) + 1 == static_cast<unsigned char>(bytes[last + 1]))
            ++last;
        if (!text.empty()) text += ' ';
        text += hex({&bytes[first], 1});
        if (last > first) text += "-" + hex({&bytes[last], 1});
        first = last + 1;
    }
    return text.empty() ? "none" : text;
}

void printInfo(const Info& info) {
    const std::string brackets = {static_cast<char>(info.rules.open), ' ', static_cast<char>(info.rules.close)};
    std::string text =
        "ANSI code page:   " + std::to_string(info.ansi) + "\nOEM code page:    " + std::to_string(info.oem) +
        "\nlead bytes:       " + ranges(info.leadBytes) +
        "\ncharacter table:  " + (info.rules.tableIsOn ? "on" : "off") +
        "\nbrackets:         " + shown(Side::windows, brackets) + "\nquote set:        " + ranges(info.quoteSet) +
        " (" + std::to_string(info.quoteSet.size()) + " bytes)\n";
    if (info.hasCounters)
        text += "attached:         processes " + std::to_string(info.processes) + ", threads " +
                std::to_string(info.threads) + "\n";
    text += "dialog font:      ";
    text += info.fontFace.empty()
                ? "not configured"
                : shown(Side::windows, info.fontFace) + ", " + std::to_string(info.fontSize) + " points";
    print(text + "\n");
}

void writeInfo(const Info& info) {
    Json json;
    const JsonObject object(json);
    json.number("ansiCodePage", info.ansi);
    json.number("oemCodePage", info.oem);
    json.ascii("leadBytesHex", hex(info.leadBytes));
    json.boolean("characterTable", info.rules.tableIsOn);
    json.bytes("open", Side::windows, {static_cast<char>(info.rules.open)});
    json.bytes("close", Side::windows, {static_cast<char>(info.rules.close)});
    json.ascii("quoteSetHex", hex(info.quoteSet));
    if (info.hasCounters) {
        json.number("processes", info.processes);
        json.number("threads", info.threads);
    }
    json.bytes("dialogFont", Side::windows, info.fontFace);
    json.number("dialogFontSize", info.fontSize);
}

int run(const Arguments& arguments) {
    const Info info = gather();
    if (arguments.has("--json"))
        writeInfo(info);
    else
        printInfo(info);
    return kDone;
}

constexpr Command kCommands[] = {
    {.name = "info",
     .summary = "print the code pages and the current settings",
     .details = "Bytes are hexadecimal. The quote set applies to Macintosh names.\n",
     .options = kOptions,
     .run = run,
     .example = "info --json"},
};

}  // namespace

std::span<const Command> infoCommands() {
    return kCommands;
}

}  // namespace tamrix::client
