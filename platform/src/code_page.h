// One ANSI or OEM code page as tables, made once from the C library's converter.
//
// A character is a 16-bit number here: a single byte's value, or lead byte * 256 + trail byte.
#ifndef TAMRIX_PLATFORM_CODE_PAGE_H
#define TAMRIX_PLATFORM_CODE_PAGE_H

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace standin {

class CodePage {
public:
    /// The table of a code page, made at its first use; null for a number that the stand-in doesn't know, and where the
    /// system lacks its converter or Unicode's case pairs.
    static const CodePage* find(UINT number);

    UINT number() const { return number_; }
    bool isLead(BYTE value) const;

    /// Takes the next character off a text that isn't empty; a lead byte at its very end, or before a
    /// terminator, is a character of its own.
    WORD take(std::string_view& text) const;

    std::optional<WCHAR> toUnicode(WORD character) const;
    std::optional<WORD> fromUnicode(WCHAR unit) const;

    /// The character's partner in case, or the character itself where it has none in this code page. As on the platform
    /// the way leads through Unicode, so a character without a Unicode value becomes the default one. The result is
    /// never wider than the character.
    WORD upper(WORD character) const { return inCase(character, true); }
    WORD lower(WORD character) const { return inCase(character, false); }

    /// What the platform puts for a character that has no Unicode value.
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

/// The upper case of a 16-bit unit by the simple Unicode mapping, whatever the process's locale.
WCHAR upperUnit(WCHAR unit);
WCHAR lowerUnit(WCHAR unit);

}  // namespace standin

#endif
