#include "about/bitmap_header.h"

namespace tamrix {
namespace {

constexpr std::size_t kHeaderSize = 40;
constexpr std::size_t kColourSize = 4;
constexpr std::uint32_t kLargestSide = 0x7FFF;
constexpr std::uint32_t kMostBits = 8;
constexpr std::uint32_t kUncompressed = 0;

std::uint32_t littleEndian(std::span<const unsigned char> bytes) {
    std::uint32_t value = 0;
    for (std::size_t i = bytes.size(); i > 0; --i) value = value << 8 | bytes[i - 1];
    return value;
}

/// Bytes of the bits as the header states them; 0 when it doesn't.
std::uint64_t bitsSize(std::span<const unsigned char> header, std::uint64_t width, std::uint64_t height,
                       std::uint64_t bitsPerPixel) {
    const std::uint32_t compression = littleEndian(header.subspan(16, 4));
    const std::uint32_t stated = littleEndian(header.subspan(20, 4));
    if (compression != kUncompressed) return stated;
    return (width * bitsPerPixel + 31) / 32 * 4 * height;
}

}  // namespace

std::optional<BitmapResource> BitmapResource::read(std::span<const unsigned char> bytes) {
    if (bytes.size() < kHeaderSize || littleEndian(bytes.subspan(0, 4)) != kHeaderSize) return std::nullopt;
    const std::uint32_t width = littleEndian(bytes.subspan(4, 4));
    const std::uint32_t height = littleEndian(bytes.subspan(8, 4));
    const std::uint32_t bits = littleEndian(bytes.subspan(14, 2));
    const std::uint32_t used = littleEndian(bytes.subspan(32, 4));
    if (width == 0 || width > kLargestSide || height == 0 || height > kLargestSide) return std::nullopt;
    if (bits == 0 || bits > kMostBits || used > 1u << kMostBits) return std::nullopt;
    const std::uint32_t colours = used ? used : 1u << bits;
    const std::uint64_t stated = bitsSize(bytes, width, height, bits);
    if (stated == 0 || bytes.size() < kHeaderSize + colours * kColourSize + stated) return std::nullopt;
    return BitmapResource(bytes, static_cast<int>(width), static_cast<int>(height), static_cast<int>(colours));
}

ColourEntry BitmapResource::colour(int index) const {
    const auto entry = bytes_.subspan(kHeaderSize + static_cast<std::size_t>(index) * kColourSize, kColourSize);
    return {entry[2], entry[1], entry[0]};
}

std::span<const unsigned char> BitmapResource::bits() const {
    return bytes_.subspan(kHeaderSize + static_cast<std::size_t>(colourCount_) * kColourSize);
}

}  // namespace tamrix
