// tamrix extmap: the Macintosh types and creators of file-name extensions.
#include "client/command.h"
#include "client/mapping_store.h"
#include "client/mapping_text.h"
#include "client/output.h"
#include "client/system/startup.h"

namespace tamrix::client {
namespace {

constexpr Option kListOptions[] = {{.name = "--type", .value = "T", .help = "only mappings to this type"},
                                   {.name = "--creator", .value = "C", .help = "only mappings to this creator"},
                                   kJsonOption};
constexpr Option kJsonOnly[] = {kJsonOption};

/// Saves the changes. Returns the exit status.
int saveChanges() {
    std::string reason;
    if (saveMappings(reason)) return kDone;
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
    const JsonArray array(json, asJson);
    int status = kDone;
    for (const Mapping& mapping : mappingsToShow(status)) {
        if ((wantedType && mapping.type != type) || (wantedCreator && mapping.creator != creator)) continue;
        if (!asJson) {
            printMapping(mapping);
            continue;
        }
        const JsonObject object(json);
        writeMapping(json, mapping);
    }
    return status;
}

int printOne(const Arguments& arguments, const Mapping& mapping) {
    if (!arguments.has("--json")) {
        printMapping(mapping);
        return kDone;
    }
    Json json;
    const JsonObject object(json);
    writeMapping(json, mapping);
    return kDone;
}

int runGet(const Arguments& arguments) {
    const std::string& operand = arguments.operands()[0];
    std::string extension;
    Mapping mapping;
    if (!takeExtension(operand, extension)) return kUsageError;
    if (findMapping(extension, mapping)) return printOne(arguments, mapping);
    complain(operand, "no mapping");
    return kSomeFailed;
}

int runSet(const Arguments& arguments) {
    const auto& operands = arguments.operands();
    Mapping mapping;
    if (!takeExtension(operands[0], mapping.extension) || !takeCode(operands[1], mapping.type) ||
        !takeCode(operands[2], mapping.creator))
        return kUsageError;
    if (mapping.extension.size() > 1 + kMaxExtensionSize) {
        complain(operands[0], "the extension is longer than 15 bytes");
        return kUsageError;
    }
    if (operands.size() > 3) {
        mapping.comment.emplace();
        if (!bytesFromText(Side::windows, operands[3], *mapping.comment)) {
            complain(operands[3], whyNotBytes(Side::windows));
            return kUsageError;
        }
    } else if (Mapping old; findMapping(mapping.extension, old)) {
        mapping.comment = old.comment;
    }
    const std::string reason = reasonOf(applyChanges(changesFor({mapping})));
    if (reason.empty()) return saveChanges();
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
            complain(arguments.operands()[i], "no mapping");
            status = kSomeFailed;
            continue;
        }
        removeMapping(extensions[i]);
        if (!findMapping(extensions[i], mapping)) continue;
        complain(arguments.operands()[i], "cannot remove the mapping");
        status = kSomeFailed;
    }
    const int saved = saveChanges();
    return saved == kDone ? status : saved;
}

int runDefault(const Arguments& arguments) {
    const Mapping codes = defaultMapping();
    if (!arguments.has("--json")) {
        print(shown(Side::mac, codes.type) + "\t" + shown(Side::mac, codes.creator) + "\n");
        return kDone;
    }
    Json json;
    const JsonObject object(json);
    json.bytes("type", Side::mac, codes.type);
    json.bytes("creator", Side::mac, codes.creator);
    return kDone;
}

constexpr char kLineDetails[] = "Prints extension, type, creator and comment, separated by tabs.\n";
constexpr char kSetDetails[] =
    "Codes have 4 bytes. Without COMMENT, an existing comment is kept; an empty COMMENT removes it.\n";

constexpr Command kCommands[] = {
    {.name = "extmap list",
     .summary = "list the mappings",
     .details = kLineDetails,
     .options = kListOptions,
     .run = runList,
     .example = "extmap list --type TEXT"},
    {.name = "extmap get",
     .operands = "EXTENSION",
     .summary = "print the mapping of an extension",
     .details = kLineDetails,
     .options = kJsonOnly,
     .minOperands = 1,
     .maxOperands = 1,
     .run = runGet,
     .example = "extmap get txt"},
    {.name = "extmap set",
     .operands = "EXTENSION TYPE CREATOR [COMMENT]",
     .summary = "map an extension",
     .details = kSetDetails,
     .minOperands = 3,
     .maxOperands = 4,
     .run = runSet,
     .changesMappings = true,
     .example = "extmap set txt TEXT ttxt 'Plain text'"},
    {.name = "extmap remove",
     .operands = "EXTENSION...",
     .summary = "remove mappings",
     .minOperands = 1,
     .maxOperands = -1,
     .run = runRemove,
     .changesMappings = true,
     .example = "extmap remove txt hqx"},
    {.name = "extmap default",
     .summary = "print the type and creator of extensions without a mapping",
     .details = "Prints type and creator, separated by a tab.\n",
     .options = kJsonOnly,
     .run = runDefault,
     .example = "extmap default"},
};

}  // namespace

std::span<const Command> extmapCommands() {
    return kCommands;
}

}  // namespace tamrix::client
