#include "about/bitmap_header.h"

#include "base/byte_cursor.h"

namespace tamrix {
namespace {

constexpr std::size_t kHeaderSize = 40;
constexpr std::size_t kColourSize = 4;
constexpr std::uint32_t kMaxSide = 0x7FFF;
constexpr std::uint32_t kMaxBits = 8;
constexpr std::uint32_t kUncompressed = 0;

}  // namespace

std::optional<BitmapResource> BitmapResource::read(std::span<const unsigned char> bytes) {
    ByteReader header(bytes);
    const std::uint32_t size = header.u32();
    const std::uint32_t width = header.u32();
    const std::uint32_t height = header.u32();
    header.u16();  // planes
    const std::uint32_t bits = header.u16();
    const std::uint32_t compression = header.u32();
    const std::uint32_t stated = header.u32();
    header.take(8);  // pixels per metre
    const std::uint32_t used = header.u32();
    if (header.failed() || size != kHeaderSize) return std::nullopt;
    if (width == 0 || width > kMaxSide || height == 0 || height > kMaxSide) return std::nullopt;
    if (bits == 0 || bits > kMaxBits || used > 1u << kMaxBits) return std::nullopt;
    const std::uint32_t colours = used ? used : 1u << bits;
    // Within these limits, the product is less than 2^31.
    const std::uint32_t rows = (width * bits + 31) / 32 * 4 * height;
    const std::uint32_t pixels = compression == kUncompressed ? rows : stated;
    if (pixels == 0 || bytes.size() < std::uint64_t{kHeaderSize} + colours * kColourSize + pixels) return std::nullopt;
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
