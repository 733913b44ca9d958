// Owner types for the drawing handles that only the about box uses: its bitmaps, its palette, and the device contexts
// in which a frame is drawn.
#pragma once

#include <windows.h>

#include "base/gdi_handles.h"

namespace tamrix {

using BrushHandle = GdiObject<HBRUSH>;
using BitmapHandle = GdiObject<HBITMAP>;
using PaletteHandle = GdiObject<HPALETTE>;

/// Selects a palette into a device context as foreground palette, and realises it, for its own lifetime. A null palette
/// selects nothing.
class SelectedPalette {
public:
    SelectedPalette(HDC context, HPALETTE palette)
        : context_(context), former_(palette ? SelectPalette(context, palette, FALSE) : nullptr) {
        if (palette) RealizePalette(context);
    }
    ~SelectedPalette() {
        if (former_) SelectPalette(context_, former_, FALSE);
    }
    SelectedPalette(const SelectedPalette&) = delete;
    SelectedPalette& operator=(const SelectedPalette&) = delete;

private:
    HDC context_;
    HPALETTE former_;
};

/// A memory device context that is compatible with another device context.
class MemoryContext {
public:
    explicit MemoryContext(HDC like) : context_(CreateCompatibleDC(like)) {}
    ~MemoryContext() {
        if (context_) DeleteDC(context_);
    }
    MemoryContext(const MemoryContext&) = delete;
    MemoryContext& operator=(const MemoryContext&) = delete;

    HDC get() const { return context_; }
    explicit operator bool() const { return context_ != nullptr; }

private:
    HDC context_;
};

}  // namespace tamrix
