// Names as they are translated in earnest: 8 to 40 bytes, of 100 bytes 15 above 0x7F and 3 that are quoted.
#pragma once

#include <random>
#include <string>
#include <vector>

/// Seeded. `high` holds the bytes to take above 0x7F.
inline std::vector<std::string> sampleNames(std::size_t count, const std::string& high) {
    static const std::string plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 -_.";
    static const std::string quoted = "/:?*\"<>|\\\r";
    std::mt19937 random(1995);
    const auto pick = [&random](std::size_t below) { return static_cast<std::size_t>(random() % below); };
    std::vector<std::string> names(count);
    for (std::string& name : names) {
        const std::size_t length = 8 + pick(33);
        while (name.size() < length) {
            const std::size_t kind = pick(100);
            const std::string& from = kind < 15 ? high : kind < 18 ? quoted : plain;
            name += from[pick(from.size())];
        }
    }
    return names;
}
