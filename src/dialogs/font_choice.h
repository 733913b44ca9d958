// Selection of a dialog template's font, and adjustment of the dialog's size to it.
#pragma once

#include <cstdint>

#include "dialogs/dialog_template.h"

namespace tamrix {

/// A typeface name in the ANSI code page (null for none) and its size in points.
struct FontChoice {
    const char* face;
    std::uint16_t points;
};

struct FontDecision {
    FontChoice font;     // if the face is null, the template keeps its font
    bool mayAdjustSize;  // false for a template that was designed with its own font
};

/// The configured font replaces every font; only the low 16 bits of its size are used. The candidate replaces only a
/// missing font and 8-point "MS Sans Serif".
FontDecision chooseFont(const char* configuredFace, std::uint32_t configuredPoints, const DialogTemplate& dialog,
                        const FontChoice& candidate);

/// The metrics of a font in pixels.
struct FontMetrics {
    std::int32_t averageWidth;
    std::int32_t height;
};

/// A dialog's size in dialog units.
struct DialogSize {
    std::int16_t cx, cy;
};

/// The size adjusted from the reference font to the new one, truncated to whole units and to 16 bits. Not changed if a
/// metric of the reference font is 0.
DialogSize adjustedSize(DialogSize size, const FontMetrics& newFont, const FontMetrics& reference);

}  // namespace tamrix
