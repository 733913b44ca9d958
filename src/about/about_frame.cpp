// Draws a frame of the about box off-screen: credits in perspective, the picture, the sprites.
#include <array>

#include "about/about_sprites.h"
#include "about/credits_text.h"
#include "about/drawing_handles.h"
#include "about/perspective.h"
#include "base/global_memory.h"
#include "tamrix32/about.h"

namespace {

using namespace tamrix;

struct CreditsFonts {
    FontHandle regular;
    FontHandle bold;
    FontHandle italic;
    FontHandle underlined;

    MarkedFonts created() const { return {bool(bold), bool(italic), bool(underlined)}; }

    HFONT get(CreditsFont font) const {
        switch (font) {
            case CreditsFont::bold:
                return bold.get();
            case CreditsFont::italic:
                return italic.get();
            case CreditsFont::underlined:
                return underlined.get();
            default:
                return regular.get();
        }
    }
};

/// Draws each line into the strip and stretches the strip into the frame.
struct CreditsPainter {
    HDC frame;
    HDC strip;
    RECT stripRect;
    HBRUSH background;
    const CreditsFonts& fonts;
    COLORREF textColor;
    bool hasPalette;

    /// Draws a line into the strip. False for an empty line, which needs no drawing because the text area is already
    /// filled with the background.
    bool drawText(std::string_view line) const {
        const MarkedLine marked = takeMarker(line, fonts.created());
        if (marked.text.empty()) return false;
        FillRect(strip, &stripRect, background);
        const SelectedObject font(strip, fonts.get(marked.font));
        std::array<char, kExpandedCapacity> buffer;
        const std::string_view shown = hasPlaceholder(marked.text, leadByteTable)
                                           ? expandPlaceholders(marked.text, leadByteTable, buffer)
                                           : marked.text;
        RECT area = stripRect;
        DrawTextA(strip, shown.data(), static_cast<WORD>(shown.size()), &area, DT_CENTER | DT_SINGLELINE | DT_NOPREFIX);
        return true;
    }

    /// The default mode combines rows so that dark pixels win, which would remove the white letters. COLORONCOLOR
    /// omits rows; near lines, which lose few rows, remain legible. HALFTONE averages rows, which is better for far
    /// lines, but it takes hundreds of times as long on some systems, does not exist on others, and needs more colours
    /// than a palette has.
    void chooseStretching(bool isFar) const {
        SetStretchBltMode(frame, COLORONCOLOR);
        if (isFar && !hasPalette) SetStretchBltMode(frame, HALFTONE);
    }

    /// A blank strip is not stretched, because averaging might dither it.
    void stretch(Perspective& perspective, bool isBlank) const {
        chooseStretching(perspective.isFar());
        for (int i = 0; i < kSlicesPerLine; ++i) {
            const Slice slice = perspective.nextSlice(i);
            if (isBlank) continue;
            StretchBlt(frame, slice.x, slice.y, slice.width, slice.height, strip, 0, slice.sourceTop, stripRect.right,
                       slice.sourceHeight, SRCCOPY);
        }
        perspective.endLine();
    }

    /// `credits` is null if the text is not available; then all lines are blank.
    void draw(const char* credits, const AboutLine* farthest, int linesInFront, Perspective perspective,
              int bottom) const {
        const COLORREF formerColor = SetTextColor(strip, textColor);
        const int formerMode = SetBkMode(strip, TRANSPARENT);
        for (int k = 0; perspective.reaches(bottom); ++k) {
            bool isBlank = true;
            if (credits && k <= linesInFront) {
                const AboutLine& line = farthest[-k];
                isBlank = !drawText({credits + line.offset, static_cast<std::size_t>(line.length)});
            }
            stretch(perspective, isBlank);
        }
        SetBkMode(strip, formerMode);
        SetTextColor(strip, formerColor);
    }
};

void copyPicture(HDC frame, HDC source, HBITMAP picture) {
    const SelectedObject selected(source, picture);
    if (selected) BitBlt(frame, kFrameBorder, kFrameBorder, kPictureWidth, kPictureHeight, source, 0, 0, SRCCOPY);
}

}  // namespace

void CAboutQuillonAppleTalk::animate() {
    const WindowContext screen;
    const MemoryContext frame(screen.get());
    const MemoryContext strip(screen.get());
    if (!screen || !frame || !strip) return;
    const SelectedObject frameSelected(frame.get(), frameBitmap);
    const SelectedObject stripSelected(strip.get(), stripBitmap);
    if (!frameSelected || !stripSelected) return;
    const SelectedPalette framePalette(frame.get(), palette);
    const SelectedPalette stripPalette(strip.get(), palette);

    RECT inner = frameRect;
    InflateRect(&inner, -kFrameBorder, -kFrameBorder);
    IntersectClipRect(frame.get(), inner.left, inner.top, inner.right, inner.bottom);
    {
        const CreditsFonts fonts{FontHandle(createOurFont(0, 0, 0)), FontHandle(createOurFont(1, 0, 0)),
                                 FontHandle(createOurFont(0, 1, 0)), FontHandle(createOurFont(0, 0, 1))};
        const BrushHandle background(CreateSolidBrush(backColor));
        if (background && fonts.regular && lines) {
            const GlobalBlockLock credits(text);
            const RECT textArea = {inner.left, textTop, inner.right, inner.bottom};
            FillRect(frame.get(), &textArea, background.get());
            const CreditsPainter painter{frame.get(),       strip.get(), {0, 0, frameRect.right, lineHeight},
                                         background.get(),  fonts,       textColor,
                                         palette != nullptr};
            painter.draw(credits.bytes(), lines + topLine, topLine, Perspective(frameRect.right, textTop, lineHeight),
                         inner.bottom);
            topLine = nextTopLine(topLine, lineCount, pictureIndex);
        }
    }
    if (const MemoryContext source(frame.get()); source) {
        copyPicture(frame.get(), source.get(), pictures[pictureIndex]);
        pictureIndex = nextPicture(pictureIndex);
    }
    // A derived class may request frames even if the box could not be created.
    for (int i = 0; flyers && i < flyerCount; ++i) flyers[i].drawFrame(frame.get());
    for (int i = 0; walkers && i < walkerCount; ++i) walkers[i].drawFrame(frame.get());
}
