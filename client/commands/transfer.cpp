// tamrix extmap export and import: writes and reads all mappings as a text file.
#include "client/command.h"
#include "client/mapping_file.h"
#include "client/mapping_text.h"
#include "client/output.h"
#include "client/read_file.h"
#include "client/system/startup.h"
#include "client/system/whole_file.h"

namespace tamrix::client {
namespace {

constexpr Option kImportOptions[] = {{.name = "--dry-run", .help = "only print what would change"}, kJsonOption};

/// No real mapping file is as large as this.
constexpr std::size_t kMaxSize = 16 << 20;

int runExport(const Arguments& arguments) {
    int status = kDone;
    const std::string text = writeMappings(mappingsToShow(status));
    if (arguments.operands().empty() || arguments.operands()[0] == "-") {
        printBytes(text);
        return status;
    }
    std::string reason;
    if (writeWholeFile(arguments.operands()[0], text, reason)) return status;
    complain(arguments.operands()[0], reason);
    return kUsageError;
}

void printChanges(const std::vector<Change>& changes) {
    for (const Change& change : changes) {
        print(change.isNew ? "add\t" : "change\t");
        printMapping(change.wanted);
    }
}

void writeChanges(const std::vector<Change>& changes) {
    Json json;
    const JsonArray array(json, true);
    for (const Change& change : changes) {
        const JsonObject object(json);
        json.ascii("change", change.isNew ? "add" : "change");
        writeMapping(json, change.wanted);
    }
}

int runImport(const Arguments& arguments) {
    const std::string& name = arguments.operands()[0];
    std::string text, reason;
    if (name == "-" ? !readAll(stdin, kMaxSize, text, reason) : !readFile(name, kMaxSize, text, reason)) {
        complain(name, reason);
        return kUsageError;
    }
    MappingFile file = parseMappings(text);
    if (file.error) {
        complain(name + ":" + std::to_string(file.error->line), file.error->message);
        return kUsageError;
    }
    const std::vector<Change> changes = changesFor(std::move(file.mappings));
    if (!arguments.has("--dry-run")) {
        reason = reasonOf(applyChanges(changes));
        if (reason.empty() && !changes.empty() && !saveMappings(reason)) reason += "; nothing has changed";
        if (!reason.empty()) {
            complain(name, reason);
            return kUsageError;
        }
    }
    if (arguments.has("--json"))
        writeChanges(changes);
    else
        printChanges(changes);
    return kDone;
}

constexpr char kExportDetails[] =
    "Writes one line per mapping: extension, type, creator and comment, separated by tabs and quoted where needed.\n"
    "Without FILE, or with -, writes to standard output. An existing file is replaced only when the new one is\n"
    "complete.\n";
constexpr char kImportDetails[] =
    "Reads what extmap export writes (- is standard input) and prints what changed. Mappings that FILE lacks are\n"
    "kept. If a line has an error, its number is reported and nothing is imported.\n";

constexpr Command kCommands[] = {
    {.name = "extmap export",
     .operands = "[FILE]",
     .summary = "write all mappings to a text file",
     .details = kExportDetails,
     .maxOperands = 1,
     .run = runExport,
     .example = "extmap export map.txt"},
    {.name = "extmap import",
     .operands = "FILE",
     .summary = "add and change mappings from a text file",
     .details = kImportDetails,
     .options = kImportOptions,
     .minOperands = 1,
     .maxOperands = 1,
     .run = runImport,
     .changesMappings = true,
     .example = "extmap import --dry-run map.txt"},
};

}  // namespace

std::span<const Command> transferCommands() {
    return kCommands;
}

}  // namespace tamrix::client
