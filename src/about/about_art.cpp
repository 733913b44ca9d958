// Creates what the about box draws: its bitmaps and palette, its text with the line table, its fonts.
#include <new>

#include "about/bitmap_header.h"
#include "about/credits_text.h"
#include "about/drawing_handles.h"
#include "base/global_memory.h"
#include "base/module.h"
#include "tamrix32/about.h"

namespace {

using namespace tamrix;

constexpr WORD kPaletteVersion = 0x300;
constexpr int kMaxColours = 256;

/// A LOGPALETTE with room for all colours of 8 bits per pixel.
struct LogicalPalette {
    WORD version;
    WORD count;
    PALETTEENTRY entries[kMaxColours];
};

std::optional<BitmapResource> readBitmap(CCustomResource& resource) {
    if (!resource.isLocked() || !resource.getAddress()) return std::nullopt;
    return BitmapResource::read({resource.getAddress(), static_cast<std::size_t>(resource.getSize())});
}

void drawBits(HDC dc, const BitmapResource& bitmap) {
    StretchDIBits(dc, 0, 0, bitmap.width(), bitmap.height(), 0, 0, bitmap.width(), bitmap.height(),
                  bitmap.bits().data(), reinterpret_cast<const BITMAPINFO*>(bitmap.header()), DIB_RGB_COLORS, SRCCOPY);
}

/// A screen-compatible bitmap with the pixels of the resource.
BitmapHandle screenBitmap(HDC screen, const BitmapResource& source, HPALETTE palette) {
    const MemoryContext memory(screen);
    BitmapHandle bitmap(memory ? CreateCompatibleBitmap(screen, source.width(), source.height()) : nullptr);
    if (!bitmap) return bitmap;
    const SelectedObject selected(memory.get(), bitmap.get());
    const SelectedPalette colours(memory.get(), palette);
    drawBits(memory.get(), source);
    return bitmap;
}

}  // namespace

HPALETTE CAboutQuillonAppleTalk::createOurPalette(int bitmapId) {
    const WindowContext screen;
    if (!screen || GetDeviceCaps(screen.get(), BITSPIXEL) > 8) return nullptr;
    CCustomResource resource(instance, bitmapId, RT_BITMAP);
    const AutoCustomResource guard(resource);
    const auto bitmap = readBitmap(resource);
    if (!bitmap) return nullptr;
    LogicalPalette logical{kPaletteVersion, static_cast<WORD>(bitmap->colourCount()), {}};
    for (int i = 0; i < bitmap->colourCount(); ++i) {
        const ColourEntry colour = bitmap->colour(i);
        logical.entries[i] = {colour.red, colour.green, colour.blue, 0};
    }
    return CreatePalette(reinterpret_cast<const LOGPALETTE*>(&logical));
}

HBITMAP CAboutQuillonAppleTalk::createOurBitmap(int bitmapId, RECT* rect) {
    const WindowContext screen;
    if (!screen) return nullptr;
    if (bitmapId == 0)
        return rect ? CreateCompatibleBitmap(screen.get(), rect->right - rect->left, rect->bottom - rect->top)
                    : nullptr;
    CCustomResource resource(instance, bitmapId, RT_BITMAP);
    const AutoCustomResource guard(resource);
    const auto source = readBitmap(resource);
    if (!source) return nullptr;
    BitmapHandle bitmap = screenBitmap(screen.get(), *source, palette);
    if (bitmap && rect) *rect = {0, 0, source->width(), source->height()};
    return bitmap.release();
}

HGLOBAL CAboutQuillonAppleTalk::createOurText(HINSTANCE module, int textId) {
    char type[] = "TEXT";
    CCustomResource resource(module, textId, type);
    GlobalBlock copy(resource.copyData());
    // A block that could not be enlarged has no terminator, so it cannot be used.
    if (!copy || !GlobalReAlloc(copy.get(), static_cast<SIZE_T>(resource.getSize()) + 1, GMEM_MOVEABLE | GMEM_ZEROINIT))
        return nullptr;
    return copy.release();
}

HFONT CAboutQuillonAppleTalk::createOurFont(int bold, int italic, int underline) {
    return CreateFontA(lineHeight, 0, 0, 0, bold ? FW_BOLD : FW_NORMAL, static_cast<DWORD>(italic),
                       static_cast<DWORD>(underline), FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                       DEFAULT_QUALITY, DEFAULT_PITCH, creditsFace);
}

int CAboutQuillonAppleTalk::parseText() {
    const GlobalBlockLock block(text);
    if (!block.bytes()) return 0;
    const std::span<char> credits(block.bytes(), GlobalSize(text));
    topLine = 0;
    lineCount = compactCredits(credits, leadByteTable);
    delete[] lines;
    lines = new (std::nothrow) AboutLine[static_cast<std::size_t>(lineCount)];
    if (!lines) return 0;
    splitCredits(credits, leadByteTable, {lines, static_cast<std::size_t>(lineCount)});
    return 1;
}
