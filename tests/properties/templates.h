// Dialog templates of both formats. Parsing any bytes reads only those, and they are written as they were read. A
// template built from the published structures is also written with another font and size, and is refused if it is cut
// anywhere.
#pragma once

#include "dialogs/dialog_template.h"
#include "properties/plain_dialogs.h"

namespace properties {

/// A string, or an ordinal, which may be zero.
inline std::string name(Input& input) {
    const unsigned kind = input.byte();
    return kind % 4 ? wide(input.text(5), kind % 2 * 8) : u16(0xFFFF) + u16(kind);
}

inline std::string aligned(std::string bytes) {
    bytes.resize((bytes.size() + 3) / 4 * 4);
    return bytes;
}

struct BuiltTemplate {
    explicit BuiltTemplate(Input& input) : extended(input.byte() % 2), start(input.bytes(8)) {
        start.resize(extended ? 8 : 4);  // the help id and the extended style, or that alone
        for (const int part : {1, 2, 3}) names += part == 3 ? wide(input.text(9)) : name(input);
        if (input.byte() % 2) setFont(input.byte(), wide(input.text(4)));
        for (count = input.byte() % 4u; itemCount < count; ++itemCount) {
            items = aligned(items) + std::string(extended ? 24 : 18, '\x5A') + name(input) + name(input);
            const std::string data = input.bytes(7);
            // In the standard format the size counts its own word unless there is nothing.
            items += u16(static_cast<unsigned>(data.size()) + (extended || data.empty() ? 0 : 2)) + data;
        }
    }

    void setFont(unsigned points, const std::string& face) {
        font = face.empty() ? "" : u16(points) + (extended ? u16(700) + u16(0x0201) : "") + face;
    }

    std::string bytes() const {
        const std::string style = u16(font.empty() ? 0x2080 : 0x20C0) + u16(0x90C8);
        std::string all = extended ? u16(1) + u16(0xFFFF) + start + style : style + start;
        all += u16(itemCount) + u16(40) + u16(0xFFD8) + u16(cx) + u16(cy) + names + font;
        return items.empty() ? all : aligned(all) + items;
    }

    bool extended;
    std::string start, names, font, items;
    unsigned count = 0, itemCount = 0, cx = 180, cy = 82;
};

/// A template parsed from a block of exactly these bytes, on which it lies.
struct Parsed {
    explicit Parsed(const std::string& bytes) : block(new std::uint8_t[bytes.size()]) {
        std::memcpy(block.get(), bytes.data(), bytes.size());
        dialog = tamrix::parseTemplate({block.get(), bytes.size()});
    }
    std::string written(std::size_t spared = 1) const {
        const std::size_t size = tamrix::writeTemplate(*dialog, {}), room = size - spared;
        const std::unique_ptr<std::uint8_t[]> target(new std::uint8_t[room]());
        require(tamrix::writeTemplate(*dialog, {target.get(), room}) == size, "the size written");
        return spared ? written(0) : std::string(target.get(), target.get() + size);
    }
    std::unique_ptr<std::uint8_t[]> block;
    std::optional<tamrix::DialogTemplate> dialog;
};

/// One template of each format, typed by hand as the platform lays it out.
inline const std::string kStandard(
    "\xC0\x20\xC8\x90\x01\x00\x02\x00"          // style with DS_SETFONT, extended style
    "\x02\x00\xFE\xFF\x28\x00\xB4\x00\x52\x00"  // two controls, x -2, y 40, 180 by 82
    "\xFF\xFF\x07\x00\x00\x00H\0i\0!\0\0\0"     // menu 7, the default class, "Hi!"
    "\x08\x00\x41\x00\x00\x00\x00\x00"          // 8 points, "A", two bytes to the next boundary
    "\x00\x00\x01\x50\x00\x00\x00\x00"          // a control's styles
    "\x5C\x00\x3F\x00\x28\x00\x0E\x00\x01\x00"  // its place and id
    "\xFF\xFF\x80\x00\x00\x00\x03\x00w\0"       // a button without a title, one byte of data, one to the boundary
    "\x00\x00\x01\x50\x00\x00\x00\x00"          // the next one
    "\x5C\x00\x3F\x00\x28\x00\x0E\x00\x02\x00"
    "\xFF\xFF\x82\x00\x00\x00\x01",  // whose data counts one byte: half of the word that says so
    93);

inline const std::string kExtended(
    "\x01\x00\xFF\xFF\x9A\x01\x00\x00\x00\x04\x00\x00"          // version, signature, help 410, extended style
    "\x48\x00\xC8\x80\x01\x00\x01\x00\x02\x00\x03\x00\x04\x00"  // style, one control, place and size
    "\x00\x00\x43\x00\x00\x00\x54\x00\x00\x00"                  // no menu, class "C", "T"
    "\x0A\x00\xBC\x02\x01\x80\x41\x00\x00\x00\x00\x00"  // 10 points, bold, italic, Shift-JIS, "A", two bytes more
    "\x2C\x01\x00\x00\x00\x00\x00\x00\x00\x00\x01\x50"  // a control's help id and styles
    "\x05\x00\x06\x00\x07\x00\x08\x00\x70\x11\x01\x00"  // its place and 32-bit id
    "\x58\x00\x00\x00\xFF\xFF\x02\x00\x01\x00w",        // class "X", title 2, one byte of data
    83);

inline void property(Input& input) {
    holdPlainDialogs(input);
    for (const std::string& typed : {kStandard, kExtended}) {
        const Parsed read(typed + '\0');  // the platform reads all of the last word
        require(read.dialog && read.written() == typed, "a typed template");
    }
    Input whole = input;
    const std::string any = whole.restBytes();
    if (const Parsed found(any); found.dialog) {
        const std::string again = found.written();
        const std::size_t items = again.size() - found.dialog->items.size();
        require(again.substr(0, items - 2) == any.substr(0, items - 2), "the header of any bytes");  // but for padding
        require(again.substr(items) == any.substr(items, again.size() - items), "the controls of any bytes");
    }
    BuiltTemplate built(input);
    const std::string bytes = built.bytes();
    for (std::size_t length = 0; length < bytes.size(); ++length)
        require(!Parsed(bytes.substr(0, length)).dialog, "cut at " + std::to_string(length));
    Parsed parsed(bytes);
    require(parsed.dialog && parsed.written() == bytes, "written as read");
    const std::string face = input.byte() % 8 ? wide(input.text(7)) : "";
    built.setFont(built.cx = 10, face);
    built.cy = 0xFFFE;
    tamrix::DialogTemplate& dialog = *parsed.dialog;
    dialog.face = bytesOf(face);
    dialog.pointSize = 10;
    dialog.weight = 700;
    dialog.italicAndCharset = 0x0201;
    dialog.cx = 10;
    dialog.cy = -2;
    require(parsed.written() == built.bytes(), "written with another font");
}

}  // namespace properties
