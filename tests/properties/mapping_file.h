// A mapping file is read as a model made of regular expressions reads it. What was read is written as printable ASCII,
// which reads back unchanged.
#pragma once

#include <standin.h>

#include <regex>
#include <sstream>

#include "client/mapping_file.h"
#include "entry/entry.h"
#include "properties/property.h"
#include "tamrix32/registry.h"
#include "tamrix32/strings.h"

namespace properties {

using tamrix::client::Mapping;

inline std::string unquoted(const std::string& field) {
    if (!field.starts_with('"')) return field;
    std::string bytes;
    for (std::size_t at = 1; at + 1 < field.size(); ++at) {
        const std::size_t letter = field[at] == '\\' ? std::string("tnrx").find(field[++at]) : std::string::npos;
        bytes += letter == std::string::npos ? field[at] : "\t\n\rx"[letter];
        if (letter != 3) continue;
        bytes.back() = static_cast<char>(std::stoi(field.substr(at + 1, 2), nullptr, 16));
        at += 2;
    }
    return bytes;
}

/// The mapping of one line; without an extension where the line is bad.
inline Mapping mappingOf(const std::string& line) {
    const std::string field = R"-(("(?:[^"\\]|\\[\\"tnr]|\\x[0-9A-Fa-f][0-9A-Fa-f])*"|[^"\t][^\t]*|))-";
    static const std::regex fields(field + '\t' + field + '\t' + field + "(?:\t" + field + ")?");
    std::smatch found;
    if (!std::regex_match(line, found, fields)) return {};
    Mapping mapping{unquoted(found[1]), unquoted(found[2]), unquoted(found[3]), std::nullopt};
    if (found[4].matched) mapping.comment = unquoted(found[4]);
    if (!mapping.extension.starts_with('.')) mapping.extension.insert(0, 1, '.');
    const std::string all = mapping.extension + mapping.type + mapping.creator + mapping.comment.value_or("");
    const int end = static_cast<int>(mapping.extension.size());
    const bool isGood = all.find('\0') == std::string::npos && mapping.type.size() == 4 &&
                        mapping.creator.size() == 4 && end > 1 && end <= 16 &&
                        MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, mapping.extension.data(), end, nullptr, 0) &&
                        !dbcs_strchr(mapping.extension.c_str(), '\\');
    return isGood ? mapping : Mapping{};
}

inline void property(Input& input) {
    standin::clearRegistry();
    require(standin::setCodePages(input.byte() % 2 ? 932 : 1252, 437), "setCodePages");
    tamrix::loadProcess();
    const std::string text = input.restBytes().substr(0, 300);
    const bool hasMark = text.starts_with("\xEF\xBB\xBF");
    std::istringstream lines(text.substr(hasMark ? 3 : 0));
    std::vector<Mapping> mappings;
    std::size_t blamed = 0, number = 1;
    for (std::string line; std::getline(lines, line); ++number) {
        if (line.ends_with('\r')) line.pop_back();
        if (line.empty() || line[0] == '#') continue;
        const bool isOdd = hasMark && std::regex_search(line, std::regex("[^\\x01-\\x7F]"));
        mappings.push_back(isOdd ? Mapping{} : mappingOf(line));
        const char* name = mappings.back().extension.c_str();
        // The registry says which extensions are the same: each has a key from its first line on.
        RegKey key;
        if (!*name || (!blamed && (key.Open(HKEY_CLASSES_ROOT, name) || !key.Create(HKEY_CLASSES_ROOT, name))))
            blamed = number;
        if (!*name) break;
    }
    const tamrix::client::MappingFile file = tamrix::client::parseMappings(text);
    require((file.error ? file.error->line : 0) == blamed, "line " + std::to_string(blamed) + " is not blamed");
    require(file.mappings == (blamed ? std::vector<Mapping>() : mappings), "other mappings");
    const std::string written = tamrix::client::writeMappings(file.mappings);
    static const std::regex ascii(
        R"-((?:(?:[!$-~][!#-~]*|"(?:[ !#-[\]-~]|\\[\\"tnr]|\\x[0178-9A-F][0-9A-F])*")[\t\n])*)-");
    require(std::regex_match(written, ascii), "writes odd text: " + written);
    require(tamrix::client::parseMappings(written).mappings == file.mappings, "does not come back");
}

}  // namespace properties
