#include "dialogs/font_choice.h"

#include <cstring>

namespace tamrix {
namespace {

/// The font that dialogs were designed with before the font was configurable.
constexpr char16_t kOldDefaultFace[] = u"MS Sans Serif";
constexpr std::uint16_t kOldDefaultPoints = 8;

bool hasOldDefaultFont(const DialogTemplate& dialog) {
    return dialog.pointSize == kOldDefaultPoints && dialog.face.size() == sizeof kOldDefaultFace &&
           std::memcmp(dialog.face.data(), kOldDefaultFace, sizeof kOldDefaultFace) == 0;
}

/// The low 16 bits of `size` * `numerator` / `denominator`, rounded towards zero.
std::int16_t scaled(std::int16_t size, double numerator, double denominator) {
    return static_cast<std::int16_t>(static_cast<std::int64_t>(size * numerator / denominator));
}

}  // namespace

FontDecision chooseFont(const char* configuredFace, std::uint32_t configuredPoints, const DialogTemplate& dialog,
                        const FontChoice& candidate) {
    if (configuredFace && configuredPoints)
        return {{configuredFace, static_cast<std::uint16_t>(configuredPoints)}, true};
    if (!dialog.face.empty() && !hasOldDefaultFont(dialog)) return {{nullptr, 0}, false};
    return {candidate, true};
}

DialogSize adjustedSize(DialogSize size, const FontMetrics& newFont, const FontMetrics& reference) {
    if (reference.averageWidth == 0 || reference.height == 0) return size;
    // With the extra pixel, a font that is one pixel narrower on average does not make the dialog narrower.
    return {scaled(size.cx, newFont.averageWidth + 1.0, reference.averageWidth),
            scaled(size.cy, newFont.height, reference.height)};
}

}  // namespace tamrix
