// The credits, compared with a model of their lines, markers and placeholders, and bitmap resources with any fields and
// of any size, compared with the size that the platform's structure requires.
#pragma once

#include <array>
#include <bit>
#include <map>

#include "about/bitmap_header.h"
#include "about/credits_text.h"
#include "properties/property.h"

namespace properties {

inline std::vector<std::string> linesOf(const tamrix::LeadByteTable& leads, const std::string& text) {
    std::vector<std::string> lines(1);
    for (const std::string& character : charactersOf(leads, text.substr(0, text.find('\0')))) {
        if (character == "\r") lines.emplace_back();
        if (character != "\r" && character != "\n") lines.back() += character;
    }
    return lines;
}

inline std::string expanded(const tamrix::LeadByteTable& leads, const std::string& line) {
    static const std::map<std::string, std::string> placeholders = {{"%v", "6.1"}, {"%y", "1995-97"}, {"%%", "%"}};
    std::vector<std::string> characters = charactersOf(leads, line, true), shown;
    characters.emplace_back();
    for (std::size_t i = 0; i + 1 < characters.size(); ++i) {
        const auto found = placeholders.find(characters[i] + characters[i + 1]);
        const bool isFound = found != placeholders.end();
        shown.push_back(isFound ? found->second : characters[i] == "%" ? " " : characters[i]);
        i += isFound;
    }
    return fitting(shown, tamrix::kExpandedCapacity);
}

/// `made` has a bit for each marked font; the markers after the first font that could not be created are not markers.
inline void holdLine(const tamrix::LeadByteTable& leads, const std::string& line, std::uint8_t made) {
    const std::size_t marker = std::string("*/_").find(line[0]);
    const bool isMarked = marker < static_cast<std::size_t>(std::countr_one(made));
    const auto [font, text] = tamrix::takeMarker(line, {(made & 1) != 0, (made & 2) != 0, (made & 4) != 0});
    require(static_cast<std::size_t>(font) == (isMarked ? marker + 1 : 0) && text == line.substr(isMarked), "a marker");
    std::array<char, tamrix::kExpandedCapacity> buffer;
    require(tamrix::expandPlaceholders(text, leads, buffer) == expanded(leads, std::string(text)), "placeholders");
    const bool hasPercent = withoutDoubles(leads, line).find('%') != std::string::npos;
    require(tamrix::hasPlaceholder(line, leads) == hasPercent, "whether there is a placeholder");
}

inline void holdCredits(const tamrix::LeadByteTable& leads, const std::string& credits, std::uint8_t made) {
    const std::vector<std::string> wanted = linesOf(leads, credits);
    const Block block(credits.size() + 1);  // the terminator replaces the last byte
    credits.copy(block, credits.size());
    const std::span<char> text(static_cast<char*>(block), credits.size() + 1);
    std::vector<AboutLine> lines(static_cast<std::size_t>(tamrix::compactCredits(text, leads)));
    require(lines.size() == wanted.size(), "the number of lines");
    tamrix::splitCredits(text, leads, lines);
    std::size_t offset = 0;
    for (std::size_t i = 0; i < lines.size(); offset += wanted[i++].size() + 1) {
        require(lines[i].offset == offset && &text[offset] == wanted[i], "line " + std::to_string(i));
        require(static_cast<std::size_t>(lines[i].length) == wanted[i].size(), "a length");
        holdLine(leads, wanted[i], made);
    }
}

inline void holdBitmap(Input& input) {
    const std::uint32_t headers[] = {40, 40, 40, 12}, sides[] = {1, 2, 13, 0x7FFF, 0x8000, 0x1000001, 0};
    const std::uint32_t depths[] = {0, 1, 4, 8, 9, 0x108}, counts[] = {0, 1, 2, 256, 257, 0x40000000};
    const std::uint32_t header = input.oneOf(headers), width = input.oneOf(sides), height = input.oneOf(sides);
    const std::uint32_t depth = input.oneOf(depths), colours = input.oneOf(counts);
    const std::uint32_t compression = input.byte() % 2U << input.byte() % 2 * 24, stated = input.byte();
    const bool fits = header == 40 && width - 1 < 0x7FFF && height - 1 < 0x7FFF && depth - 1 < 8 && colours <= 256;
    const std::size_t table = colours ? colours : 1u << depth % 16;
    const std::size_t bits = compression ? stated : (std::size_t{width} * depth + 31) / 32 * 4 * height;
    if (fits && bits > 2000) return;
    std::vector<unsigned char> bytes;
    for (const std::uint32_t field :
         {header, width, height, 1 | depth << 16, compression, stated, 0u, 0u, colours, 0u, 0u, 0x00332211u})
        for (const int shift : {0, 8, 16, 24}) bytes.push_back(static_cast<unsigned char>(field >> shift));
    const std::size_t needed = 40 + 4 * table + bits;
    for (const std::size_t cut : {std::size_t{input.byte()}, needed - 1, needed}) {
        std::vector<unsigned char> exact = bytes;
        exact.resize(fits ? cut : 4000);
        exact.shrink_to_fit();
        const auto bitmap = tamrix::BitmapResource::read(exact);
        require(bitmap.has_value() == (fits && bits && cut >= needed), "whether a bitmap is accepted");
        if (!bitmap) continue;
        require(bitmap->width() == static_cast<int>(width) && bitmap->height() == static_cast<int>(height), "sides");
        require(bitmap->colourCount() == static_cast<int>(table) && bitmap->bits().size() >= bits, "colours and bits");
        const tamrix::ColourEntry second = bitmap->colour(table > 1);
        require(table < 2 || (second.red == 0x33 && second.green == 0x22 && second.blue == 0x11), "the second colour");
    }
}

inline void property(Input& input) {
    require(tamrix::compactCredits({}, {}) == 1, "the lines of nothing");
    const tamrix::LeadByteTable leads = input.leadBytes();
    const std::uint8_t made = input.byte() % 8;
    holdBitmap(input);
    holdLine(leads, std::string(input.byte(), 'x') + input.text(32), 7);
    holdCredits(leads, input.restBytes(), made);
}

}  // namespace properties
