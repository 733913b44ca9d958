// tamrix name: converts Macintosh names to Windows names and back, and reports how they are converted.
#include "client/command.h"
#include "client/json.h"
#include "client/name_check.h"
#include "client/name_list.h"
#include "client/output.h"
#include "client/system/streams.h"

namespace tamrix::client {
namespace {

constexpr Option kConvertOptions[] = {kZeroOption, kJsonOption};
constexpr Option kToMacOptions[] = {
    kZeroOption,
    {.name = "--separator", .value = "TEXT", .help = "print TEXT between the parts of a path instead of a zero byte"},
    kJsonOption};

int convert(const Arguments& arguments, Side from, Side to, std::string (*translate)(const std::string&)) {
    const bool asJson = arguments.has("--json");
    const std::string ending(1, arguments.has("-0") ? '\0' : '\n');
    const char* separator = arguments.value("--separator");
    Json json;
    const JsonArray array(json, asJson);
    return forEachName(arguments, from, [&](const std::string& name) {
        const std::string result = translate(name);
        if (asJson) {
            const JsonObject object(json);
            json.bytes("from", from, name);
            json.bytes("to", to, result);
            return true;
        }
        std::string text;
        const bool hasText = textFromBytes(to, result, text);
        if (!hasText || !outputCanEncode(text)) {
            complain(shown(from, name),
                     hasText ? "the result cannot be represented in the output's code page; use --text utf-8"
                             : "the result cannot be converted to text");
            return false;
        }
        if (separator)
            for (std::size_t at = 0; (at = text.find('\0', at)) != std::string::npos;)
                text.replace(at, 1, separator), at += std::string_view(separator).size();
        print(text + ending);
        return true;
    });
}

int runToWindows(const Arguments& arguments) {
    return convert(arguments, Side::mac, Side::windows, windowsNameOf);
}

int runToMac(const Arguments& arguments) {
    return convert(arguments, Side::windows, Side::mac, macNameOf);
}

/// The byte as "0x3A ':'", or only the number if it is not a visible ASCII character.
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
        text += "  byte " + ordinal(quoted.position) + ", " + described(quoted.byte) + ", becomes " +
                shown(Side::windows, bracketed(rules, quoted.byte)) + ": " + quoted.reason + "\n";
    for (const LooksQuoted& look : report.looksQuoted)
        text += "  byte " + ordinal(look.position) + ": the name already contains " +
                shown(Side::windows, bracketed(rules, look.value)) + ", which converts back to " +
                described(static_cast<unsigned char>(look.value)) + "\n";
    text += report.convertsBack ? "  converts back unchanged\n" : "  DOES NOT convert back unchanged\n";
    if (report.notAccepted) text += "  NOT ACCEPTED by Windows: " + std::string(report.notAccepted) + "\n";
    print(text);
}

void writeReport(Json& json, const std::string& name, const NameReport& report) {
    const JsonObject object(json);
    json.bytes("name", Side::mac, name);
    json.bytes("windows", Side::windows, report.windowsName);
    {
        const JsonArray array(json, "quoted");
        for (const QuotedByte& quoted : report.quoted) {
            const JsonObject row(json);
            json.number("position", static_cast<long>(quoted.position));
            json.number("byte", quoted.byte);
            json.ascii("reason", quoted.reason);
        }
    }
    {
        const JsonArray array(json, "looksQuoted");
        for (const LooksQuoted& look : report.looksQuoted) {
            const JsonObject row(json);
            json.number("position", static_cast<long>(look.position));
            json.number("value", look.value);
        }
    }
    json.boolean("comesBack", report.convertsBack);
    json.boolean("tooLong", report.tooLong);
    json.ascii("notKept", report.notAccepted ? report.notAccepted : "");
}

int runCheck(const Arguments& arguments) {
    const bool asJson = arguments.has("--json");
    const ByteRules rules = askLibrary();
    Json json;
    const JsonArray array(json, asJson);
    return forEachName(arguments, Side::mac, [&](const std::string& name) {
        const NameReport report = checkName(name, rules);
        if (asJson)
            writeReport(json, name, report);
        else
            printReport(name, report, rules);
        return report.convertsBack && !report.notAccepted;
    });
}

constexpr char kFromInput[] =
    "Without NAME, names are read from standard input, one per line or, with -0, each up to a zero byte.\n";

constexpr char kCheckDetails[] =
    "Shows for each Macintosh name which bytes become bracketed numbers and why, whether the name converts back\n"
    "unchanged, and whether Windows accepts it: not device names (AUX, con.txt), names that end in a period, or more\n"
    "than 255 bytes. The exit status is 1 if a name does not convert back or is not accepted.\n";

constexpr char kToMacDetails[] =
    "A backslash separates the parts of a path and becomes a zero byte. Without NAME, names are read from standard\n"
    "input, one per line (a carriage return at its end is ignored) or, with -0, each up to a zero byte.\n";

constexpr Command kCommands[] = {
    {.name = "name to-windows",
     .operands = "[NAME...]",
     .summary = "convert Macintosh names to Windows names",
     .details = kFromInput,
     .options = kConvertOptions,
     .maxOperands = -1,
     .run = runToWindows,
     .example = "name to-windows 'Q1: Budget?' Report."},
    {.name = "name to-mac",
     .operands = "[NAME...]",
     .summary = "convert Windows names or paths to Macintosh names",
     .details = kToMacDetails,
     .options = kToMacOptions,
     .maxOperands = -1,
     .run = runToMac,
     .example = "name to-mac 'Q1[058] Budget[063]'"},
    {.name = "name check",
     .operands = "[NAME...]",
     .summary = "show how Macintosh names are converted",
     .details = kCheckDetails,
     .options = kConvertOptions,
     .maxOperands = -1,
     .run = runCheck,
     .example = "name check 'Sales@HQ.'"},
};

}  // namespace

std::span<const Command> nameCommands() {
    return kCommands;
}

}  // namespace tamrix::client
