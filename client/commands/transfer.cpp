// tamrix extmap export and import: all mappings as a text file.
#include <stdio.h>

#include "client/command.h"
#include "client/mapping_text.h"
#include "client/system/open_file.h"
#include "client/system/startup.h"
#include "client/system/whole_file.h"

namespace tamrix::client {
namespace {

constexpr Option kImportOptions[] = {{"--dry-run", nullptr, "only say what would change"}, kJsonOption};

/// Far more than there are extensions. Devices may have no end.
constexpr std::size_t kMostBytes = 16 << 20;

/// Why the file could not be read; empty when it could.
std::string readAll(FILE* file, std::string& text) {
    char block[2048];
    while (const std::size_t size = fread(block, 1, sizeof block, file)) {
        text.append(block, size);
        if (text.size() > kMostBytes) return "the file is larger than 16 MB";
    }
    return ferror(file) ? "the file cannot be read" : "";
}

std::string readFile(const std::string& name, std::string& text) {
    if (name == "-") return readAll(stdin, text);
    std::string reason;
    FILE* file = openToRead(name, reason);
    if (!file) return "the file cannot be read: " + reason;
    reason = readAll(file, text);
    fclose(file);
    return reason;
}

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
    std::string text;
    std::string reason = readFile(name, text);
    if (!reason.empty()) {
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
        if (reason.empty() && !changes.empty() && !keepMappings(reason)) reason += "; nothing has changed";
        if (!reason.empty()) {
            complain(name, reason);
            return kUsageError;
        }
    }
    arguments.has("--json") ? writeChanges(changes) : printChanges(changes);
    return kDone;
}

constexpr char kExportDetails[] =
    "Writes a line for each mapping: extension, type, creator and comment, separated by tabs and quoted where needed.\n"
    "Without FILE, or with -, it is printed. A file that is there is replaced once the new one is whole.\n";
constexpr char kImportDetails[] =
    "Takes what export writes (- is standard input). Mappings that are not in FILE stay. A bad line is named with its\n"
    "number, and nothing is imported then. Prints what changed.\n";

constexpr Command kCommands[] = {
    {.name = "extmap export",
     .operands = "[FILE]",
     .summary = "write all mappings as text",
     .details = kExportDetails,
     .options = {},
     .fewest = 0,
     .most = 1,
     .run = runExport,
     .example = "extmap export map.txt"},
    {.name = "extmap import",
     .operands = "FILE",
     .summary = "add and change mappings from text",
     .details = kImportDetails,
     .options = kImportOptions,
     .fewest = 1,
     .most = 1,
     .run = runImport,
     .changesMappings = true,
     .example = "extmap import --dry-run map.txt"},
};

}  // namespace

std::span<const Command> transferCommands() {
    return kCommands;
}

}  // namespace tamrix::client
