#include "dialogs/mapping_lines.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <new>
#include <string_view>
#include <utility>

#include "extmap/store_layout.h"

namespace tamrix {
namespace {

constexpr int kMaxTypedExtension = 15;

OwnedText joined(std::string_view first, std::string_view second, std::string_view third) {
    OwnedText text(new (std::nothrow) char[first.size() + second.size() + third.size() + 1]);
    if (!text) return text;
    char* end = text.get();
    for (const std::string_view part : {first, second, third}) end = std::ranges::copy(part, end).out;
    *end = '\0';
    return text;
}

}  // namespace

OwnedText joinedLine(const char* extension, const char* comment) {
    return comment ? joined(extension, "\t", comment) : copiedText(extension);
}

OwnedText copiedText(const char* text) {
    return joined(text, "", "");
}

bool isAcceptedLength(int length) {
    return length >= 1 && length <= kMaxTypedExtension;
}

MappingLine splitLine(OwnedText line) {
    MappingLine mapping;
    mapping.text = std::move(line);
    mapping.extension = mapping.text.get();
    char* const tab = mapping.extension ? std::strchr(mapping.extension, '\t') : nullptr;
    if (!tab) return mapping;
    *tab = '\0';
    if (tab[1]) mapping.comment = tab + 1;
    return mapping;
}

bool canBeStored(const char* creator, const char* type) {
    // Codes are bytes, not characters: a lone lead byte at the end counts as one.
    return std::strlen(creator) <= kCodeLength && std::strlen(type) <= kCodeLength;
}

}  // namespace tamrix
