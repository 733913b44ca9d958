// One dialog template taken apart, so that its font and size can be changed, and written again. The control records are
// kept as one block and copied verbatim, so a template that is not changed is written as it was read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace tamrix {

class ByteReader;
class ByteWriter;

/// Whether the data is marked as a template of the extended format.
bool marksExtended(std::span<const std::uint8_t> bytes);

/// A template in the standard format. The arrays are its own. After a parse that fails only destruction and another
/// parse make sense.
class CDialogTemplate {
public:
    CDialogTemplate() = default;
    virtual ~CDialogTemplate();
    /// Takes apart a template of this class's format that lies at `data` and runs over at most `dataSize` bytes. 1, or
    /// 0 when it runs past them or memory runs out.
    virtual int parse(const void* data);
    /// Finds the dialog resource `name` (a name or an integer resource) of a module and parses it. 0 when it is
    /// missing, of the other format, or malformed.
    virtual int load(void* module, const char* name);
    /// Writes the template and returns its bytes; 0, with nothing written, when they are more than `bufferSize`. A null
    /// `buffer` only asks for the count.
    virtual int write(void* buffer, std::int32_t bufferSize);
    /// Sets the typeface, given in the ANSI code page, and with it the font block; a face that does not convert takes
    /// the block away. Units of the converted name with its terminator.
    virtual int setFaceName(const char* name);
    virtual void setPointSize(std::uint16_t points) { pointSize = points; }
    virtual void setWidth(std::int16_t width) { cx = width; }
    virtual void setHeight(std::int16_t height) { cy = height; }
    /// The standard format has no place for these two.
    virtual void setWeight(std::uint16_t) {}
    virtual void setItalicAndCharset(std::uint16_t) {}

    CDialogTemplate(const CDialogTemplate&) = delete;
    CDialogTemplate& operator=(const CDialogTemplate&) = delete;

    std::uint32_t style = 0;
    std::uint32_t exStyle = 0;
    std::uint16_t itemCount = 0;
    std::int16_t x = 0, y = 0, cx = 0, cy = 0;  // dialog units
    char16_t* menu = nullptr;                   // name or ordinal, as read
    std::uint32_t menuLength = 0;               // units, of a name with its terminator
    char16_t* windowClass = nullptr;            // name or ordinal, as read
    std::uint32_t classLength = 0;
    char16_t* title = nullptr;
    std::uint32_t hasFont = 0;
    std::uint16_t pointSize = 0;
    char16_t* faceName = nullptr;
    std::uint8_t* items = nullptr;  // all control records; null when there are none
    std::uint32_t itemsSize = 0;    // bytes, meaningful with controls only

    /// Bytes that `parse` may read, set before it; `load` sets the resource's size.
    std::uint32_t dataSize = 0;

protected:
    /// What the formats have in common, in the order of the data. A reader that runs past the data fails for good; the
    /// booleans are false then and when memory runs out.
    void readPlace(ByteReader& reader);
    bool readNamesAndTitle(ByteReader& reader);
    bool readFaceName(ByteReader& reader);
    bool readItems(ByteReader& reader, std::span<const std::uint8_t> bytes, std::size_t fixedSize, bool countsItself);

    /// Length in bytes of a template whose header and font block have these fixed sizes.
    std::size_t length(std::size_t headerSize, std::size_t fontFieldsSize) const;
    void writePlace(ByteWriter& writer) const;
    void writeNamesAndTitle(ByteWriter& writer) const;
    void writeFaceName(ByteWriter& writer) const;
    void writeItems(ByteWriter& writer) const;

    /// `load` for one of the formats.
    int loadFormat(void* module, const char* name, bool extended);
    void release();
};

/// A template in the extended format.
class CDialogTemplateEx : public CDialogTemplate {
public:
    CDialogTemplateEx() = default;
    ~CDialogTemplateEx() override;
    int parse(const void* data) override;
    int load(void* module, const char* name) override;
    int write(void* buffer, std::int32_t bufferSize) override;
    void setWeight(std::uint16_t value) override { weight = value; }
    void setItalicAndCharset(std::uint16_t value) override { italicAndCharset = value; }

    std::uint16_t version = 0;
    std::uint16_t signature = 0;
    std::uint32_t helpId = 0;
    std::uint16_t weight = 0;
    std::uint16_t italicAndCharset = 0;  // italic in the low byte
};

}  // namespace tamrix
