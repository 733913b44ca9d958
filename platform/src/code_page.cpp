#include "code_page.h"

#include <iconv.h>
#include <locale.h>
#include <wctype.h>

#include <array>
#include <memory>
#include <mutex>

namespace standin {
namespace {

struct Source {
    UINT number;
    const char* converterName;
    BYTE leads[4];  // first and last lead byte of up to two ranges, as documented by the platform; 0: none
};

constexpr Source kSources[] = {
    {437, "CP437", {}},           {850, "CP850", {}},
    {866, "CP866", {}},           {932, "CP932", {0x81, 0x9F, 0xE0, 0xFC}},
    {936, "CP936", {0x81, 0xFE}}, {949, "CP949", {0x81, 0xFE}},
    {950, "CP950", {0x81, 0xFE}}, {1251, "CP1251", {}},
    {1252, "CP1252", {}},         {10000, "MACINTOSH", {}},
};

// Characters that the platform converts in a different way than the C library, in both directions.
struct Addition {
    UINT number;
    WORD character;
    WCHAR unit;
};

constexpr Addition kAdditions[] = {
    {932, 0xA0, 0xF8F0},   {932, 0xFD, 0xF8F1},   {932, 0xFE, 0xF8F2},   {932, 0xFF, 0xF8F3},   {936, 0xFF, 0xF8F5},
    {949, 0xFF, 0xF8F7},   {950, 0xFF, 0xF8F8},   {950, 0xF9F9, 0x2550}, {950, 0xF9E9, 0x255E}, {950, 0xF9EA, 0x256A},
    {950, 0xF9EB, 0x2561}, {10000, 0xBD, 0x2126}, {10000, 0xC6, 0x2206}, {10000, 0xF0, 0xF8FF},
};

// Areas for user-defined characters, from `first` to `last`. Their characters have consecutive units, from `unit` on.
// The user-defined characters of 936 outside these areas are omitted.
struct UserArea {
    UINT number;
    WORD first, last;
    BYTE trails[4];  // first and last trail byte of up to two ranges; 0: none
    WCHAR unit;
};

constexpr UserArea kUserAreas[] = {
    {936, 0xAAA1, 0xAFFE, {0xA1, 0xFE}, 0xE000},
    {936, 0xF8A1, 0xFEFE, {0xA1, 0xFE}, 0xE234},
    {936, 0xA140, 0xA7A0, {0x40, 0x7E, 0x80, 0xA0}, 0xE4C6},
    {949, 0xC9A1, 0xC9FE, {0xA1, 0xFE}, 0xE000},
    {949, 0xFEA1, 0xFEFE, {0xA1, 0xFE}, 0xE05E},
    {950, 0xFA40, 0xFEFE, {0x40, 0x7E, 0xA1, 0xFE}, 0xE000},
    {950, 0x8E40, 0xA0FE, {0x40, 0x7E, 0xA1, 0xFE}, 0xE311},
    {950, 0x8140, 0x8DFE, {0x40, 0x7E, 0xA1, 0xFE}, 0xEEB8},
    {950, 0xC6A1, 0xC8FE, {0x40, 0x7E, 0xA1, 0xFE}, 0xF6B1},
};

bool inRanges(const BYTE (&ranges)[4], unsigned value) {
    return value >= ranges[0] && ((value <= ranges[1]) || (value >= ranges[2] && value <= ranges[3]));
}

const Source* sourceOf(UINT number) {
    for (const Source& source : kSources)
        if (source.number == number) return &source;
    return nullptr;
}

// A converter of the C library in one direction, for one character at a time.
class Converter {
public:
    Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
    ~Converter() {
        if (usable()) iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool usable() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

    // Returns the size of the result in bytes, or 0 if the input cannot be converted completely.
    std::size_t convert(char* input, std::size_t size, char* output, std::size_t capacity) {
        std::size_t left = capacity;
        iconv(handle_, nullptr, nullptr, nullptr, nullptr);
        if (iconv(handle_, &input, &size, &output, &left) != 0 || size != 0) return 0;
        // Some converters buffer a character until they see the next one.
        if (iconv(handle_, nullptr, nullptr, &output, &left) != 0) return 0;
        return capacity - left;
    }

private:
    iconv_t handle_;
};

locale_t unicodeLocale() {
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
}

}  // namespace

WCHAR upperUnit(WCHAR unit) {
    if (unit < 0x80) return unit >= u'a' && unit <= u'z' ? static_cast<WCHAR>(unit - 0x20) : unit;
    const wint_t upper = towupper_l(unit, unicodeLocale());
    // The platform uses only case pairs that map in both directions, so the micro sign and the dotless i do not change.
    return towlower_l(upper, unicodeLocale()) == unit ? static_cast<WCHAR>(upper) : unit;
}

WCHAR lowerUnit(WCHAR unit) {
    if (unit < 0x80) return unit >= u'A' && unit <= u'Z' ? static_cast<WCHAR>(unit + 0x20) : unit;
    const wint_t lower = towlower_l(unit, unicodeLocale());
    return towupper_l(lower, unicodeLocale()) == unit ? static_cast<WCHAR>(lower) : unit;
}

const CodePage* CodePage::find(UINT number) {
    static std::mutex guard;
    static std::array<std::unique_ptr<const CodePage>, std::size(kSources)> pages;
    const Source* source = sourceOf(number);
    if (!source) return nullptr;
    const std::scoped_lock lock(guard);
    auto& page = pages[static_cast<std::size_t>(source - kSources)];
    if (!page) {
        std::unique_ptr<CodePage> made(new CodePage(number));
        if (made->load(source->converterName)) page = std::move(made);
    }
    return page.get();
}

CodePage::CodePage(UINT number) : number_(number), units_(0x10000), characters_(0x10000) {}

bool CodePage::isLead(BYTE value) const {
    return value >= 0x80 && inRanges(sourceOf(number_)->leads, value);
}

void CodePage::set(WORD character, WCHAR unit) {
    units_[character] = unit;
    characters_[unit] = character;
}

bool CodePage::load(const char* converterName) {
    Converter decode("UTF-16LE", converterName);
    Converter encode(converterName, "UTF-16LE");
    // Case pairs must be those of Unicode, whatever the process's locale is.
    if (!decode.usable() || !encode.usable() || !unicodeLocale()) return false;

    const auto add = [&](WORD character, std::size_t size) {
        const char high = static_cast<char>(character >> 8), low = static_cast<char>(character & 0xFF);
        char bytes[2] = {size == 2 ? high : low, low};
        char unit[8];
        if (decode.convert(bytes, size, unit, sizeof unit) != 2) {
            if (size == 1) set(character, character);
            return;
        }
        const auto value = MAKEWORD(unit[0], unit[1]);
        units_[character] = value;
        // Several characters may have the same Unicode value; the converter determines which one it maps back to.
        const std::size_t back = encode.convert(unit, 2, bytes, sizeof bytes);
        characters_[value] = back == size ? (size == 2 ? MAKEWORD(bytes[1], bytes[0]) : BYTE(bytes[0])) : character;
    };
    for (unsigned first = 0; first < 0x100; ++first) {
        if (!isLead(static_cast<BYTE>(first))) {
            add(static_cast<WORD>(first), 1);
            continue;
        }
        for (unsigned trail = 0x40; trail < 0xFF; ++trail) add(static_cast<WORD>(first << 8 | trail), 2);
    }
    complete();
    return true;
}

void CodePage::complete() {
    for (const UserArea& area : kUserAreas) {
        if (area.number != number_) continue;
        WCHAR unit = area.unit;
        for (unsigned character = area.first; character <= area.last; ++character)
            if (inRanges(area.trails, character & 0xFF)) set(static_cast<WORD>(character), unit++);
    }
    for (const Addition& addition : kAdditions) {
        if (addition.number != number_) continue;
        if (characters_[units_[addition.character]] == addition.character) characters_[units_[addition.character]] = 0;
        set(addition.character, addition.unit);
    }
}

WORD CodePage::take(std::string_view& text) const {
    const auto first = static_cast<BYTE>(text[0]);
    const bool isDouble = isLead(first) && text.size() > 1 && text[1] != 0;
    const WORD character = isDouble ? MAKEWORD(text[1], first) : WORD{first};
    text.remove_prefix(isDouble ? 2 : 1);
    return character;
}

std::optional<WCHAR> CodePage::toUnicode(WORD character) const {
    const WCHAR unit = units_[character];
    if (!unit && character) return std::nullopt;
    return unit;
}

std::optional<WORD> CodePage::fromUnicode(WCHAR unit) const {
    const WORD character = characters_[unit];
    if (!character && unit) return std::nullopt;
    return character;
}

WORD CodePage::inCase(WORD character, bool upper) const {
    const WCHAR unit = toUnicode(character).value_or(defaultUnit());
    const auto partner = fromUnicode(upper ? upperUnit(unit) : lowerUnit(unit));
    return partner.value_or(toUnicode(character) ? character : WORD{'?'});
}

}  // namespace standin
