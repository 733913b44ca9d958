// tamrix unc: paths of AppleTalk servers and printers, joined from and split into their parts.
#include "client/command.h"
#include "client/output.h"
#include "client/system/encodings.h"
#include "tamrix32/macnames.h"

namespace tamrix::client {
namespace {

constexpr int kServer = 1;
constexpr int kPrinter = 2;
constexpr long kLongestPath = 32767;

constexpr Option kJoinOptions[] = {{"--printer", nullptr, "a printer and its share, not a server and its volume"},
                                   {"--zone", "ZONE", "the zone; * is the own one, which is not written"},
                                   kJsonOption};
constexpr Option kSplitOptions[] = {kJsonOption};

/// The parts of a path as the library takes them: null where there is none.
struct Parts {
    int kind = kServer;
    std::string zone, name, share;
    const char* zoneOrNull = nullptr;
    const char* nameOrNull = nullptr;
    const char* shareOrNull = nullptr;
};

bool takePart(const std::string& argument, std::string& bytes, const char*& pointer) {
    if (!bytesFromText(Side::windows, argumentText(argument), bytes)) {
        complain(argument, "not text of this code page");
        return false;
    }
    pointer = bytes.c_str();
    return true;
}

bool takeParts(const Arguments& arguments, Parts& parts) {
    const auto& operands = arguments.operands();
    const char* zone = arguments.value("--zone");
    if (arguments.has("--printer")) parts.kind = kPrinter;
    return (!zone || takePart(zone, parts.zone, parts.zoneOrNull)) &&
           takePart(operands[0], parts.name, parts.nameOrNull) &&
           (operands.size() < 2 || takePart(operands[1], parts.share, parts.shareOrNull));
}

/// The capacity for the path; 0 after a complaint.
int lengthOf(const Arguments& arguments, const Parts& parts) {
    const int length = UNCLength(parts.kind, parts.zoneOrNull, parts.nameOrNull, parts.shareOrNull);
    if (length <= 0)
        complain(arguments.operands()[0], parts.kind == kPrinter && !parts.shareOrNull
                                              ? "a printer needs a share"
                                              : "the path is longer than " + decimal(kLongestPath) + " bytes");
    return length > 0 ? length : 0;
}

int runJoin(const Arguments& arguments) {
    Parts parts;
    if (!takeParts(arguments, parts)) return kSomeFailed;
    const int length = lengthOf(arguments, parts);
    if (!length) return kSomeFailed;
    std::string path(static_cast<std::size_t>(length), '\0');
    if (!StringsToUNC(parts.kind, path.data(), static_cast<unsigned short>(length), parts.zoneOrNull, parts.nameOrNull,
                      parts.shareOrNull)) {
        complain(arguments.operands()[0], "a printer's name and share may not be empty");
        return kSomeFailed;
    }
    path.resize(path.find('\0'));
    if (!arguments.has("--json")) {
        print(shown(Side::windows, path) + "\n");
        return kDone;
    }
    Json json;
    json.beginObject();
    json.bytes("path", Side::windows, path);
    json.endObject();
    json.finish();
    return kDone;
}

int runLength(const Arguments& arguments) {
    Parts parts;
    if (!takeParts(arguments, parts)) return kSomeFailed;
    const int length = lengthOf(arguments, parts);
    if (!length) return kSomeFailed;
    if (!arguments.has("--json")) {
        print(decimal(length) + "\n");
        return kDone;
    }
    Json json;
    json.beginObject();
    json.number("length", length);
    json.endObject();
    json.finish();
    return kDone;
}

struct SplitPath {
    int kind;
    std::string zone, name, share, rest;
};

SplitPath split(const std::string& path) {
    const std::string empty(path.size() + 1, '\0');
    SplitPath parts{0, empty, empty, empty, empty};
    parts.kind = UNCToStrings(path.c_str(), parts.zone.data(), parts.name.data(), parts.share.data(), parts.rest.data(),
                              static_cast<unsigned>(empty.size()));
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
    json.beginObject();
    json.bytes("path", Side::windows, path);
    json.ascii("kind", parts.kind == kPrinter ? "printer" : parts.kind == kServer ? "server" : "none");
    json.bytes("zone", Side::windows, parts.zone);
    json.bytes("name", Side::windows, parts.name);
    json.bytes("share", Side::windows, parts.share);
    json.bytes("rest", Side::windows, parts.rest);
    json.endObject();
}

int runSplit(const Arguments& arguments) {
    int status = kDone;
    const bool asJson = arguments.has("--json");
    Json json;
    if (asJson) json.beginArray();
    for (const std::string& operand : arguments.operands()) {
        std::string path;
        if (!bytesFromText(Side::windows, argumentText(operand), path)) {
            complain(operand, "not text of this code page");
            status = kSomeFailed;
            continue;
        }
        const SplitPath parts = split(path);
        if (parts.kind == 0) {
            complain(operand, "not a path of a server or printer");
            status = kSomeFailed;
        } else if (!asJson) {
            printSplit(parts);
        }
        if (asJson) writeSplit(json, path, parts);
    }
    if (asJson) {
        json.endArray();
        json.finish();
    }
    return status;
}

constexpr char kJoinDetails[] = "A server's path is \\\\ZONE@NAME\\VOLUME, a printer's \\\\ZONE`NAME\\SHARE.\n";
constexpr char kLengthDetails[] = "The capacity in bytes that the path needs at most, its terminator included.\n";
constexpr char kSplitDetails[] =
    "Prints kind, zone, name, share and the rest of the path, each with a tab behind its label.\n";

constexpr Command kCommands[] = {
    {"unc join", "NAME [SHARE]", "build the path of a server or printer", kJoinDetails, kJoinOptions, 1, 2, runJoin},
    {"unc split", "PATH...", "take paths apart", kSplitDetails, kSplitOptions, 1, -1, runSplit},
    {"unc length", "NAME [SHARE]", "measure the path before it is built", kLengthDetails, kJoinOptions, 1, 2,
     runLength},
};

}  // namespace

std::span<const Command> uncCommands() {
    return kCommands;
}

}  // namespace tamrix::client
