// An input taken apart into what a target needs; past its end everything is zero or empty.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "strings/lead_bytes.h"

namespace fuzzing {

/// Ends the run with a finding unless the condition holds.
inline void require(bool condition) {
    if (!condition) std::abort();
}

class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : at(data), left(size) {}

    std::uint8_t byte() {
        if (left == 0) return 0;
        --left;
        return *at++;
    }
    /// Up to `most` bytes, as many as the next byte says, of any value.
    std::string bytes(std::size_t most) { return take(byte() % (most + 1)); }
    /// The same up to its first zero, so that a name keeps its length as a string.
    std::string text(std::size_t most) {
        const std::string all = bytes(most);
        return all.substr(0, all.find('\0'));
    }
    std::string rest() {
        const std::string all = take(left);
        return all.substr(0, all.find('\0'));
    }
    /// None, a double-byte code page's, or any bytes from 0x80 on.
    tamrix::LeadByteTable leadBytes() {
        tamrix::LeadByteTable table{};
        const std::uint8_t choice = byte();
        for (int value = 0x80; value < 0x100; ++value) {
            const bool japanese = (value >= 0x81 && value <= 0x9F) || (value >= 0xE0 && value <= 0xFC);
            const bool leads = choice % 4 == 1 ? japanese : choice % 4 == 2 ? (value * choice) % 7 == 0 : false;
            table.isLead[value] = leads;
            table.hasLeadBytes |= leads;
        }
        return table;
    }

private:
    std::string take(std::size_t count) {
        if (count > left) count = left;
        const std::string taken(reinterpret_cast<const char*>(at), count);
        at += count;
        left -= count;
        return taken;
    }

    const std::uint8_t* at;
    std::size_t left;
};

}  // namespace fuzzing
