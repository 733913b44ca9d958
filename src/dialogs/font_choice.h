// Which font a dialog template gets, and how its size follows the font.
#pragma once

#include <cstdint>

#include "dialogs/dialog_template.h"

namespace tamrix {

/// A typeface in the ANSI code page, null for none, and its size in points.
struct FontChoice {
    const char* face;
    std::uint16_t points;
};

struct FontDecision {
    FontChoice font;     // without a face the template keeps what it has
    bool sizeMayFollow;  // false for a template that was made for a font of its own
};

/// The configured font (with a size of which the low 16 bits count) goes before everything; the candidate replaces only
/// a missing font and 8-point "MS Sans Serif".
FontDecision chooseFont(const char* configuredFace, std::uint32_t configuredPoints, const DialogTemplate& dialog,
                        const FontChoice& candidate);

/// What a font measures, in pixels.
struct FontMetrics {
    std::int32_t averageWidth;
    std::int32_t height;
};

/// A dialog's size in dialog units.
struct DialogSize {
    std::int16_t cx, cy;
};

/// The size after a change from the reference font to the new one, cut to whole units and to 16 bits. It stays as it is
/// when the reference measures nothing.
DialogSize adjustedSize(DialogSize size, const FontMetrics& newFont, const FontMetrics& reference);

}  // namespace tamrix
