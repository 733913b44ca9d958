// The credits in a block of exact size beside a model of their lines, markers and placeholders; bitmap resources with
// any fields, cut to any size, beside the sizes that the platform's structure asks for.
#pragma once

#include <algorithm>
#include <array>
#include <vector>

#include "about/bitmap_header.h"
#include "about/credits_text.h"
#include "properties/property.h"

namespace properties {

/// The characters up to a zero; the last one may be a lone lead byte.
inline std::vector<std::string> characters(const std::string& text, const tamrix::LeadByteTable& leads) {
    std::vector<std::string> found;
    for (std::size_t at = 0; at < text.size() && text[at]; at += found.back().size())
        found.push_back(text.substr(at, leads.leads(text[at]) ? 2 : 1));
    return found;
}

inline std::vector<std::string> linesOf(const std::string& text, const tamrix::LeadByteTable& leads) {
    std::vector<std::string> lines(1);
    for (const std::string& character : characters(text, leads)) {
        if (leads.leads(character[0]) && (character.size() == 1 || !character[1])) break;
        if (character == "\r")
            lines.emplace_back();
        else if (character != "\n")
            lines.back() += character;
    }
    return lines;
}

inline std::string expanded(const std::string& line, const tamrix::LeadByteTable& leads) {
    std::string shown;
    const std::vector<std::string> all = characters(line, leads);
    for (std::size_t i = 0; i < all.size(); ++i) {
        const bool percent = all[i] == "%";
        const std::string sign = percent && i + 1 < all.size() ? all[i + 1] : "";
        const std::string placeholder = sign == "v" ? "6.1" : sign == "y" ? "1995-97" : sign == "%" ? "%" : " ";
        const std::string& next = percent ? placeholder : all[i];
        if (shown.size() + next.size() > 255) break;
        shown += next;
        i += percent && placeholder != " ";
    }
    return shown;
}

inline void holdLine(const std::string& line, const tamrix::LeadByteTable& leads, const std::array<bool, 3>& made) {
    const std::size_t kind = std::string("*/_").find(line[0]);
    const bool marked = kind < 3 && made[0] && (kind < 1 || made[1]) && (kind < 2 || made[2]);
    const auto [font, text] = tamrix::takeMarker(line, {made[0], made[1], made[2]});
    require(static_cast<std::size_t>(font) == (marked ? kind + 1 : 0) && text == line.substr(marked), "the marker");
    std::array<char, tamrix::kExpandedCapacity> buffer;
    require(tamrix::expandPlaceholders(text, leads, buffer) == expanded(std::string(text), leads), "placeholders");
    const auto all = characters(line, leads);
    require(tamrix::hasPlaceholder(line, leads) == (std::count(all.begin(), all.end(), "%") > 0), "hasPlaceholder");
}

inline void holdCredits(const std::string& block, const tamrix::LeadByteTable& leads, std::uint8_t made) {
    const std::vector<std::string> wanted = linesOf(block.substr(0, block.size() - 1), leads);
    const std::unique_ptr<char[]> copy(new char[block.size()]);
    const std::span<char> text(copy.get(), block.size());
    block.copy(copy.get(), block.size());
    std::vector<AboutLine> lines(static_cast<std::size_t>(tamrix::compactCredits(text, leads)));
    require(lines.size() == wanted.size(), "the number of lines");
    tamrix::splitCredits(text, leads, lines);
    std::size_t offset = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        require(lines[i].offset == offset && &text[offset] == wanted[i], "line " + std::to_string(i));
        require(static_cast<std::size_t>(lines[i].length) == wanted[i].size(), "a length");
        offset += wanted[i].size() + 1;
        holdLine(wanted[i], leads, {(made & 1) != 0, (made & 2) != 0, (made & 4) != 0});
    }
}

inline void holdBitmap(Input& input) {
    const std::uint32_t sides[] = {1, 2, 13, 0x7FFF, 0x8000, 0x1000001, 0}, counts[] = {0, 1, 2, 256, 257, 0x40000000};
    const std::uint32_t width = input.oneOf(sides), height = input.oneOf(sides), colours = input.oneOf(counts);
    const std::uint32_t depths[] = {0, 1, 4, 8, 9, 0x108}, kinds[] = {0, 1, 0x01000000};
    const std::uint32_t depth = input.oneOf(depths), stated = input.byte(), compression = input.oneOf(kinds);
    const std::uint32_t header = input.byte() % 16 ? 40 : 12;
    const bool fits = header == 40 && width - 1 < 0x7FFF && height - 1 < 0x7FFF && depth - 1 < 8 && colours <= 256;
    const std::size_t table = colours ? colours : 1u << depth % 16;
    const std::size_t bits = compression ? stated : (std::size_t{width} * depth + 31) / 32 * 4 * height;
    if (fits && bits > 2000) return;
    std::string bytes;
    for (const std::uint32_t field :
         {header, width, height, 1 | depth << 16, compression, stated, 0u, 0u, colours, 0u, 0u, 0x00332211u})
        for (const int shift : {0, 8, 16, 24}) bytes += static_cast<char>(field >> shift);
    for (const std::size_t cut : {std::size_t{input.byte()}, 40 + 4 * table + bits - 1, 40 + 4 * table + bits}) {
        std::vector<unsigned char> exact(bytes.begin(), bytes.end());
        exact.resize(fits ? cut : 4000);
        const auto bitmap = tamrix::BitmapResource::read(exact);
        require(bitmap.has_value() == (fits && bits && cut >= 40 + 4 * table + bits), "whether a bitmap is accepted");
        if (!bitmap) continue;
        require(bitmap->width() == static_cast<int>(width) && bitmap->height() == static_cast<int>(height), "sides");
        require(bitmap->colourCount() == static_cast<int>(table) && bitmap->bits().size() >= bits, "colours and bits");
        if (table < 2) continue;
        const tamrix::ColourEntry second = bitmap->colour(1);
        require(second.red == 0x33 && second.green == 0x22 && second.blue == 0x11, "the second colour");
    }
}

inline void property(Input& input) {
    require(tamrix::compactCredits({}, {}) == 1, "the lines of nothing");
    const tamrix::LeadByteTable leads = input.leadBytes();
    const std::uint8_t made = input.byte();
    holdBitmap(input);
    const std::string longLine = std::string(input.byte(), 'x') + input.text(32);
    holdLine(longLine, leads, {true, true, true});
    holdCredits(input.restBytes() + 'x', leads, made);  // the last byte gives way to the terminator
}

}  // namespace properties
