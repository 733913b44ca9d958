#include "client/mapping_text.h"

#include "client/command.h"
#include "client/mapping_store.h"
#include "client/output.h"
#include "tamrix32/strings.h"

namespace tamrix::client {

bool takeExtension(const std::string& argument, std::string& extension) {
    if (!bytesFromText(Side::windows, argument, extension)) {
        complain(argument, whyNotBytes(Side::windows));
        return false;
    }
    addDot(extension);
    const bool isGood = extension.size() > 1 && !dbcs_strchr(extension.c_str(), '\\');
    if (!isGood) complain(argument, "not an extension: empty or contains a backslash");
    return isGood;
}

bool takeCode(const std::string& argument, std::string& code) {
    if (!bytesFromText(Side::mac, argument, code)) {
        complain(argument, whyNotBytes(Side::mac));
        return false;
    }
    const bool isGood = code.size() == 4;
    if (!isGood) complain(argument, "a code must have 4 bytes, not " + std::to_string(code.size()));
    return isGood;
}

std::string reasonOf(const Refusal& refusal) {
    if (refusal.extension.empty()) return "";
    std::string reason = shown(Side::windows, refusal.extension) + ": cannot store the mapping";
    if (refusal.notUndone.empty()) return reason + "; nothing has changed";
    reason += "; cannot restore the former values of";
    for (const std::string& extension : refusal.notUndone) reason += " " + shown(Side::windows, extension);
    return reason;
}

std::vector<Mapping> mappingsToShow(int& status) {
    std::vector<Mapping> mappings;
    if (allMappings(mappings)) return mappings;
    complain("", "other programs are changing the mappings; some may be missing here");
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
