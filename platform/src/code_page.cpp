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
    BYTE leads[4];  // first and last lead byte of up to two ranges, as the platform publishes them; 0: none
};

constexpr Source kSources[] = {
    {437, "CP437", {}},           {850, "CP850", {}},           {932, "CP932", {0x81, 0x9F, 0xE0, 0xFC}},
    {936, "CP936", {0x81, 0xFE}}, {949, "CP949", {0x81, 0xFE}}, {950, "CP950", {0x81, 0xFE}},
    {1251, "CP1251", {}},         {1252, "CP1252", {}},
};

const Source* sourceOf(UINT number) {
    for (const Source& source : kSources)
        if (source.number == number) return &source;
    return nullptr;
}

// A converter of the C library in one direction, asked one character at a time.
class Converter {
public:
    Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
    ~Converter() {
        if (usable()) iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool usable() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

    // The size of the result, 0 when the input doesn't convert whole.
    std::size_t convert(char* input, std::size_t size, char* output, std::size_t capacity) {
        std::size_t left = capacity;
        iconv(handle_, nullptr, nullptr, nullptr, nullptr);
        if (iconv(handle_, &input, &size, &output, &left) != 0 || size != 0) return 0;
        // Some converters hold a character back to see what follows it.
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
    // The platform's simple case pairs go both ways: the micro sign and the dotless i stay as they are.
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
    if (!page) page.reset(new CodePage(number));
    return page.get();
}

CodePage::CodePage(UINT number) : number_(number), units_(0x10000), characters_(0x10000) {
    load(sourceOf(number)->converterName);
}

bool CodePage::isLead(BYTE value) const {
    const BYTE* leads = sourceOf(number_)->leads;
    return value >= 0x80 && ((value >= leads[0] && value <= leads[1]) || (value >= leads[2] && value <= leads[3]));
}

void CodePage::set(WORD character, WCHAR unit) {
    units_[character] = unit;
    if (!characters_[unit]) characters_[unit] = character;
}

void CodePage::load(const char* converterName) {
    Converter decode("UTF-16LE", converterName);
    Converter encode(converterName, "UTF-16LE");
    if (!decode.usable() || !encode.usable()) return;

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
        // Several characters may share a Unicode value; the converter knows which one it goes back to.
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
}

WORD CodePage::take(std::string_view& text) const {
    const auto first = static_cast<BYTE>(text[0]);
    const bool isDouble = isLead(first) && text.size() > 1;
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
    const auto unit = toUnicode(character);
    if (!unit) return character;
    const auto mapped = fromUnicode(upper ? upperUnit(*unit) : lowerUnit(*unit));
    const bool sameWidth = mapped && (*mapped > 0xFF) == (character > 0xFF);
    return sameWidth ? *mapped : character;
}

}  // namespace standin
