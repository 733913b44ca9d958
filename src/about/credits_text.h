// The credits: text in the ANSI code page, its line table, markers and placeholders.
//
//   lines         CR (0x0D) ends a line; the text after the last CR is a line too. LF (0x0A) is removed everywhere. A
//                 zero byte ends the text. A trail byte with the value of CR or LF is part of its character.
//   markers       the first character of a line selects the font and is not shown:  * bold   / italic   _ underlined
//   placeholders  %v the version   %y the years   %% a percent sign   any other % is replaced by a space
//
// A lone lead byte at the end of the text is not part of it. Offsets and lengths are in bytes.
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

/// Removes line feeds from `text` in place and terminates it with a zero byte. The text ends before its first zero byte
/// or its last byte. Returns the number of lines, at least 1.
std::int32_t compactCredits(std::span<char> text, const LeadByteTable& leadBytes);

/// Fills one entry per line of a compacted text and terminates each line with a zero byte.
void splitCredits(std::span<char> text, const LeadByteTable& leadBytes, std::span<AboutLine> lines);

enum class CreditsFont { regular, bold, italic, underlined };

/// Which of the fonts for marked lines could be created.
struct MarkedFonts {
    bool bold;
    bool italic;
    bool underlined;
};

struct MarkedLine {
    CreditsFont font;
    std::string_view text;  // without the marker; placeholders are not yet expanded
};

/// Removes the marker from a line. If a font could not be created, its marker and those after it in the order above are
/// ordinary characters.
MarkedLine takeMarker(std::string_view line, MarkedFonts fonts);

/// Maximum size in bytes of a line with expanded placeholders.
inline constexpr std::size_t kExpandedCapacity = 255;

/// Writes the line with its placeholders replaced to the buffer, and returns the written part. A line that does not fit
/// is truncated at a character boundary; a replacement that does not fit completely ends it.
std::string_view expandPlaceholders(std::string_view line, const LeadByteTable& leadBytes,
                                    std::span<char, kExpandedCapacity> buffer);

/// Whether the line has a percent sign that is not part of a double-byte character.
bool hasPlaceholder(std::string_view line, const LeadByteTable& leadBytes);

}  // namespace tamrix
