// Win32 calls that depend on the active code pages: lead bytes, conversions, case.
#include <standin.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "code_page.h"
#include "faults.h"

namespace standin {
namespace {

// A code page for conversions only; setCodePages does not accept it.
constexpr UINT kMacRoman = 10000;

std::atomic<const CodePage*> activeAnsi{nullptr};
std::atomic<const CodePage*> activeOem{nullptr};

/// The selected code page, or the initial one, without which the stand-in cannot work.
const CodePage& activeOr(UINT initial, const CodePage* chosen) {
    const CodePage* page = chosen ? chosen : CodePage::find(initial);
    if (page) return *page;
    std::fprintf(stderr, "this system can't convert code page %u\n", initial);
    std::abort();
}

const CodePage& oemCodePage() {
    return activeOr(437, activeOem);
}

const CodePage* codePageOf(UINT number) {
    if (number == CP_ACP) return &ansiCodePage();
    if (number == CP_OEMCP) return &oemCodePage();
    return CodePage::find(number);
}

// The output of a conversion. Counts all units and writes those that fit; with a capacity of 0 it only counts.
template <typename Unit>
class Output {
public:
    Output(Unit* target, int capacity) : target_(target), capacity_(capacity) {}

    void put(Unit unit) {
        if (count_ < capacity_) target_[count_] = unit;
        ++count_;
    }

    int result() const { return capacity_ == 0 || count_ <= capacity_ ? count_ : 0; }

private:
    Unit* target_;
    int capacity_;
    int count_ = 0;
};

void putCharacter(Output<char>& output, WORD character) {
    if (character > 0xFF) output.put(static_cast<char>(HIBYTE(character)));
    output.put(static_cast<char>(LOBYTE(character)));
}

bool badArguments(const void* source, int length, const void* target, int capacity) {
    return !source || length == 0 || length < -1 || capacity < 0 || (capacity > 0 && !target);
}

std::string_view textOf(LPCSTR text, int length) {
    return {text, length < 0 ? std::strlen(text) + 1 : static_cast<std::size_t>(length)};
}

}  // namespace

const CodePage& ansiCodePage() {
    return activeOr(1252, activeAnsi);
}

bool setCodePages(UINT ansi, UINT oem) {
    const CodePage* ansiPage = CodePage::find(ansi);
    const CodePage* oemPage = CodePage::find(oem);
    if (!ansiPage || !oemPage || ansi == kMacRoman || oem == kMacRoman) return false;
    activeAnsi = ansiPage;
    activeOem = oemPage;
    return true;
}

}  // namespace standin

using namespace standin;

UINT WINAPI GetACP(void) {
    return ansiCodePage().number();
}

UINT WINAPI GetOEMCP(void) {
    return oemCodePage().number();
}

BOOL WINAPI IsDBCSLeadByte(BYTE value) {
    return ansiCodePage().isLead(value);
}

int WINAPI MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR text, int length, LPWSTR wide, int capacity) {
    if (faultDue(Kind::conversion)) return 0;
    const CodePage* page = codePageOf(codePage);
    if (!page || badArguments(text, length, wide, capacity)) return 0;
    Output<WCHAR> output(wide, capacity);
    for (std::string_view rest = textOf(text, length); !rest.empty();) {
        const auto unit = page->toUnicode(page->take(rest));
        if (!unit && (flags & MB_ERR_INVALID_CHARS)) return 0;
        output.put(unit.value_or(page->defaultUnit()));
    }
    return output.result();
}

int WINAPI WideCharToMultiByte(UINT codePage, DWORD, LPCWSTR wide, int length, LPSTR text, int capacity,
                               LPCSTR defaultCharacter, LPBOOL usedDefault) {
    const CodePage* page = codePageOf(codePage);
    if (!page || badArguments(wide, length, text, capacity)) return 0;
    const std::u16string_view units = length < 0 ? std::u16string_view(wide, std::u16string_view(wide).size() + 1)
                                                 : std::u16string_view(wide, static_cast<std::size_t>(length));
    std::string_view substitute = defaultCharacter ? defaultCharacter : "?";
    const WORD missing = substitute.empty() ? WORD{'?'} : page->take(substitute);
    bool anyMissing = false;
    Output<char> output(text, capacity);
    for (const WCHAR unit : units) {
        const auto character = page->fromUnicode(unit);
        anyMissing = anyMissing || !character;
        putCharacter(output, character.value_or(missing));
    }
    if (usedDefault) *usedDefault = anyMissing;
    return output.result();
}

int WINAPI LCMapStringA(LCID, DWORD flags, LPCSTR source, int length, LPSTR target, int capacity) {
    if (faultDue(Kind::conversion)) return 0;
    if (badArguments(source, length, target, capacity)) return 0;
    if (flags != LCMAP_UPPERCASE && flags != LCMAP_LOWERCASE) return 0;
    const CodePage& page = ansiCodePage();
    Output<char> output(target, capacity);
    // The other case never has more bytes, so source and target may be the same memory.
    for (std::string_view rest = textOf(source, length); !rest.empty();) {
        const WORD character = page.take(rest);
        putCharacter(output, flags == LCMAP_UPPERCASE ? page.upper(character) : page.lower(character));
    }
    return output.result();
}
