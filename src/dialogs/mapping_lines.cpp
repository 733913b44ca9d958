#include "dialogs/mapping_lines.h"

#include <cstring>
#include <initializer_list>
#include <new>

#include "extmap/store_layout.h"
#include "tamrix32/strings.h"

namespace tamrix {
namespace {

constexpr int kLongestTypedExtension = 15;

/// Three strings in one; null parts are empty.
OwnedText joined(const char* first, const char* second, const char* third) {
    const int length = dbcs_strlen(first) + dbcs_strlen(second) + dbcs_strlen(third);
    OwnedText text(new (std::nothrow) char[static_cast<std::size_t>(length) + 1]);
    if (!text) return text;
    text[0] = '\0';
    for (const char* part : {first, second, third}) dbcs_strcat(text.get(), part);
    return text;
}

}  // namespace

OwnedText joinedLine(const char* extension, const char* comment) {
    return joined(extension, comment ? "\t" : "", comment);
}

OwnedText dottedExtension(const char* typed) {
    return joined(typed[0] == '.' ? "" : ".", typed, "");
}

OwnedText copiedText(const char* text) {
    return joined(text, "", "");
}

bool isAcceptedLength(int length) {
    return length >= 1 && length <= kLongestTypedExtension;
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
    // Codes are bytes: half a character counts, too.
    return std::strlen(creator) <= kCodeLength && std::strlen(type) <= kCodeLength;
}

}  // namespace tamrix
