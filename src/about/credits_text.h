// The credits: a text of lines in the ANSI code page, its line table, markers and placeholders.
//
//   lines         CR (0x0D) ends a line, LF (0x0A) is dropped wherever it is, zero ends the text; what follows the last
//                 CR is a line, too. Neither byte counts as the second of a double-byte character.
//   markers       a line's first character selects its font and is not shown:  * bold   / italic   _ underlined
//   placeholders  %v version   %y years   %% a per cent sign   % before anything else: a space, and that stays
//
// A lone lead byte before the end of the text ends it. Offsets and lengths are in bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "strings/lead_bytes.h"

/// One line of the compacted credits.
struct AboutLine {
    std::uint32_t offset;  // of the first byte in the text
    std::int32_t length;   // without the terminator
};

namespace tamrix {

/// Drops line feeds from `text` in place, up to its first zero byte or its last byte, and ends it with a zero byte.
/// Returns the number of lines, at least 1.
std::int32_t compactCredits(std::span<char> text, const LeadByteTable& leadBytes);

/// Fills one entry for each line of a compacted text and puts a zero byte after each line.
void splitCredits(std::span<char> text, const LeadByteTable& leadBytes, std::span<AboutLine> lines);

enum class CreditsFont { regular, bold, italic, underlined };

/// Which of the marked fonts could be made.
struct MarkedFonts {
    bool bold;
    bool italic;
    bool underlined;
};

struct MarkedLine {
    CreditsFont font;
    std::string_view text;  // as drawn, placeholders not yet expanded
};

/// Takes the marker off a line. A font that could not be made makes its marker, and those after it in the order above,
/// characters like any other.
MarkedLine takeMarker(std::string_view line, MarkedFonts fonts);

/// Most bytes of a line after its placeholders are expanded.
inline constexpr std::size_t kExpandedCapacity = 255;

/// Writes the line with its placeholders replaced and returns how much of the buffer that is. A line that does not fit
/// is cut at a character's start; a replacement that does not fit whole ends it.
std::string_view expandPlaceholders(std::string_view line, const LeadByteTable& leadBytes,
                                    std::span<char, kExpandedCapacity> buffer);

/// Whether the line has a per cent sign that is a character of its own.
bool hasPlaceholder(std::string_view line, const LeadByteTable& leadBytes);

}  // namespace tamrix
