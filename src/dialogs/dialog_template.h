// A parsed dialog template, whose font and size can be changed before it is written again. The control records are
// stored as one block and copied verbatim, so an unchanged template is written exactly as it was read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace tamrix {

using TemplateBytes = std::span<const std::uint8_t>;

/// A template of either format. The spans refer to the bytes from which it was parsed, or to other bytes that a caller
/// sets.
struct DialogTemplate {
    bool extended = false;
    std::uint32_t helpId = 0;  // extended format only
    std::uint32_t style = 0;   // DS_SETFONT is set or cleared, depending on the face, when the template is written
    std::uint32_t exStyle = 0;
    std::uint16_t itemCount = 0;
    std::int16_t x = 0, y = 0, cx = 0, cy = 0;  // dialog units
    TemplateBytes names{};                      // menu, window class and title
    TemplateBytes face{};                       // 16-bit units with the terminator; empty if there is no font
    std::uint16_t pointSize = 0;
    std::uint16_t weight = 0;            // extended format only
    std::uint16_t italicAndCharset = 0;  // extended format only; italic in the low byte
    TemplateBytes items{};               // all control records
};

/// Parses a template of either format. Returns nothing if a part of the template is outside `bytes`.
std::optional<DialogTemplate> parseTemplate(TemplateBytes bytes);

/// Writes as much of the template as fits in `target`, and returns the size of the whole template in bytes. Skips the
/// padding before the control records without writing it.
std::size_t writeTemplate(const DialogTemplate& dialog, std::span<std::uint8_t> target);

}  // namespace tamrix
