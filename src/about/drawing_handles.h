// Owners of the drawing handles that only the about box has: its bitmaps, its palette, and the contexts in which a
// frame is composed.
#pragma once

#include <windows.h>

#include "base/gdi_handles.h"

namespace tamrix {

using BrushHandle = GdiObject<HBRUSH>;
using BitmapHandle = GdiObject<HBITMAP>;
using PaletteHandle = GdiObject<HPALETTE>;

/// A palette selected into a device context as its foreground palette and realised there, for as long as this lives. A
/// null palette selects nothing.
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

/// A memory device context that suits another one.
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
