// Cursors over little-endian bytes. A read past the end makes the reader fail: that read and all later ones return zero
// or an empty span. A writer counts all bytes but writes none past its end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace tamrix {

class ByteReader {
public:
    explicit ByteReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    bool failed() const { return failed_; }
    std::size_t position() const { return position_; }

    std::span<const std::uint8_t> take(std::size_t count) {
        if (failed_ || count > bytes_.size() - position_) {
            failed_ = true;
            return {};
        }
        position_ += count;
        return bytes_.subspan(position_ - count, count);
    }

    std::uint16_t u16() {
        const auto taken = take(2);
        return taken.empty() ? std::uint16_t{0} : static_cast<std::uint16_t>(taken[0] | taken[1] << 8);
    }

    std::int16_t i16() { return static_cast<std::int16_t>(u16()); }

    std::uint32_t u32() {
        const std::uint32_t low = u16();
        return low | static_cast<std::uint32_t>(u16()) << 16;
    }

    /// Moves to the next multiple of `boundary`, a power of two, unless it is already at one.
    void align(std::size_t boundary) { take((boundary - position_ % boundary) % boundary); }

    /// Calls `read` with this reader and returns the bytes that it has read.
    template <typename Read>
    std::span<const std::uint8_t> bytesReadBy(Read read) {
        const std::size_t start = position_;
        read(*this);
        return bytes_.subspan(start, position_ - start);
    }

private:
    std::span<const std::uint8_t> bytes_;
    std::size_t position_ = 0;
    bool failed_ = false;
};

class ByteWriter {
public:
    explicit ByteWriter(std::span<std::uint8_t> bytes) : bytes_(bytes) {}

    std::size_t position() const { return position_; }

    void put(std::span<const std::uint8_t> source) {
        const std::size_t end = position_ + source.size();
        if (!source.empty() && end <= bytes_.size()) std::memcpy(&bytes_[position_], source.data(), source.size());
        position_ = end;
    }

    void u16(std::uint16_t value) {
        const std::uint8_t bytes[] = {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8)};
        put(bytes);
    }

    void i16(std::int16_t value) { u16(static_cast<std::uint16_t>(value)); }

    void u32(std::uint32_t value) {
        u16(static_cast<std::uint16_t>(value));
        u16(static_cast<std::uint16_t>(value >> 16));
    }

    /// Moves to the next multiple of `boundary` without changing the bytes in between.
    void align(std::size_t boundary) { position_ += (boundary - position_ % boundary) % boundary; }

private:
    std::span<std::uint8_t> bytes_;
    std::size_t position_ = 0;
};

}  // namespace tamrix
