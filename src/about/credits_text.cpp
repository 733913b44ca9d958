#include "about/credits_text.h"

#include <algorithm>

#include "tamrix32/version.h"

namespace tamrix {
namespace {

constexpr char kCarriageReturn = '\r';
constexpr char kLineFeed = '\n';
constexpr std::string_view kVersion = TAMRIX32_VERSION;
constexpr std::string_view kYears = "1995-97";

struct Marker {
    char character;
    CreditsFont font;
    bool MarkedFonts::*created;
};

constexpr Marker kMarkers[] = {
    {'*', CreditsFont::bold, &MarkedFonts::bold},
    {'/', CreditsFont::italic, &MarkedFonts::italic},
    {'_', CreditsFont::underlined, &MarkedFonts::underlined},
};

/// Size in bytes of the character at `position`, which must be in `text`; 1 for a lead byte at the end.
std::size_t characterSize(std::span<const char> text, std::size_t position, const LeadByteTable& leadBytes) {
    return leadBytes.leads(text[position]) && position + 1 < text.size() ? 2 : 1;
}

struct Replacement {
    std::string_view text;
    std::size_t replaced;  // number of bytes of the line that it replaces
};

Replacement replacementFor(std::string_view fromPercent) {
    switch (fromPercent.size() > 1 ? fromPercent[1] : '\0') {
        case 'v':
            return {kVersion, 2};
        case 'y':
            return {kYears, 2};
        case '%':
            return {"%", 2};
        default:
            return {" ", 1};
    }
}

}  // namespace

std::int32_t compactCredits(std::span<char> text, const LeadByteTable& leadBytes) {
    std::int32_t lineCount = 1;
    if (text.empty()) return lineCount;
    const std::size_t end = text.size() - 1;
    std::size_t to = 0;
    for (std::size_t from = 0; from < end && text[from];) {
        if (leadBytes.leads(text[from])) {
            if (from + 1 >= end || !text[from + 1]) break;
            text[to++] = text[from++];
            text[to++] = text[from++];
            continue;
        }
        if (text[from] == kCarriageReturn) ++lineCount;
        if (text[from] != kLineFeed) text[to++] = text[from];
        ++from;
    }
    text[to] = '\0';
    return lineCount;
}

void splitCredits(std::span<char> text, const LeadByteTable& leadBytes, std::span<AboutLine> lines) {
    std::size_t position = 0;
    for (AboutLine& line : lines) {
        const std::size_t start = position;
        while (text[position] && text[position] != kCarriageReturn)
            position += characterSize(text, position, leadBytes);
        line = {static_cast<std::uint32_t>(start), static_cast<std::int32_t>(position - start)};
        text[position++] = '\0';
    }
}

MarkedLine takeMarker(std::string_view line, MarkedFonts fonts) {
    for (const Marker& marker : kMarkers) {
        if (!(fonts.*marker.created)) break;
        if (line.starts_with(marker.character)) return {marker.font, line.substr(1)};
    }
    return {CreditsFont::regular, line};
}

bool hasPlaceholder(std::string_view line, const LeadByteTable& leadBytes) {
    for (std::size_t position = 0; position < line.size(); position += characterSize(line, position, leadBytes))
        if (line[position] == '%') return true;
    return false;
}

std::string_view expandPlaceholders(std::string_view line, const LeadByteTable& leadBytes,
                                    std::span<char, kExpandedCapacity> buffer) {
    std::size_t written = 0;
    while (!line.empty()) {
        const std::size_t size = characterSize(line, 0, leadBytes);
        const Replacement next = line[0] == '%' ? replacementFor(line) : Replacement{line.substr(0, size), size};
        if (next.text.size() > buffer.size() - written) break;
        std::ranges::copy(next.text, buffer.begin() + static_cast<std::ptrdiff_t>(written));
        written += next.text.size();
        line.remove_prefix(next.replaced);
    }
    return {buffer.data(), written};
}

}  // namespace tamrix
