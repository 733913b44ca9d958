// What the dialogs decide without a window: fonts, the mapping editor's lines and what it saves, and the paths and
// filters of the file dialog.
#pragma once

#include <map>

#include "code_pages.h"
#include "dialogs/browse_paths.h"
#include "dialogs/font_choice.h"
#include "dialogs/mapping_changes.h"
#include "extmap/extension_key.h"
#include "properties/property.h"

namespace properties {

inline std::string u16(unsigned value) {
    return {static_cast<char>(value), static_cast<char>(value >> 8)};
}

/// A string, its bytes in the low or the high half of the units.
inline std::string wide(const std::string& text, int shift = 0) {
    std::string units;
    for (const char letter : text) units += u16(static_cast<unsigned>(static_cast<unsigned char>(letter) << shift));
    return units + u16(0);
}

inline tamrix::TemplateBytes bytesOf(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// A configured font with a size replaces every font. Otherwise templates keep their font, unless it is the one with
/// which dialogs were designed.
inline void holdFontChoice(Input& input) {
    const std::string faces[] = {"", "MS Sans Serif", "ms sans serif", "MS Sans Serif X"};
    const std::uint32_t sizes[] = {8, 65544, 65536, 0};
    const std::string carried = input.oneOf(faces), units = carried.empty() ? "" : wide(carried);
    const std::uint32_t size = input.oneOf(sizes), points = input.oneOf(sizes);
    const char* const configured = input.byte() % 2 ? "Arial" : nullptr;
    const tamrix::DialogTemplate dialog{.face = bytesOf(units), .pointSize = static_cast<std::uint16_t>(points)};
    const auto [font, mayAdjustSize] = tamrix::chooseFont(configured, size, dialog, {"Tahoma", 9});
    const bool isOwn = !carried.empty() && (carried != "MS Sans Serif" || points % 65536 != 8);
    const std::string face = configured && size ? "Arial" : isOwn ? "" : "Tahoma";
    require(face == (font.face ? font.face : "") && mayAdjustSize == !face.empty(), "the face");
    require(face.empty() || font.points == (face == "Arial" ? size % 65536 : 9), "the points");
}

inline void holdScaling(Input& input) {
    const std::int32_t metrics[] = {6, 7, 13, 20, 0, 1, 0x7FFFFFFF};
    const std::int16_t sides[] = {310, 108, -101, 32767, 30000};
    const tamrix::FontMetrics made{input.oneOf(metrics), input.oneOf(metrics)};
    const tamrix::FontMetrics reference{input.oneOf(metrics), input.oneOf(metrics)};
    const std::int64_t side = input.oneOf(sides), width = made.averageWidth + std::int64_t{1};  // a pixel is added
    const bool isMeasured = reference.averageWidth && reference.height;
    const auto scaled = tamrix::adjustedSize({std::int16_t(side), std::int16_t(side)}, made, reference);
    require(scaled.cx == std::int16_t(isMeasured ? side * width / reference.averageWidth : side), "a width");
    require(scaled.cy == std::int16_t(isMeasured ? side * made.height / reference.height : side), "a height");
}

inline void holdMappingLine(const std::string& extension, const std::string& comment, bool hasComment) {
    tamrix::OwnedText line = tamrix::joinedLine(extension.c_str(), hasComment ? comment.c_str() : nullptr);
    const std::string joined = extension + (hasComment ? "\t" + comment : "");
    require(line.get() == joined, "a joined line");
    const tamrix::MappingLine mapping = tamrix::splitLine(std::move(line));
    const std::string first = joined.substr(0, joined.find('\t')), kept = joined.substr(first.size());
    require(mapping.extension == first, "the extension of a line");
    require(mapping.comment ? kept.size() > 1 && kept.substr(1) == mapping.comment : kept.size() < 2, "its comment");
    const auto length = static_cast<int>(extension.size());
    require(tamrix::isAcceptedLength(length) == (length > 0 && length < 16), "the length of an extension");
    const bool fits = length <= 4 && comment.size() <= 4;
    require(tamrix::canBeStored(extension.c_str(), comment.c_str()) == fits, "the lengths of codes");
}

/// Lines of which some have the same key: the case of their extensions differs, or the dot is missing.
inline std::vector<tamrix::KeyedLine> drawnLines(Input& input) {
    const std::string names[] = {".a", "A", ".b", "B", ".\xE4", ".\xC4"}, keys[] = {".A", ".B", ".\xC4"};
    const std::string comments[] = {"", "\t", "\tx", "\ty\tx"};
    std::vector<tamrix::KeyedLine> lines(input.byte() % 5);
    for (tamrix::KeyedLine& line : lines) {
        const std::size_t name = input.byte() % 6;
        const std::string text = names[name] + input.oneOf(comments);
        line = tamrix::keyedLine(tamrix::copiedText(text.c_str()), tamrix::foldKeyName);
        require(line.line.get() == text && line.key.get() == keys[name / 2], "a line and its key");
    }
    return lines;
}

/// Of the lines with the same key only the last is written, and only if it has changed.
inline void holdMappingChanges(Input& input) {
    std::vector<tamrix::KeyedLine> listed = drawnLines(input);
    const std::vector<tamrix::KeyedLine> lines = drawnLines(input);
    std::map<std::string, std::string> stored;
    std::erase_if(listed, [&](const auto& line) { return !stored.emplace(line.key.get(), line.line.get()).second; });
    std::map<std::string, std::size_t> last;
    for (std::size_t i = 0; i < lines.size(); ++i) last[lines[i].key.get()] = i;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string key = lines[i].key.get();
        const bool expected = last[key] == i && stored[key] != lines[i].line.get();
        require(tamrix::isToBeWritten(lines, i, listed) == expected, "whether a line is written");
    }
    for (const tamrix::KeyedLine& line : listed)
        require(tamrix::isToBeRemoved(line, lines) == !last.count(line.key.get()), "whether a mapping is removed");
}

/// An initial path is split at its last backslash; a chosen path loses the placeholder after it.
inline void holdPath(Input& input, const tamrix::LeadByteTable& leads) {
    const char* const pieces[] = {"{s}", "\\", "D:", "\x95", "{S}"};
    std::string path;
    for (int count = input.byte() % 6; count > 0; --count) path += input.oneOf(pieces);
    const std::size_t backslash = withoutDoubles(leads, path).rfind('\\');
    const bool found = backslash != std::string::npos;
    const std::string name = path.substr(backslash + 1);
    const Exact split(path), cut(path);
    const char* const given = tamrix::splitInitialPath(split, leads);
    require(found ? given == name : !given, "the name after the last backslash");
    require(static_cast<char*>(split) == path.substr(0, found ? backslash : 0), "the folder before it");
    tamrix::cutPlaceholder(cut, "{s}", leads);
    const std::size_t left = found && name == "{s}" ? backslash + (backslash == 2) : path.size();
    require(static_cast<char*>(cut) == path.substr(0, left), "a path without its placeholder");
}

/// A list of filters ends within its buffer of 8 bytes, at a character boundary, with two zeros. Bars after the
/// filter's own first zero are not replaced.
inline void holdFilter(Input& input, const tamrix::LeadByteTable& leads) {
    const char bytes[] = "|a|\x83";  // or zero
    std::string filter, list;
    while (filter.size() < 7) filter += input.oneOf(bytes);
    for (std::size_t at = 0; at < 6; at = list.size()) {
        const std::size_t size = leads.leads(filter[at]) && filter[at + 1] ? 2 : 1;
        if (at + size > 6) break;
        const bool isBar = filter[at] == '|' && filter.find('\0') > at;
        list += isBar ? std::string(1, '\0') : filter.substr(at, size);
    }
    list.resize(8);
    const Exact buffer(filter);
    tamrix::splitFilter(buffer, 8, leads);
    require(buffer.bytes() == list, "a list of filters");
}

inline void holdPlainDialogs(Input input) {
    const tamrix::LeadByteTable leads = input.leadBytes();
    holdPath(input, leads);
    holdFilter(input, leads);
    holdMappingChanges(input);
    holdFontChoice(input);
    holdScaling(input);
    const std::string extension = input.text(17), comment = input.text(6);
    testing_support::useCodePage(input.byte() % 2 ? 932 : 1252);  // half a character is a byte of a code
    holdMappingLine(extension, comment, input.byte() % 2);
    testing_support::useCodePage(1252);
}

}  // namespace properties
