// tamrix name: Macintosh names to Windows names and back, and what happens to them on the way.
#include "client/command.h"
#include "client/json.h"
#include "client/name_check.h"
#include "client/name_list.h"
#include "client/system/streams.h"

namespace tamrix::client {
namespace {

constexpr Option kConvertOptions[] = {kZeroOption, kJsonOption};
constexpr Option kToMacOptions[] = {
    kZeroOption, {"--separator", "TEXT", "print TEXT between the parts of a path, not a zero byte"}, kJsonOption};

int convert(const Arguments& arguments, Side from, Side to, std::string (*translate)(const std::string&)) {
    const bool asJson = arguments.has("--json");
    const std::string ending(1, arguments.has("-0") ? '\0' : '\n');
    const char* separator = arguments.value("--separator");
    Json json;
    const JsonArray array(json, asJson);
    const int status = forEachName(arguments, from, [&](const std::string& name) {
        const std::string result = translate(name);
        if (asJson) {
            const JsonObject object(json);
            json.bytes("from", from, name);
            json.bytes("to", to, result);
            return true;
        }
        std::string text;
        const bool hasText = textFromBytes(to, result, text);
        if (!hasText || !outputHolds(text)) {
            complain(shown(from, name),
                     hasText ? "the output cannot hold the result: give --text utf-8" : "the result has no text");
            return false;
        }
        if (separator)
            for (std::size_t at = 0; (at = text.find('\0', at)) != std::string::npos;)
                text.replace(at, 1, separator), at += std::string_view(separator).size();
        print(text + ending);
        return true;
    });
    return status;
}

int runToWindows(const Arguments& arguments) {
    return convert(arguments, Side::mac, Side::windows, windowsNameOf);
}

int runToMac(const Arguments& arguments) {
    return convert(arguments, Side::windows, Side::mac, macNameOf);
}

/// "0x3A ':'", or the number alone where the byte is no visible character of ASCII.
std::string described(unsigned char byte) {
    const char c = static_cast<char>(byte);
    const std::string number = "0x" + hex({&c, 1});
    return byte > 0x20 && byte < 0x7F ? number + " '" + c + "'" : number;
}

std::string ordinal(std::size_t position) {
    return std::to_string(position + 1);
}

void printReport(const std::string& name, const NameReport& report, const ByteRules& rules) {
    std::string text = shown(Side::mac, name) + "\n  Windows name: " + shown(Side::windows, report.windowsName) + " (" +
                       std::to_string(report.windowsName.size()) + " bytes)\n";
    for (const QuotedByte& quoted : report.quoted)
        text += "  byte " + ordinal(quoted.position) + ", " + described(quoted.byte) + ", is written as " +
                shown(Side::windows, bracketed(rules, quoted.byte)) + ": " + quoted.reason + "\n";
    for (const LooksQuoted& look : report.looksQuoted)
        text += "  byte " + ordinal(look.position) + ": the name already holds " +
                shown(Side::windows, bracketed(rules, look.value)) + ", which comes back as " +
                described(static_cast<unsigned char>(look.value)) + "\n";
    text += report.comesBack ? "  comes back unchanged\n" : "  DOES NOT come back unchanged\n";
    if (report.notKept) text += "  CANNOT be kept: " + std::string(report.notKept) + "\n";
    print(text);
}

void writeReport(Json& json, const std::string& name, const NameReport& report) {
    const JsonObject object(json);
    json.bytes("name", Side::mac, name);
    json.bytes("windows", Side::windows, report.windowsName);
    {
        const JsonArray array(json, true, "quoted");
        for (const QuotedByte& quoted : report.quoted) {
            const JsonObject row(json);
            json.number("position", static_cast<long>(quoted.position));
            json.number("byte", quoted.byte);
            json.ascii("reason", quoted.reason);
        }
    }
    {
        const JsonArray array(json, true, "looksQuoted");
        for (const LooksQuoted& look : report.looksQuoted) {
            const JsonObject row(json);
            json.number("position", static_cast<long>(look.position));
            json.number("value", look.value);
        }
    }
    json.boolean("comesBack", report.comesBack);
    json.boolean("tooLong", report.tooLong);
    json.ascii("notKept", report.notKept ? report.notKept : "");
}

int runCheck(const Arguments& arguments) {
    const bool asJson = arguments.has("--json");
    const ByteRules rules = askLibrary();
    Json json;
    const JsonArray array(json, asJson);
    const int status = forEachName(arguments, Side::mac, [&](const std::string& name) {
        const NameReport report = checkName(name, rules);
        if (asJson)
            writeReport(json, name, report);
        else
            printReport(name, report, rules);
        return report.comesBack && !report.notKept;
    });
    return status;
}

constexpr char kFromInput[] =
    "Without a NAME, names are read from standard input, one a line (or each up to a zero byte with -0).\n";

constexpr char kCheckDetails[] =
    "Says for each Macintosh name which bytes are written as bracketed numbers and why, whether the name comes back\n"
    "unchanged, and whether Windows can keep it: not names of devices (AUX, con.txt), not with a final period, not "
    "more\n"
    "than 255 bytes. Status 1 when a name does not come back or can't be kept.\n";

constexpr char kToMacDetails[] =
    "A backslash separates the parts of a path and becomes a zero byte. Without a NAME, names are read from standard\n"
    "input, one a line (a carriage return before the line's end is dropped), or each up to a zero byte with -0.\n";

constexpr Command kCommands[] = {
    {.name = "name to-windows",
     .operands = "[NAME...]",
     .summary = "turn Macintosh names into Windows names",
     .details = kFromInput,
     .options = kConvertOptions,
     .fewest = 0,
     .most = -1,
     .run = runToWindows,
     .example = "name to-windows 'Q1: Budget?' Report."},
    {.name = "name to-mac",
     .operands = "[NAME...]",
     .summary = "turn Windows names or paths into Macintosh names",
     .details = kToMacDetails,
     .options = kToMacOptions,
     .fewest = 0,
     .most = -1,
     .run = runToMac,
     .example = "name to-mac 'Q1[058] Budget[063]'"},
    {.name = "name check",
     .operands = "[NAME...]",
     .summary = "say what happens to Macintosh names on the way",
     .details = kCheckDetails,
     .options = kConvertOptions,
     .fewest = 0,
     .most = -1,
     .run = runCheck,
     .example = "name check 'Sales@HQ.'"},
};

}  // namespace

std::span<const Command> nameCommands() {
    return kCommands;
}

}  // namespace tamrix::client
