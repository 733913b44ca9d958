// An ANSI or OEM code page as tables, which are created once with the C library's converter.
//
// A character is a 16-bit number: the value of a single byte, or lead byte * 256 + trail byte.
#pragma once

#include <windows.h>

#include <optional>
#include <string_view>
#include <vector>

namespace standin {

class CodePage {
public:
    /// The tables of a code page, created at the first use. Null if the stand-in does not support the number, or if the
    /// system lacks the converter or Unicode's case pairs.
    static const CodePage* find(UINT number);

    UINT number() const { return number_; }
    bool isLead(BYTE value) const;

    /// Removes and returns the first character of a text that is not empty. A lead byte at the end, or before a
    /// terminator, is a character by itself.
    WORD take(std::string_view& text) const;

    std::optional<WCHAR> toUnicode(WORD character) const;
    std::optional<WORD> fromUnicode(WCHAR unit) const;

    /// The character in the other case, or the character itself if it has none in this code page. As on the platform,
    /// the conversion uses Unicode, so a character without a Unicode value becomes the default character. The result
    /// never has more bytes than the character.
    WORD upper(WORD character) const { return inCase(character, true); }
    WORD lower(WORD character) const { return inCase(character, false); }

    /// What the platform substitutes for a character that has no Unicode value.
    WCHAR defaultUnit() const { return number_ == 932 ? 0x30FB : u'?'; }

private:
    explicit CodePage(UINT number);
    bool load(const char* converterName);
    void complete();
    void set(WORD character, WCHAR unit);
    WORD inCase(WORD character, bool upper) const;

    UINT number_;
    std::vector<WCHAR> units_;      // by character; 0: none
    std::vector<WORD> characters_;  // by unit; 0: none
};

/// The active ANSI code page.
const CodePage& ansiCodePage();

/// The upper case of a 16-bit unit by the simple Unicode mapping, whatever the process's locale is.
WCHAR upperUnit(WCHAR unit);
WCHAR lowerUnit(WCHAR unit);

}  // namespace standin
