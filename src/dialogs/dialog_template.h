// One dialog template taken apart, so that its font and size can be changed, and written again. The control records are
// kept as one block and copied verbatim, so a template that is not changed is written as it was read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace tamrix {

using TemplateBytes = std::span<const std::uint8_t>;

/// A template of either format. The spans lie in the bytes that it was parsed from, or where its user lays others.
struct DialogTemplate {
    bool extended = false;
    std::uint32_t helpId = 0;  // extended format only
    std::uint32_t style = 0;   // DS_SETFONT follows the face when the template is written
    std::uint32_t exStyle = 0;
    std::uint16_t itemCount = 0;
    std::int16_t x = 0, y = 0, cx = 0, cy = 0;  // dialog units
    TemplateBytes names{};                      // menu, window class and title
    TemplateBytes face{};                       // 16-bit units with the terminator; empty where there is no font
    std::uint16_t pointSize = 0;
    std::uint16_t weight = 0;            // extended format only
    std::uint16_t italicAndCharset = 0;  // extended format only; italic in the low byte
    TemplateBytes items{};               // all control records
};

/// Takes apart a template, in the format that it is marked as. Nothing when it runs past its bytes.
std::optional<DialogTemplate> parseTemplate(TemplateBytes bytes);

/// The bytes that the template takes. They are written where `target` has room for them; padding between the records
/// stays as it is.
std::size_t writeTemplate(const DialogTemplate& dialog, std::span<std::uint8_t> target);

}  // namespace tamrix
