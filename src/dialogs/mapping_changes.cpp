#include "dialogs/mapping_changes.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "extmap/extension_key.h"

namespace tamrix {
namespace {

bool nameSameKey(const KeyedLine& a, const KeyedLine& b) {
    return std::strcmp(a.key.get(), b.key.get()) == 0;
}

}  // namespace

KeyedLine keyedLine(OwnedText line, NameFolding fold) {
    KeyedLine keyed;
    MappingLine name = splitLine(line ? copiedText(line.get()) : nullptr);
    if (!name.extension) return keyed;
    keyed.line = std::move(line);
    OwnedText key = dottedExtension(name.extension);
    if (key && fold(key.get())) keyed.key = std::move(key);
    return keyed;
}

bool isToBeWritten(std::span<const KeyedLine> lines, std::size_t index, std::span<const KeyedLine> listed) {
    const KeyedLine& line = lines[index];
    const auto isLine = [&](const KeyedLine& other) { return std::strcmp(other.line.get(), line.line.get()) == 0; };
    const auto namesItsKey = [&](const KeyedLine& other) { return nameSameKey(other, line); };
    return std::ranges::none_of(lines.subspan(index + 1), namesItsKey) && std::ranges::none_of(listed, isLine);
}

bool isToBeRemoved(const KeyedLine& wasListed, std::span<const KeyedLine> lines) {
    return std::ranges::none_of(lines, [&](const KeyedLine& line) { return nameSameKey(line, wasListed); });
}

}  // namespace tamrix
