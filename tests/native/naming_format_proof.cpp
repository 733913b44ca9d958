// The naming format proved by trying all names there are of a kind: all of one and two bytes under each code page,
// against the rules as they are stated, and all of up to six characters over the bytes that matter. Of the latter it is
// shown that decoding gives back the name. Where that holds no two names share a form: one form decodes to one name.
// Compiled optimised and without sanitizers, from the codec's own sources.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>

#include "frame/settings.h"
#include "macnames/name_codec.h"
#include "published_tables.h"

namespace {

using testing_support::imagesInMacintosh;
using testing_support::imagesInWindows;

const std::string kToWindows = imagesInWindows();
const std::string kToMac = imagesInMacintosh();

/// One way to be set up, with what the statement of the rules needs to know of it.
struct Setup {
    int codePage;
    std::uint16_t oemCodePage;
    unsigned char open, close;
    tamrix::LeadByteTable leads = testing_support::leadBytesOf(codePage);
    tamrix::DefaultQuotes set = tamrix::defaultQuotes(leads.hasLeadBytes != 0);
    const tamrix::CharacterTable* table = tamrix::chooseTranslator(oemCodePage, leads.hasLeadBytes != 0).table;
    tamrix::NameRules rules =
        tamrix::makeNameRules({const_cast<unsigned char*>(set.chars), set.count, open, close}, leads, table);

    bool quotes(char byte) const {
        return std::string_view(reinterpret_cast<const char*>(set.chars), static_cast<std::size_t>(set.count))
                   .find(byte) != std::string_view::npos;
    }
    bool accepts(int value) const {
        return value == ' ' || value == '.' || (value < 256 && quotes(static_cast<char>(value)));
    }
    /// The table is for the Western code pages.
    bool translates() const { return codePage == 1252 && (oemCodePage == 437 || oemCodePage == 850); }
    char image(const std::string& images, char byte) const {
        return translates() ? images[static_cast<unsigned char>(byte)] : byte;
    }
};

[[noreturn]] void refuted(const char* what, const Setup& setup, std::string_view name) {
    std::printf("code pages %d and %d, %s:", setup.codePage, setup.oemCodePage, what);
    for (const char byte : name) std::printf(" %02X", static_cast<unsigned char>(byte));
    std::printf("\n");
    std::exit(1);
}

// The rules as stated, for names short enough not to care for speed.

std::string quote(const Setup& setup, char byte) {
    const std::string digits = std::to_string(1000 + static_cast<unsigned char>(byte)).substr(1);
    return static_cast<char>(setup.open) + digits + static_cast<char>(setup.close);
}

std::string statedWindows(const Setup& setup, std::string_view name) {
    std::string windows;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const char c = name[i];
        if (setup.leads.leads(c)) {
            // A lone one ends the name, and what stands before it is last.
            if (i + 1 == name.size()) return statedWindows(setup, name.substr(0, i));
            windows += name.substr(i++, 2);
            // A final period or space is quoted by its value, also as a trail byte.
            if (i + 1 == name.size() && (name[i] == ' ' || (name[i] == '.' && windows.size() <= 2)))
                windows.replace(windows.size() - 1, 1, quote(setup, name[i]));
            continue;
        }
        const bool last = i + 1 == name.size();
        const bool wouldDrop = last && (c == ' ' || (c == '.' && !(i >= 2 && setup.leads.leads(name[i - 1]))));
        windows += wouldDrop || setup.quotes(c) ? quote(setup, c) : std::string(1, setup.image(kToWindows, c));
    }
    return windows;
}

/// The byte for which a quote stands at the start of `text`, -1 for none.
int quotedByte(const Setup& setup, std::string_view text) {
    if (text.size() < 5 || text[0] != static_cast<char>(setup.open) || text[4] != static_cast<char>(setup.close))
        return -1;
    for (int i = 1; i < 4; ++i)
        if (text[static_cast<std::size_t>(i)] < '0' || text[static_cast<std::size_t>(i)] > '9') return -1;
    const int value = (text[1] - '0') * 100 + (text[2] - '0') * 10 + text[3] - '0';
    return setup.accepts(value) ? value : -1;
}

std::string statedMac(const Setup& setup, std::string_view windows) {
    std::string name;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const int quoted = quotedByte(setup, windows.substr(i));
        if (setup.leads.leads(windows[i])) {
            if (i + 1 == windows.size()) break;
            name += windows.substr(i++, 2);
        } else if (quoted >= 0) {
            name += static_cast<char>(quoted);
            i += 4;
        } else {
            name += windows[i] == '\\' ? '\0' : setup.image(kToMac, windows[i]);
        }
    }
    return name;
}

// The names, and what is found of them.

struct Findings {
    long names = 0, unfinished = 0, holdNumber = 0, changedByTable = 0;
};

/// A translation's whole result, in a buffer that is used again.
std::string_view translated(decltype(&tamrix::macToWindows) translation, const Setup& setup, const char* name,
                            std::array<char, 64>& buffer) {
    const int size = translation(setup.rules, buffer.data(), name, static_cast<unsigned>(buffer.size()));
    if (size < 1) refuted("does not fit", setup, name);
    return {buffer.data(), static_cast<std::size_t>(size) - 1};
}

/// Names that no code page holds: they end within a character, or in one whose trail byte is a space or a period.
bool isUnfinished(const Setup& setup, std::string_view name) {
    std::size_t i = 0;
    while (i < name.size()) {
        const bool isDouble = setup.leads.leads(name[i]);
        i += isDouble ? 2 : 1;
        if (isDouble && (i > name.size() || (i == name.size() && (name[i - 1] == ' ' || name[i - 1] == '.'))))
            return true;
    }
    return false;
}

/// Whether the name, written without quoting anything, holds an acceptable bracketed number.
bool holdsNumber(const Setup& setup, std::string_view name) {
    char plain[8];
    for (std::size_t i = 0; i < name.size(); ++i)
        plain[i] = setup.quotes(name[i]) ? '\0' : setup.image(kToWindows, name[i]);
    for (std::size_t i = 0; i + 5 <= name.size(); i += setup.leads.leads(name[i]) ? 2 : 1)
        if (quotedByte(setup, {plain + i, name.size() - i}) >= 0) return true;
    return false;
}

void tryRoundTrip(const Setup& setup, std::string_view name, Findings& findings) {
    std::array<char, 64> windows, back;
    ++findings.names;
    translated(tamrix::macToWindows, setup, name.data(), windows);
    const std::string_view returned = translated(tamrix::windowsToMac, setup, windows.data(), back);
    if (isUnfinished(setup, name)) {
        ++findings.unfinished;
    } else if (holdsNumber(setup, name)) {
        ++findings.holdNumber;
        if (returned == name) refuted("comes back though it holds a number", setup, name);
    } else if (returned != name) {
        ++findings.changedByTable;
        std::string expected(name);
        for (char& byte : expected) byte = byte == '\xD0' ? '\xF5' : byte == '\xF5' ? '\xE8' : byte;
        if (!setup.translates() || returned != expected) refuted("does not come back", setup, name);
    }
}

void report(const Setup& setup, const char* kind, const Findings& f) {
    std::printf(
        "code pages %d and %d, brackets %02X %02X, %s: %ld names; %ld hold an acceptable number, %ld are changed by "
        "the "
        "table's D0 and F5, %ld end within a character\n",
        setup.codePage, setup.oemCodePage, setup.open, setup.close, kind, f.names, f.holdNumber, f.changedByTable,
        f.unfinished);
}

void tryShortNames(const Setup& setup) {
    Findings findings;
    std::map<std::string, std::string> nameOfForm;
    for (int first = 1; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const char bytes[] = {static_cast<char>(first), static_cast<char>(second), 0};
            const std::string name(bytes);
            std::array<char, 64> buffer;
            const std::string windows(translated(tamrix::macToWindows, setup, bytes, buffer));
            if (windows != statedWindows(setup, name)) refuted("is not written as stated", setup, name);
            if (translated(tamrix::windowsToMac, setup, bytes, buffer) != statedMac(setup, name))
                refuted("is not read as stated", setup, name);
            tryRoundTrip(setup, name, findings);
            const auto [other, isNew] = nameOfForm.emplace(windows, name);
            // F5 is written as E8 is.
            const bool shares = !isNew && !isUnfinished(setup, name) && !isUnfinished(setup, other->second);
            if (shares && (name + other->second).find('\xF5') == std::string::npos)
                refuted("shares its form", setup, name);
        }
    }
    report(setup, "one and two bytes", findings);
}

void tryNamesOver(const Setup& setup, std::string_view alphabet) {
    Findings findings;
    for (std::size_t length = 1; length <= 6; ++length) {
        char name[8] = {};
        std::array<std::size_t, 6> digits{};
        for (std::size_t at = 0; at < length;) {
            for (std::size_t i = 0; i < length; ++i) name[i] = alphabet[digits[i]];
            tryRoundTrip(setup, {name, length}, findings);
            for (at = 0; at < length && ++digits[at] == alphabet.size(); ++at) digits[at] = 0;
        }
    }
    report(setup, "up to six bytes", findings);
}

}  // namespace

int main() {
    // 852 is no Western code page: the table is off.
    const std::pair<int, std::uint16_t> codePages[] = {{1252, 437}, {1252, 850}, {1252, 852}, {932, 932},
                                                       {936, 936},  {949, 949},  {950, 950}};
    for (const auto& [codePage, oem] : codePages) tryShortNames({codePage, oem, '[', ']'});
    tryShortNames({1252, 437, 0xAB, 0xBB});
    // A letter, digits that make numbers of the space, the period, the colon and none, quoted and plain high bytes.
    tryNamesOver({1252, 437, '[', ']'}, "[]0234568a: .\x87\x88\xD0");
    tryNamesOver({932, 932, '[', ']'}, "[]023458a: .\\\x81\x95\xFD");
    return 0;
}
