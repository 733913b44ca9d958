// An about box that can be looked at from outside: as a client's derived class it composes frames and has itself
// painted into a bitmap of its own.
#pragma once

#include <windows.h>

#include <cstddef>
#include <vector>

#include "tamrix32/about.h"

namespace testing_support {

/// Whether the screen has at most 8 bits per pixel, and so a palette.
inline bool screenHasPalette() {
    const HDC screen = GetDC(nullptr);
    const int depth = GetDeviceCaps(screen, BITSPIXEL);
    ReleaseDC(nullptr, screen);
    return depth <= 8;
}

/// Pixels of a painted frame, top row first.
struct Image {
    static constexpr int kSide = 411;

    Image() : pixels(static_cast<std::size_t>(kSide) * kSide) {}

    /// 0x00RRGGBB.
    DWORD at(int x, int y) const { return pixels[static_cast<std::size_t>(y) * kSide + static_cast<std::size_t>(x)]; }

    bool operator==(const Image&) const = default;

    std::vector<DWORD> pixels;
};

/// What `draw` draws into a device context of one frame's size.
template <typename Draw>
Image captured(Draw draw) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = Image::kSide;
    info.bmiHeader.biHeight = -Image::kSide;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const HDC memory = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ former = SelectObject(memory, bitmap);
    draw(memory);
    GdiFlush();
    Image image;
    for (std::size_t i = 0; i < image.pixels.size(); ++i) image.pixels[i] = static_cast<DWORD*>(bits)[i] & 0xFFFFFF;
    SelectObject(memory, former);
    DeleteObject(bitmap);
    DeleteDC(memory);
    return image;
}

class AboutProbe : public CAboutQuillonAppleTalk {
public:
    using CAboutQuillonAppleTalk::animate;
    using CAboutQuillonAppleTalk::CAboutQuillonAppleTalk;
    using CAboutQuillonAppleTalk::createOurBitmap;
    using CAboutQuillonAppleTalk::createOurFont;
    using CAboutQuillonAppleTalk::createOurPalette;
    using CAboutQuillonAppleTalk::createOurText;
    using CAboutQuillonAppleTalk::doTimer;
    using CAboutQuillonAppleTalk::parseText;

    /// The frame that is composed now.
    Image frame() {
        return captured([this](HDC dc) { paint(dc); });
    }
};

}  // namespace testing_support
