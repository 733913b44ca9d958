// What the frames of the about box show, looked at as pixels and at the calls that draw them.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "windows/about_probe.h"
#include "windows/call_watch.h"

namespace {

using testing::ElementsAre;
using testing_support::AboutProbe;
using testing_support::captured;
using testing_support::Image;
using testing_support::ImportHook;

constexpr DWORD kTeal = 0x008080;
constexpr RECT kPictureArea = {14, 14, 397, 194};
constexpr RECT kBand = {14, 194, 397, 245};
constexpr RECT kTextArea = {14, 245, 397, 397};
constexpr int kCreditsId = 601;  // see test_resources.rc

bool contains(const RECT& rect, int x, int y) {
    return x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
}

/// Whether a pixel belongs to what no frame ever changes.
bool isFixed(int x, int y) {
    return contains(kBand, x, y) || (!contains(kPictureArea, x, y) && !contains(kTextArea, x, y));
}

template <typename Test>
int countWhere(const Image& image, Test test) {
    int count = 0;
    for (int y = 0; y < Image::kSide; ++y)
        for (int x = 0; x < Image::kSide; ++x) count += test(x, y, image.at(x, y));
    return count;
}

/// A bitmap of the library at `x`, `y` of a frame.
Image bitmapAt(AboutProbe& box, int id, int x, int y) {
    RECT size{};
    const HBITMAP bitmap = box.createOurBitmap(id, &size);
    const Image image = captured([&](HDC dc) {
        const HDC memory = CreateCompatibleDC(dc);
        const HGDIOBJ former = SelectObject(memory, bitmap);
        BitBlt(dc, x, y, size.right, size.bottom, memory, 0, 0, SRCCOPY);
        SelectObject(memory, former);
        DeleteDC(memory);
    });
    DeleteObject(bitmap);
    return image;
}

/// Icons are drawn only while `drawSprites`, and where they were drawn is kept.
bool drawSprites;
std::vector<POINT> drawnIcons;
decltype(&DrawIcon) realDrawIcon;
BOOL WINAPI watchedDrawIcon(HDC dc, int x, int y, HICON icon) {
    drawnIcons.push_back({x, y});
    return !drawSprites || realDrawIcon(dc, x, y, icon);
}

/// A text that was drawn and how: the flags in hexadecimal, then b, i, u for the font.
std::vector<std::string> drawnTexts;
decltype(&DrawTextA) realDrawText;
int WINAPI watchedDrawText(HDC dc, LPCSTR text, int length, LPRECT rect, UINT flags) {
    LOGFONTA font{};
    GetObjectA(GetCurrentObject(dc, OBJ_FONT), sizeof font, &font);
    EXPECT_EQ(flags, 0x821u);
    EXPECT_EQ(font.lfHeight, 33);
    EXPECT_EQ(font.lfCharSet, DEFAULT_CHARSET);
    EXPECT_STREQ(font.lfFaceName, "Arial");
    EXPECT_EQ(GetTextColor(dc), RGB(255, 255, 255));
    EXPECT_EQ(GetBkMode(dc), TRANSPARENT);
    const char* const style = font.lfWeight == 700 ? "b:" : font.lfItalic ? "i:" : font.lfUnderline ? "u:" : ":";
    drawnTexts.push_back(style + std::string(text, static_cast<std::size_t>(length)));
    return realDrawText(dc, text, length, rect, flags);
}

class AboutFrame : public testing::Test {
protected:
    AboutFrame() {
        drawSprites = false;
        drawnIcons.clear();
        drawnTexts.clear();
        realDrawIcon = iconHook.original<decltype(&DrawIcon)>();
        realDrawText = textHook.original<decltype(&DrawTextA)>();
    }

    std::vector<std::string> textsOfNextFrame(AboutProbe& box) {
        drawnTexts.clear();
        box.animate();
        return drawnTexts;
    }

    ImportHook iconHook{nullptr, "user32.dll", "DrawIcon", reinterpret_cast<const void*>(watchedDrawIcon)};
    ImportHook textHook{nullptr, "user32.dll", "DrawTextA", reinterpret_cast<const void*>(watchedDrawText)};
};

TEST_F(AboutFrame, KeepsBorderAndBandAndShowsThePicturesInTurn) {
    AboutProbe box;
    const Image loaded = bitmapAt(box, 1, 0, 0);
    EXPECT_EQ(box.frame(), loaded) << "before the first frame the bitmap is as it was loaded";
    std::vector<Image> pictures;
    for (int id = 10; id < 14; ++id) pictures.push_back(bitmapAt(box, id, 14, 14));
    EXPECT_NE(pictures[0], pictures[1]);
    for (int i = 0; i < 200; ++i) {
        drawSprites = i >= 100;
        drawnIcons.clear();
        box.animate();
        const Image frame = box.frame();
        const Image& picture = pictures[static_cast<std::size_t>(i % 4)];
        ASSERT_EQ(
            countWhere(frame, [&](int x, int y, DWORD pixel) { return isFixed(x, y) && pixel != loaded.at(x, y); }), 0)
            << "frame " << i;
        ASSERT_EQ(countWhere(frame,
                             [&](int x, int y, DWORD pixel) {
                                 if (!contains(kPictureArea, x, y) || pixel == picture.at(x, y)) return false;
                                 for (const POINT& at : drawnIcons)
                                     if (drawSprites && contains({at.x, at.y, at.x + 32, at.y + 32}, x, y))
                                         return false;
                                 return true;
                             }),
                  0)
            << "frame " << i << " has something in its picture that is no sprite";
    }
}

TEST_F(AboutFrame, DrawsSpritesWithTheirBackgroundShowingThrough) {
    AboutProbe box;
    box.animate();
    const Image without = box.frame();
    for (int i = 0; i < 4; ++i) {
        drawSprites = true;
        drawnIcons.clear();
        box.animate();
    }
    ASSERT_GE(drawnIcons.size(), 3u) << "the flyers at least";
    const Image with = box.frame();
    for (std::size_t i = 0; i < 3; ++i) {
        const POINT at = drawnIcons[i];
        int drawn = 0, clear = 0;
        for (int y = std::max<int>(at.y, 14); y < at.y + 32; ++y)
            for (int x = std::max<int>(at.x, 14); x < std::min<int>(at.x + 32, 397); ++x)
                ++(with.at(x, y) == without.at(x, y) ? clear : drawn);
        if (at.x > 14 && at.x < 365 && at.y > 14) {
            EXPECT_GT(drawn, 100) << "sprite " << i;
            EXPECT_GT(clear, 100) << "sprite " << i;
        }
    }
}

TEST_F(AboutFrame, MovesTheCreditsOnByOneLineEverySecondFrame) {
    AboutProbe box(kCreditsId);
    const std::vector<std::string> lines = {"b:Title 6.1",  ":plain & 1995-97", "i:slanted", ":",
                                            "u:under 100%", ": *text",          "b:"};
    std::vector<std::string> expected;
    for (std::size_t top = 0; top < lines.size(); ++top) {
        expected.insert(expected.begin(), lines[top]);
        EXPECT_EQ(textsOfNextFrame(box), expected) << "first frame with line " << top << " farthest";
        EXPECT_EQ(textsOfNextFrame(box), expected);
    }
    EXPECT_THAT(textsOfNextFrame(box), ElementsAre(lines[0])) << "and starts over after the last line";
    for (int i = 0; i < 4; ++i) box.animate();
    EXPECT_EQ(box.parseText(), 1);
    EXPECT_THAT(textsOfNextFrame(box), ElementsAre(lines[0]))
        << "a new table has fewer lines, its terminators being in";
}

TEST_F(AboutFrame, DrawsFarAndNearLinesCentredInTheirPlaces) {
    AboutProbe box(kCreditsId);
    // Where the title stands as the k-th line: rows of the frame.
    struct {
        int k, top, bottom;
    } const rows[] = {{0, 245, 248}, {1, 248, 254}, {4, 275, 290}, {6, 308, 329}};
    box.animate();
    int frames = 1;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.k);
        for (; frames < 2 * row.k + 1; ++frames) box.animate();
        const Image frame = box.frame();
        int left = 411, right = 0, lit = 0;
        for (int y = row.top; y < row.bottom; ++y)
            for (int x = 14; x < 397; ++x)
                if ((frame.at(x, y) & 0xFF) > 0xB0) {
                    left = std::min(left, x);
                    right = std::max(right, x);
                    ++lit;
                }
        EXPECT_GT(lit, 15) << "white letters survive being made smaller";
        EXPECT_NEAR(left + right, 410, 6) << "centred";
        EXPECT_EQ(countWhere(frame,
                             [&](int x, int y, DWORD pixel) {
                                 return contains(kTextArea, x, y) && y >= row.bottom && pixel != kTeal;
                             }),
                  0)
            << "before the first line everything is blank";
    }
}

TEST_F(AboutFrame, WithoutTheRegularFontOrTheBrushTheCreditsStandStill) {
    AboutProbe box(kCreditsId);
    const Image before = box.frame();
    const Image lastPicture = bitmapAt(box, 13, 14, 14);
    TAMRIX_WATCH("gdi32.dll", CreateFontA);
    TAMRIX_WATCH("gdi32.dll", CreateSolidBrush);
    for (int i = 0; i < 4; ++i) {
        if (i < 2) watchCreateFontA.failNth(1);
        if (i >= 2) watchCreateSolidBrush.failNth(1);
        EXPECT_THAT(textsOfNextFrame(box), testing::IsEmpty());
    }
    const Image after = box.frame();
    EXPECT_EQ(countWhere(after,
                         [&](int x, int y, DWORD pixel) {
                             return pixel != (contains(kPictureArea, x, y) ? lastPicture : before).at(x, y);
                         }),
              0)
        << "four frames on, the last picture is there and nothing else has changed";
    EXPECT_THAT(textsOfNextFrame(box), ElementsAre("b:Title 6.1")) << "still at its first line";
}

TEST_F(AboutFrame, AMarkerWhoseFontFailedIsShown) {
    AboutProbe box(kCreditsId);
    for (int i = 0; i < 8; ++i) box.animate();
    TAMRIX_WATCH("gdi32.dll", CreateFontA);
    watchCreateFontA.failNth(3);
    EXPECT_THAT(textsOfNextFrame(box),
                ElementsAre(":_under 100%", ":", ":/slanted", ":plain & 1995-97", "b:Title 6.1"));
    watchCreateFontA.failNth(2);
    EXPECT_EQ(textsOfNextFrame(box).back(), ":*Title 6.1");
}

TEST_F(AboutFrame, WithoutItsContextThePictureWaits) {
    AboutProbe box(kCreditsId);
    box.animate();
    TAMRIX_WATCH("gdi32.dll", CreateCompatibleDC);
    watchCreateCompatibleDC.failNth(3);
    EXPECT_THAT(textsOfNextFrame(box), testing::SizeIs(1)) << "the credits are drawn all the same";
    box.animate();
    const Image second = bitmapAt(box, 11, 14, 14);
    EXPECT_EQ(
        countWhere(box.frame(),
                   [&](int x, int y, DWORD pixel) { return contains(kPictureArea, x, y) && pixel != second.at(x, y); }),
        0);
}

TEST_F(AboutFrame, WithoutItsContextsNothingChanges) {
    AboutProbe box(kCreditsId);
    box.animate();
    const Image before = box.frame();
    TAMRIX_WATCH("gdi32.dll", CreateCompatibleDC);
    TAMRIX_WATCH("user32.dll", GetDC);
    for (const int nth : {1, 2}) {
        watchCreateCompatibleDC.failNth(nth);
        EXPECT_THAT(textsOfNextFrame(box), testing::IsEmpty());
    }
    watchGetDC.failNth(1);
    EXPECT_THAT(textsOfNextFrame(box), testing::IsEmpty());
    EXPECT_EQ(box.frame(), before);
}

TEST_F(AboutFrame, CreationOperationsGiveWhatTheyPromise) {
    AboutProbe box;
    RECT rect = {1, 2, 3, 4};
    EXPECT_EQ(box.createOurBitmap(0, nullptr), nullptr);
    EXPECT_EQ(box.createOurBitmap(99, &rect), nullptr);
    EXPECT_EQ(rect.left + rect.top + rect.right + rect.bottom, 10) << "left as it was";
    EXPECT_EQ(box.createOurText(GetModuleHandleA(nullptr), 599), nullptr);
    const HGLOBAL text = box.createOurText(GetModuleHandleA(nullptr), 0x10000 + kCreditsId);
    ASSERT_NE(text, nullptr);
    const std::string bytes = static_cast<char*>(GlobalLock(text));
    EXPECT_TRUE(bytes.starts_with("*Title %v\r\nplain") && bytes.ends_with("\r\n*")) << bytes;
    GlobalUnlock(text);
    GlobalFree(text);
}

TEST(AboutPalette, IsRealisedWhereverFramesAreDrawn) {
    const bool palettes = testing_support::screenHasPalette();
    TAMRIX_WATCH("gdi32.dll", RealizePalette);
    AboutProbe box;
    const int loading = watchRealizePalette.calls();
    EXPECT_EQ(loading, palettes ? 5 : 0) << "five bitmaps";
    box.animate();
    EXPECT_EQ(watchRealizePalette.calls() - loading, palettes ? 2 : 0) << "the frame's and the strip's contexts";
    box.frame();
    EXPECT_EQ(watchRealizePalette.calls() - loading, palettes ? 4 : 0) << "the window's and its memory context";
    const HPALETTE palette = box.createOurPalette(1);
    ASSERT_EQ(palette != nullptr, palettes);
    if (!palettes) return;
    PALETTEENTRY entries[256] = {};
    EXPECT_EQ(GetPaletteEntries(palette, 0, 256, entries), 256u);
    DeleteObject(palette);
    CCustomResource bitmap(GetModuleHandleA(nullptr), 1, RT_BITMAP);
    const AutoCustomResource guard(bitmap);
    ASSERT_EQ(bitmap.isLocked(), 1);
    const unsigned char* const table = bitmap.getAddress() + 40;
    for (int i = 0; i < 256; ++i)
        EXPECT_EQ(RGB(entries[i].peRed, entries[i].peGreen, entries[i].peBlue),
                  RGB(table[4 * i + 2], table[4 * i + 1], table[4 * i]))
            << "colour " << i;
}

}  // namespace
