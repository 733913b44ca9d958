// tamrix unc: builds paths of AppleTalk servers and printers, and splits them into their parts.
#include "client/command.h"
#include "client/json.h"
#include "client/output.h"
#include "tamrix32/macnames.h"
#include "tamrix32/strings.h"

namespace tamrix::client {
namespace {

constexpr int kServer = 1;
constexpr int kPrinter = 2;
constexpr long kMaxPathSize = 32767;

constexpr Option kJoinOptions[] = {
    {.name = "--printer", .help = "a printer and its share instead of a server and its volume"},
    {.name = "--zone", .value = "ZONE", .help = "the zone; * means the local zone and is omitted"},
    kJsonOption};
constexpr Option kSplitOptions[] = {kJsonOption};

/// The parts of a path; the pointers, which the library takes, are null for missing parts.
struct Parts {
    int kind = kServer;
    std::string zone, name, share;
    const char* zoneOrNull = nullptr;
    const char* nameOrNull = nullptr;
    const char* shareOrNull = nullptr;
};

/// Why a path with this part would not be split into the same parts again; null if it would.
const char* whyNotAPart(const std::string& bytes) {
    if (bytes.empty()) return "is empty";
    for (const char delimiter : {'\\', '@', '`'})
        if (dbcs_strchr(bytes.c_str(), delimiter)) return "contains a delimiter (\\, @ or `)";
    return nullptr;
}

/// Converts one part to bytes and checks it. `what` is the part's name in error messages.
bool takePart(const char* what, const std::string& argument, std::string& bytes, const char*& pointer) {
    const bool isText = bytesFromText(Side::windows, argument, bytes);
    if (const char* why = isText ? whyNotAPart(bytes) : whyNotBytes(Side::windows)) {
        complain(argument, std::string("the ") + what + " " + why);
        return false;
    }
    pointer = bytes.c_str();
    return true;
}

bool takeParts(const Arguments& arguments, Parts& parts) {
    const auto& operands = arguments.operands();
    const char* zone = arguments.value("--zone");
    if (arguments.has("--printer")) parts.kind = kPrinter;
    return (!zone || takePart("zone", zone, parts.zone, parts.zoneOrNull)) &&
           takePart("name", operands[0], parts.name, parts.nameOrNull) &&
           (operands.size() < 2 || takePart("share", operands[1], parts.share, parts.shareOrNull));
}

/// Reads the parts. Returns the capacity that their path needs in bytes; 0 after an error, which is reported.
int takeAndMeasure(const Arguments& arguments, Parts& parts) {
    if (!takeParts(arguments, parts)) return 0;
    const int length = UNCLength(parts.kind, parts.zoneOrNull, parts.nameOrNull, parts.shareOrNull);
    if (length == 0)
        complain(arguments.operands()[0], parts.kind == kPrinter && !parts.shareOrNull
                                              ? "a printer needs a share"
                                              : "the path is longer than " + std::to_string(kMaxPathSize) + " bytes");
    return length;
}

int runJoin(const Arguments& arguments) {
    Parts parts;
    const int length = takeAndMeasure(arguments, parts);
    if (!length) return kUsageError;
    std::string path(static_cast<std::size_t>(length), '\0');
    // Succeeds for parts that UNCLength has accepted.
    StringsToUNC(parts.kind, path.data(), static_cast<unsigned short>(length), parts.zoneOrNull, parts.nameOrNull,
                 parts.shareOrNull);
    path.resize(path.find('\0'));
    if (!arguments.has("--json")) {
        print(shown(Side::windows, path) + "\n");
        return kDone;
    }
    Json json;
    const JsonObject object(json);
    json.bytes("path", Side::windows, path);
    return kDone;
}

int runLength(const Arguments& arguments) {
    Parts parts;
    const int length = takeAndMeasure(arguments, parts);
    if (!length) return kUsageError;
    if (!arguments.has("--json")) {
        print(std::to_string(length) + "\n");
        return kDone;
    }
    Json json;
    const JsonObject object(json);
    json.number("length", length);
    return kDone;
}

struct SplitPath {
    int kind = 0;  // 0: not a path of a server or printer
    std::string zone, name, share, rest;
};

SplitPath split(const std::string& path) {
    SplitPath parts;
    parts.zone = parts.name = parts.share = parts.rest = std::string(path.size() + 1, '\0');
    parts.kind = UNCToStrings(path.c_str(), parts.zone.data(), parts.name.data(), parts.share.data(), parts.rest.data(),
                              static_cast<unsigned>(path.size() + 1));
    for (std::string* part : {&parts.zone, &parts.name, &parts.share, &parts.rest}) part->resize(part->find('\0'));
    return parts;
}

void printSplit(const SplitPath& parts) {
    const auto line = [](const char* label, const std::string& part) {
        if (!part.empty()) print(std::string(label) + "\t" + shown(Side::windows, part) + "\n");
    };
    print(parts.kind == kPrinter ? "kind\tprinter\n" : "kind\tserver\n");
    line("zone", parts.zone);
    line("name", parts.name);
    line("share", parts.share);
    line("rest", parts.rest);
}

void writeSplit(Json& json, const std::string& path, const SplitPath& parts) {
    const JsonObject object(json);
    json.bytes("path", Side::windows, path);
    json.ascii("kind", parts.kind == kPrinter ? "printer" : parts.kind == kServer ? "server" : "none");
    json.bytes("zone", Side::windows, parts.zone);
    json.bytes("name", Side::windows, parts.name);
    json.bytes("share", Side::windows, parts.share);
    json.bytes("rest", Side::windows, parts.rest);
}

int runSplit(const Arguments& arguments) {
    int status = kDone;
    const bool asJson = arguments.has("--json");
    Json json;
    const JsonArray array(json, asJson);
    for (const std::string& operand : arguments.operands()) {
        std::string path;
        if (!bytesFromText(Side::windows, operand, path)) {
            complain(operand, whyNotBytes(Side::windows));
            status = kSomeFailed;
            continue;
        }
        SplitPath parts = split(path);
        if (parts.kind == 0 || parts.name.empty()) {
            complain(operand, parts.kind ? "no server or printer in the path" : "not a path of a server or printer");
            parts = {};
            status = kSomeFailed;
        } else if (!asJson) {
            printSplit(parts);
        }
        if (asJson) writeSplit(json, path, parts);
    }
    return status;
}

constexpr char kJoinDetails[] = "A server's path is \\\\ZONE@NAME\\VOLUME, a printer's \\\\ZONE`NAME\\SHARE.\n";
constexpr char kLengthDetails[] = "Prints the number of bytes that the path needs at most, including the terminator.\n";
constexpr char kSplitDetails[] =
    "Prints kind, zone, name, share and the rest of the path, one per line: a label, a tab and the value.\n";

constexpr Command kCommands[] = {
    {.name = "unc join",
     .operands = "NAME [SHARE]",
     .summary = "build the path of a server or printer",
     .details = kJoinDetails,
     .options = kJoinOptions,
     .minOperands = 1,
     .maxOperands = 2,
     .run = runJoin,
     .example = "unc join --zone Sales Mercury Projects"},
    {.name = "unc split",
     .operands = "PATH...",
     .summary = "split paths into their parts",
     .details = kSplitDetails,
     .options = kSplitOptions,
     .minOperands = 1,
     .maxOperands = -1,
     .run = runSplit,
     .example = "unc split '\\\\Sales@Mercury\\Projects\\Docs\\a.txt'"},
    {.name = "unc length",
     .operands = "NAME [SHARE]",
     .summary = "print the size of the path that unc join would build",
     .details = kLengthDetails,
     .options = kJoinOptions,
     .minOperands = 1,
     .maxOperands = 2,
     .run = runLength,
     .example = "unc length --zone Sales Mercury Projects"},
};

}  // namespace

std::span<const Command> uncCommands() {
    return kCommands;
}

}  // namespace tamrix::client
