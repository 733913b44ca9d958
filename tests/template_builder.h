// Dialog templates in both formats, put together byte by byte for tests from what they are to hold.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace testing_support {

using Bytes = std::vector<std::uint8_t>;
using Units = std::u16string;  // without the terminator

struct BuiltFont {
    std::uint16_t points = 8;
    std::uint16_t weight = 0;            // extended format only
    std::uint16_t italicAndCharset = 0;  // extended format only
    Units face{};
};

struct BuiltItem {
    Units windowClass{};  // u"\xFFFF\x0080" for an ordinal
    Units title{};
    Bytes creationData{};
};

struct BuiltTemplate {
    bool extended = false;
    std::uint32_t style = 0x90C820C0;  // with DS_SETFONT; the builder clears it when there is no font
    Units menu{};
    Units windowClass{};
    Units title{};
    std::optional<BuiltFont> font{};
    std::vector<BuiltItem> items{};
    std::int16_t cx = 180, cy = 82;

    Bytes bytes() const;
};

inline void put16(Bytes& bytes, unsigned value) {
    bytes.push_back(static_cast<std::uint8_t>(value));
    bytes.push_back(static_cast<std::uint8_t>(value >> 8));
}

inline void put32(Bytes& bytes, std::uint32_t value) {
    put16(bytes, value & 0xFFFF);
    put16(bytes, value >> 16);
}

/// A string gets its terminator; an ordinal (a name that begins with 0xFFFF) has none.
inline void putName(Bytes& bytes, const Units& name) {
    for (const char16_t unit : name) put16(bytes, unit);
    if (name.empty() || name[0] != 0xFFFF) put16(bytes, 0);
}

inline void putItem(Bytes& bytes, const BuiltItem& item, bool extended, unsigned id) {
    while (bytes.size() % 4) bytes.push_back(0);
    for (unsigned i = 0; i < (extended ? 10U : 8U); ++i) put16(bytes, 0x5000 + i);  // styles and place
    extended ? put32(bytes, id) : put16(bytes, id);
    putName(bytes, item.windowClass);
    putName(bytes, item.title);
    const std::size_t size = item.creationData.size();
    put16(bytes, static_cast<unsigned>(extended || size == 0 ? size : size + 2));
    bytes.insert(bytes.end(), item.creationData.begin(), item.creationData.end());
}

inline Bytes BuiltTemplate::bytes() const {
    Bytes bytes;
    const std::uint32_t written = font ? style | 0x40U : style & ~0x40U;
    if (extended) {
        put16(bytes, 1);
        put16(bytes, 0xFFFF);
        put32(bytes, 410);
        put32(bytes, 0x00010000);
    }
    put32(bytes, written);
    if (!extended) put32(bytes, 0x00010000);
    put16(bytes, static_cast<unsigned>(items.size()));
    for (const int place : {40, -40, int{cx}, int{cy}}) put16(bytes, static_cast<unsigned>(place) & 0xFFFF);
    for (const Units* name : {&menu, &windowClass, &title}) putName(bytes, *name);
    if (font) {
        put16(bytes, font->points);
        if (extended) {
            put16(bytes, font->weight);
            put16(bytes, font->italicAndCharset);
        }
        putName(bytes, font->face);
    }
    unsigned id = 100;
    for (const BuiltItem& item : items) putItem(bytes, item, extended, id++);
    return bytes;
}

}  // namespace testing_support
