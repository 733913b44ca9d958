// The about box's bitmap resources: the platform's BITMAPINFOHEADER, a colour table, and the pixels.
//
//   offset  bytes  field
//   0       4      size of the header: 40
//   4       4      width in pixels
//   8       4      height in pixels
//   14      2      bits per pixel
//   16      4      compression: 0 none, 1 RLE8
//   20      4      size of the pixels in bytes; not used without compression, where each row is padded to 4 bytes
//   32      4      colours in the table; 0 means 2 to the power of the bits per pixel
//   40      4 * n  colour table: blue, green, red, reserved
//                  then the pixels
#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace tamrix {

struct ColourEntry {
    std::uint8_t red;
    std::uint8_t green;
    std::uint8_t blue;
};

/// A bitmap resource whose header, colour table and pixels are within its bytes.
class BitmapResource {
public:
    /// Returns nothing if there are too few bytes or no pixels, the header's size is not 40, width or height is not in
    /// the range 1 to 32767, a pixel does not have 1 to 8 bits, or the table has more than 256 colours.
    static std::optional<BitmapResource> read(std::span<const unsigned char> bytes);

    int width() const { return width_; }
    int height() const { return height_; }
    int colourCount() const { return colourCount_; }
    /// `index` must be less than colourCount().
    ColourEntry colour(int index) const;
    const unsigned char* header() const { return bytes_.data(); }
    /// The bytes after the colour table.
    std::span<const unsigned char> bits() const;

private:
    BitmapResource(std::span<const unsigned char> bytes, int width, int height, int colourCount)
        : bytes_(bytes), width_(width), height_(height), colourCount_(colourCount) {}

    std::span<const unsigned char> bytes_;
    int width_;
    int height_;
    int colourCount_;
};

}  // namespace tamrix
