// Checks the layout of the about box and its sprites, which compiled clients rely on.
#include <cstddef>

#include "about/about_sprites.h"
#include "about/credits_text.h"
#include "tamrix32/about.h"

// All compilers of this library support offsetof for a class with virtual functions.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

struct AboutLayout {
    using Box = CAboutQuillonAppleTalk;
    static_assert(sizeof(Box) == 148 && sizeof(AboutLine) == 8);
    static_assert(sizeof(CFlyingSprite) == 28 && sizeof(CWalkingSprite) == 28);
    static_assert(offsetof(Box, flyerCount) == 4 && offsetof(Box, walkerCount) == 8 && offsetof(Box, textTop) == 12);
    static_assert(offsetof(Box, lineHeight) == 16 && offsetof(Box, timerId) == 20 && offsetof(Box, timerPeriod) == 24);
    static_assert(offsetof(Box, textColor) == 28 && offsetof(Box, backColor) == 32 && offsetof(Box, lines) == 36);
    static_assert(offsetof(Box, window) == 40 && offsetof(Box, palette) == 44 && offsetof(Box, frameBitmap) == 48);
    static_assert(offsetof(Box, stripBitmap) == 52 && offsetof(Box, pictures) == 56 && offsetof(Box, text) == 72);
    static_assert(offsetof(Box, pictureIndex) == 76 && offsetof(Box, topLine) == 80 && offsetof(Box, lineCount) == 84);
    static_assert(offsetof(Box, modal) == 88 && offsetof(Box, frameRect) == 92 && offsetof(Box, creditsFace) == 108);
    static_assert(offsetof(Box, flyers) == 140 && offsetof(Box, walkers) == 144);
};
