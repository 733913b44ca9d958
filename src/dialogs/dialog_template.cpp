#include "dialogs/dialog_template.h"

#include <limits>
#include <new>

#include "dialogs/byte_cursor.h"
#include "dialogs/dialog_template_format.h"

namespace tamrix {
namespace {

/// Units up to a zero, without it.
std::size_t lengthOf(const char16_t* text) {
    std::size_t length = 0;
    while (text[length]) ++length;
    return length;
}

/// Moves past a string and its terminator; the units with the terminator.
std::size_t skipString(ByteReader& reader) {
    std::size_t units = 1;
    while (reader.u16() != 0) ++units;  // a reader that fails gives zero
    return units;
}

/// Moves past a name or ordinal; its units.
std::size_t skipNameOrOrdinal(ByteReader& reader) {
    const std::uint16_t first = reader.u16();
    if (first == 0) return 1;
    if (first != kOrdinalMark) return 1 + skipString(reader);
    reader.u16();
    return 2;
}

/// Reads what `skip` moves past into an array of its own; null when memory or the data runs out.
char16_t* readUnits(ByteReader& reader, std::size_t (*skip)(ByteReader&), std::uint32_t& count) {
    ByteReader copier = reader;
    const std::size_t units = skip(reader);
    if (reader.failed()) return nullptr;
    char16_t* array = new (std::nothrow) char16_t[units];
    if (!array) return nullptr;
    for (std::size_t i = 0; i < units; ++i) array[i] = copier.u16();
    count = static_cast<std::uint32_t>(units);
    return array;
}

void writeUnits(ByteWriter& writer, const char16_t* units, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) writer.u16(units[i]);
}

/// Moves past one control record. Where the size of the creation data counts its own word, 0 stands for 2.
void skipItem(ByteReader& reader, std::size_t fixedSize, bool countsItself) {
    reader.align(kTemplateAlignment);
    reader.take(fixedSize);
    skipNameOrOrdinal(reader);
    skipNameOrOrdinal(reader);
    const std::size_t size = ByteReader(reader).u16();
    reader.take(size && countsItself ? size : size + 2);
}

std::size_t roundedUp(std::size_t size) {
    return (size + kTemplateAlignment - 1) / kTemplateAlignment * kTemplateAlignment;
}

/// The length as `write` reports it: 0 for what an int cannot hold.
int reported(std::size_t length) {
    return length <= static_cast<std::size_t>(std::numeric_limits<int>::max()) ? static_cast<int>(length) : 0;
}

}  // namespace

bool marksExtended(std::span<const std::uint8_t> bytes) {
    ByteReader reader(bytes);
    return reader.u16() == kExtendedVersion && reader.u16() == kExtendedSignature;
}

CDialogTemplate::~CDialogTemplate() {
    release();
}

CDialogTemplateEx::~CDialogTemplateEx() = default;

void CDialogTemplate::release() {
    delete[] menu;
    delete[] windowClass;
    delete[] title;
    delete[] faceName;
    delete[] items;
    menu = windowClass = title = faceName = nullptr;
    items = nullptr;
}

void CDialogTemplate::readPlace(ByteReader& reader) {
    itemCount = reader.u16();
    x = reader.i16();
    y = reader.i16();
    cx = reader.i16();
    cy = reader.i16();
}

bool CDialogTemplate::readNamesAndTitle(ByteReader& reader) {
    std::uint32_t titleLength = 0;
    menu = readUnits(reader, skipNameOrOrdinal, menuLength);
    if (menu) windowClass = readUnits(reader, skipNameOrOrdinal, classLength);
    if (windowClass) title = readUnits(reader, skipString, titleLength);
    return title != nullptr;
}

bool CDialogTemplate::readFaceName(ByteReader& reader) {
    std::uint32_t faceLength = 0;
    faceName = readUnits(reader, skipString, faceLength);
    return faceName != nullptr;
}

bool CDialogTemplate::readItems(ByteReader& reader, std::span<const std::uint8_t> bytes, std::size_t fixedSize,
                                bool countsItself) {
    if (itemCount == 0) return !reader.failed();
    reader.align(kTemplateAlignment);
    const std::size_t start = reader.position();
    for (unsigned i = 0; i < itemCount && !reader.failed(); ++i) skipItem(reader, fixedSize, countsItself);
    if (reader.failed()) return false;
    itemsSize = static_cast<std::uint32_t>(reader.position() - start);
    items = new (std::nothrow) std::uint8_t[itemsSize];
    if (items) std::memcpy(items, bytes.data() + start, itemsSize);
    return items != nullptr;
}

int CDialogTemplate::parse(const void* data) {
    release();
    const std::span bytes(static_cast<const std::uint8_t*>(data), dataSize);
    ByteReader reader(bytes);
    style = reader.u32();
    exStyle = reader.u32();
    readPlace(reader);
    hasFont = style & kSetFontStyle;
    if (!readNamesAndTitle(reader)) return 0;
    if (hasFont) {
        pointSize = reader.u16();
        if (!readFaceName(reader)) return 0;
    }
    return readItems(reader, bytes, kStandardItemSize, true);
}

int CDialogTemplateEx::parse(const void* data) {
    release();
    const std::span bytes(static_cast<const std::uint8_t*>(data), dataSize);
    ByteReader reader(bytes);
    version = reader.u16();
    signature = reader.u16();
    helpId = reader.u32();
    exStyle = reader.u32();
    style = reader.u32();
    readPlace(reader);
    hasFont = style & kSetFontStyle;
    if (!readNamesAndTitle(reader)) return 0;
    if (hasFont) {
        pointSize = reader.u16();
        weight = reader.u16();
        italicAndCharset = reader.u16();
        if (!readFaceName(reader)) return 0;
    }
    return readItems(reader, bytes, kExtendedItemSize, false);
}

std::size_t CDialogTemplate::length(std::size_t headerSize, std::size_t fontFieldsSize) const {
    std::size_t units = std::size_t{menuLength} + classLength + lengthOf(title) + 1;
    if (hasFont) units += lengthOf(faceName) + 1;
    const std::size_t header = headerSize + 2 * units + (hasFont ? fontFieldsSize : 0);
    return itemCount ? roundedUp(header) + itemsSize : header;
}

void CDialogTemplate::writePlace(ByteWriter& writer) const {
    writer.u16(itemCount);
    writer.i16(x);
    writer.i16(y);
    writer.i16(cx);
    writer.i16(cy);
}

void CDialogTemplate::writeNamesAndTitle(ByteWriter& writer) const {
    writeUnits(writer, menu, menuLength);
    writeUnits(writer, windowClass, classLength);
    writeUnits(writer, title, lengthOf(title) + 1);
}

void CDialogTemplate::writeFaceName(ByteWriter& writer) const {
    writeUnits(writer, faceName, lengthOf(faceName) + 1);
}

void CDialogTemplate::writeItems(ByteWriter& writer) const {
    if (itemCount == 0) return;
    writer.align(kTemplateAlignment);
    writer.put({items, itemsSize});
}

int CDialogTemplate::write(void* buffer, std::int32_t bufferSize) {
    const int needed = reported(length(kStandardHeaderSize, kStandardFontFieldsSize));
    if (!buffer) return needed;
    if (needed > bufferSize) return 0;
    ByteWriter writer({static_cast<std::uint8_t*>(buffer), static_cast<std::size_t>(needed)});
    writer.u32(style);
    writer.u32(exStyle);
    writePlace(writer);
    writeNamesAndTitle(writer);
    if (hasFont) {
        writer.u16(pointSize);
        writeFaceName(writer);
    }
    writeItems(writer);
    return static_cast<int>(writer.position());
}

int CDialogTemplateEx::write(void* buffer, std::int32_t bufferSize) {
    const int needed = reported(length(kExtendedHeaderSize, kExtendedFontFieldsSize));
    if (!buffer) return needed;
    if (needed > bufferSize) return 0;
    ByteWriter writer({static_cast<std::uint8_t*>(buffer), static_cast<std::size_t>(needed)});
    writer.u16(version);
    writer.u16(signature);
    writer.u32(helpId);
    writer.u32(exStyle);
    writer.u32(style);
    writePlace(writer);
    writeNamesAndTitle(writer);
    if (hasFont) {
        writer.u16(pointSize);
        writer.u16(weight);
        writer.u16(italicAndCharset);
        writeFaceName(writer);
    }
    writeItems(writer);
    return static_cast<int>(writer.position());
}

}  // namespace tamrix
