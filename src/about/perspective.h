// The positions of a frame's parts, and the perspective of the credits: each text line is drawn once into a strip and
// stretched into the text area in three slices. Each line is lower, wider and taller than the line behind it. All
// positions and sizes are in pixels of the frame bitmap.
#pragma once

namespace tamrix {

inline constexpr int kFrameBorder = 14;  // border of bitmap 1, in which nothing is drawn
inline constexpr int kPictureCount = 4;
inline constexpr int kPictureWidth = 383;
inline constexpr int kPictureHeight = 180;
inline constexpr int kSlicesPerLine = 3;

/// A slice of the strip, over its whole width, and its destination.
struct Slice {
    int sourceTop;
    int sourceHeight;
    int x;
    int y;
    int width;
    int height;
};

/// Computes the slices of one frame in order, beginning with the farthest line.
class Perspective {
public:
    Perspective(int frameWidth, int textTop, int lineHeight)
        : lineHeight_(lineHeight), x_((frameWidth - frameWidth / 3) / 2), y_(textTop), width_(frameWidth / 3) {}

    /// Slice `index` (0 to 2) of the current line. Call it once per slice, in order.
    Slice nextSlice(int index) {
        const int rows = lineHeight_ / kSlicesPerLine;
        const Slice slice{index * rows, rows, x_, y_, width_, height_};
        x_ -= 1;
        y_ += height_;
        width_ += 2;
        return slice;
    }

    void endLine() {
        x_ += shift_;
        width_ += growth_;
        height_ += 1;
        growth_ += 6;
        shift_ -= 3;
    }

    /// Whether the current line is drawn at less than half the strip's height.
    bool isFar() const { return 2 * height_ < lineHeight_ / kSlicesPerLine; }

    /// Whether the current line begins above `bottom` and must be drawn. The first line always is.
    bool reaches(int bottom) const { return height_ == 1 || y_ < bottom; }

private:
    int lineHeight_;
    int x_;
    int y_;
    int width_;
    int height_ = 1;
    int growth_ = 0;
    int shift_ = 0;
};

/// The picture after `picture`.
constexpr int nextPicture(int picture) {
    return (picture + 1) % kPictureCount;
}

/// The farthest line of the next frame: the credits advance by one line with every second picture.
constexpr int nextTopLine(int topLine, int lineCount, int picture) {
    return picture % 2 ? (topLine + 1) % lineCount : topLine;
}

}  // namespace tamrix
