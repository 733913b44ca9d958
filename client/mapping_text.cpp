#include "client/mapping_text.h"

#include "client/command.h"
#include "client/mapping_store.h"
#include "tamrix32/strings.h"

namespace tamrix::client {

bool takeExtension(const std::string& argument, std::string& extension) {
    if (!bytesFromText(Side::windows, argument, extension)) {
        complain(argument, "not text of this code page");
        return false;
    }
    if (!extension.starts_with('.')) extension.insert(extension.begin(), '.');
    const bool isGood = extension.size() > 1 && !dbcs_strchr(extension.c_str(), '\\');
    if (!isGood) complain(argument, "not an extension: it is empty or holds a backslash");
    return isGood;
}

bool takeCode(const std::string& argument, std::string& code) {
    if (!bytesFromText(Side::mac, argument, code)) {
        complain(argument, "not text in Mac Roman");
        return false;
    }
    const bool isGood = code.size() == 4;
    if (!isGood) complain(argument, "a code has 4 bytes, not " + std::to_string(code.size()));
    return isGood;
}

std::string reasonOf(const Refusal& refusal) {
    if (refusal.extension.empty()) return "";
    std::string reason = shown(Side::windows, refusal.extension) + ": the registry refuses the mapping";
    if (refusal.notUndone.empty()) return reason + "; nothing has changed";
    reason += "; what was stored could not be put back for";
    for (const std::string& extension : refusal.notUndone) reason += " " + shown(Side::windows, extension);
    return reason;
}

std::vector<Mapping> mappingsToShow(int& status) {
    std::vector<Mapping> mappings;
    if (allMappings(mappings)) return mappings;
    complain("", "other programs are changing the mappings: some may be missing");
    status = kSomeFailed;
    return mappings;
}

void printMapping(const Mapping& mapping) {
    std::string line = shown(Side::windows, mapping.extension) + "\t" + shown(Side::mac, mapping.type) + "\t" +
                       shown(Side::mac, mapping.creator);
    if (mapping.comment) line += "\t" + shown(Side::windows, *mapping.comment);
    print(line + "\n");
}

void writeMapping(Json& json, const Mapping& mapping) {
    json.bytes("extension", Side::windows, mapping.extension);
    json.bytes("type", Side::mac, mapping.type);
    json.bytes("creator", Side::mac, mapping.creator);
    json.bytes("comment", Side::windows, mapping.comment.value_or(""));
}

}  // namespace tamrix::client
