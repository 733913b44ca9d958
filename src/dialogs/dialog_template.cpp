#include "dialogs/dialog_template.h"

#include "base/byte_cursor.h"
#include "dialogs/dialog_template_format.h"

namespace tamrix {
namespace {

void skipString(ByteReader& reader) {
    while (reader.u16() != 0) continue;  // a failed reader returns zero
}

void skipNameOrOrdinal(ByteReader& reader) {
    const std::uint16_t first = reader.u16();
    if (first == kOrdinalMark)
        reader.u16();
    else if (first != 0)
        skipString(reader);
}

/// Skips one control record. In the standard format, a size of the creation data that is not 0 includes the two bytes
/// of the size itself.
void skipItem(ByteReader& reader, bool extended) {
    reader.align(kTemplateAlignment);
    reader.take(extended ? kExtendedItemSize : kStandardItemSize);
    skipNameOrOrdinal(reader);
    skipNameOrOrdinal(reader);
    const std::size_t size = ByteReader(reader).u16();
    reader.take(size && !extended ? size : size + 2);
}

bool marksExtended(TemplateBytes bytes) {
    ByteReader reader(bytes);
    return reader.u16() == kExtendedVersion && reader.u16() == kExtendedSignature;
}

void readStyles(ByteReader& reader, DialogTemplate& dialog) {
    if (!dialog.extended) {
        dialog.style = reader.u32();
        dialog.exStyle = reader.u32();
        return;
    }
    reader.u32();  // version and signature
    dialog.helpId = reader.u32();
    dialog.exStyle = reader.u32();
    dialog.style = reader.u32();
}

void readFont(ByteReader& reader, DialogTemplate& dialog) {
    dialog.pointSize = reader.u16();
    if (dialog.extended) {
        dialog.weight = reader.u16();
        dialog.italicAndCharset = reader.u16();
    }
    dialog.face = reader.bytesReadBy(skipString);
}

void writeStyles(ByteWriter& writer, const DialogTemplate& dialog) {
    const std::uint32_t style = (dialog.style & ~kSetFontStyle) | (dialog.face.empty() ? 0 : kSetFontStyle);
    if (!dialog.extended) {
        writer.u32(style);
        writer.u32(dialog.exStyle);
        return;
    }
    writer.u16(kExtendedVersion);
    writer.u16(kExtendedSignature);
    writer.u32(dialog.helpId);
    writer.u32(dialog.exStyle);
    writer.u32(style);
}

void writeFont(ByteWriter& writer, const DialogTemplate& dialog) {
    writer.u16(dialog.pointSize);
    if (dialog.extended) {
        writer.u16(dialog.weight);
        writer.u16(dialog.italicAndCharset);
    }
    writer.put(dialog.face);
}

}  // namespace

std::optional<DialogTemplate> parseTemplate(TemplateBytes bytes) {
    ByteReader reader(bytes);
    DialogTemplate dialog{.extended = marksExtended(bytes)};
    readStyles(reader, dialog);
    dialog.itemCount = reader.u16();
    for (std::int16_t* field : {&dialog.x, &dialog.y, &dialog.cx, &dialog.cy}) *field = reader.i16();
    dialog.names = reader.bytesReadBy([](ByteReader& names) {
        skipNameOrOrdinal(names);
        skipNameOrOrdinal(names);
        skipString(names);
    });
    if (dialog.style & kSetFontStyle) readFont(reader, dialog);
    if (dialog.itemCount) reader.align(kTemplateAlignment);
    dialog.items = reader.bytesReadBy([&dialog](ByteReader& items) {
        for (unsigned i = 0; i < dialog.itemCount && !items.failed(); ++i) skipItem(items, dialog.extended);
    });
    if (reader.failed()) return std::nullopt;
    return dialog;
}

std::size_t writeTemplate(const DialogTemplate& dialog, std::span<std::uint8_t> target) {
    ByteWriter writer(target);
    writeStyles(writer, dialog);
    writer.u16(dialog.itemCount);
    for (const std::int16_t field : {dialog.x, dialog.y, dialog.cx, dialog.cy}) writer.i16(field);
    writer.put(dialog.names);
    if (!dialog.face.empty()) writeFont(writer, dialog);
    if (dialog.itemCount) writer.align(kTemplateAlignment);
    writer.put(dialog.items);
    return writer.position();
}

}  // namespace tamrix
