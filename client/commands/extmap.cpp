// tamrix extmap: which Macintosh type and creator belong to a file-name extension.
#include "client/command.h"
#include "client/mapping_store.h"
#include "client/mapping_text.h"
#include "client/system/encodings.h"
#include "client/system/startup.h"

namespace tamrix::client {
namespace {

constexpr Option kListOptions[] = {
    {"--type", "T", "only mappings to this type"}, {"--creator", "C", "only mappings to this creator"}, kJsonOption};
constexpr Option kJsonOnly[] = {kJsonOption};

/// The status of a command that has changed mappings.
int kept() {
    std::string reason;
    if (keepMappings(reason)) return kDone;
    complain("", reason);
    return kUsageError;
}

int runList(const Arguments& arguments) {
    std::string type, creator;
    const char* wantedType = arguments.value("--type");
    const char* wantedCreator = arguments.value("--creator");
    if (wantedType && !takeCode(wantedType, type)) return kUsageError;
    if (wantedCreator && !takeCode(wantedCreator, creator)) return kUsageError;
    const bool asJson = arguments.has("--json");
    Json json;
    if (asJson) json.beginArray();
    int status = kDone;
    for (const Mapping& mapping : mappingsToShow(status)) {
        if ((wantedType && mapping.type != type) || (wantedCreator && mapping.creator != creator)) continue;
        if (!asJson) {
            printMapping(mapping);
            continue;
        }
        json.beginObject();
        writeMapping(json, mapping);
        json.endObject();
    }
    if (asJson) {
        json.endArray();
        json.finish();
    }
    return status;
}

int printOne(const Arguments& arguments, const Mapping& mapping) {
    if (!arguments.has("--json")) {
        printMapping(mapping);
        return kDone;
    }
    Json json;
    json.beginObject();
    writeMapping(json, mapping);
    json.endObject();
    json.finish();
    return kDone;
}

int runGet(const Arguments& arguments) {
    const std::string& operand = arguments.operands()[0];
    std::string extension;
    Mapping mapping;
    if (!takeExtension(operand, extension)) return kUsageError;
    if (findMapping(extension, mapping)) return printOne(arguments, mapping);
    complain(operand, "has no mapping");
    return kSomeFailed;
}

int runSet(const Arguments& arguments) {
    const auto& operands = arguments.operands();
    Mapping mapping;
    if (!takeExtension(operands[0], mapping.extension) || !takeCode(operands[1], mapping.type) ||
        !takeCode(operands[2], mapping.creator))
        return kUsageError;
    if (mapping.extension.size() > 16) {
        complain(operands[0], "an extension has at most 15 bytes");
        return kUsageError;
    }
    if (operands.size() > 3) {
        mapping.comment.emplace();
        if (!bytesFromText(Side::windows, argumentText(operands[3]), *mapping.comment)) {
            complain(operands[3], "not text of this code page");
            return kUsageError;
        }
    } else if (Mapping old; findMapping(mapping.extension, old)) {
        mapping.comment = old.comment;
    }
    const std::string reason = reasonOf(applyChanges(changesFor({mapping})));
    if (reason.empty()) return kept();
    complain("", reason);
    return kUsageError;
}

int runRemove(const Arguments& arguments) {
    std::vector<std::string> extensions;
    for (const std::string& operand : arguments.operands())
        if (!takeExtension(operand, extensions.emplace_back())) return kUsageError;
    int status = kDone;
    Mapping mapping;
    for (std::size_t i = 0; i < extensions.size(); ++i) {
        if (!findMapping(extensions[i], mapping)) {
            complain(arguments.operands()[i], "has no mapping");
            status = kSomeFailed;
            continue;
        }
        removeMapping(extensions[i]);
        if (!findMapping(extensions[i], mapping)) continue;
        complain(arguments.operands()[i], "the registry refuses to remove the mapping");
        status = kSomeFailed;
    }
    const int keeping = kept();
    return keeping == kDone ? status : keeping;
}

int runDefault(const Arguments& arguments) {
    const Mapping codes = defaultMapping();
    if (!arguments.has("--json")) {
        print(shown(Side::mac, codes.type) + "\t" + shown(Side::mac, codes.creator) + "\n");
        return kDone;
    }
    Json json;
    json.beginObject();
    json.bytes("type", Side::mac, codes.type);
    json.bytes("creator", Side::mac, codes.creator);
    json.endObject();
    json.finish();
    return kDone;
}

constexpr char kLineDetails[] = "Prints extension, type, creator and comment with tabs between them.\n";
constexpr char kSetDetails[] =
    "Codes have 4 bytes. Without COMMENT, a comment that is there stays; an empty one takes it away.\n";

constexpr Command kCommands[] = {
    {"extmap list", "", "list the mappings", kLineDetails, kListOptions, 0, 0, runList},
    {"extmap get", "EXTENSION", "print the mapping of an extension", kLineDetails, kJsonOnly, 1, 1, runGet},
    {"extmap set", "EXTENSION TYPE CREATOR [COMMENT]", "map an extension", kSetDetails, {}, 3, 4, runSet, true},
    {"extmap remove", "EXTENSION...", "remove mappings", "", {}, 1, -1, runRemove, true},
    {"extmap default", "", "print the codes of extensions without a mapping", "", kJsonOnly, 0, 0, runDefault},
};

}  // namespace

std::span<const Command> extmapCommands() {
    return kCommands;
}

}  // namespace tamrix::client
