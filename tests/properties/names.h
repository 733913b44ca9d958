// Names between Macintosh and Windows, and the character table: held to the rules as they are stated, in pieces that
// are written whole or not at all, into blocks of every size; and names come back as they were.
#pragma once

#include <algorithm>
#include <cctype>

#include "code_pages.h"
#include "entry/entry.h"
#include "macnames/name_settings.h"
#include "properties/property.h"
#include "tamrix32/macnames.h"

namespace properties {

inline std::string bytesOfHex(const std::string& hex) {
    std::string bytes;
    for (std::size_t i = 0; i < hex.size(); i += 2)
        bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    return bytes;
}

/// What each Windows byte from 0x7F on is on a Macintosh; the bytes before are their own images.
inline const std::string kOnMacintosh = bytesOfHex(
    "D9DADBDCC4ADC9A0BDB0B2B3B6CEDDDEDFE0D4D5D2D3A5D0D1E3AAB7B8CFE4E5B9"
    "CAC1A2A3BAB4E6A4ACA9BBC7C2E7A8E8A1B18AC3ABB5A6C5C6D7BCC8E9EAEBC0"
    "CBECEDCC8081AE82EE83EFF0F1F2F3F4F584F6F7F8CD85F9AFFAFBFC86FDFEA7"
    "8887898B958CBE8D8F8E9091939294E2FF969897999B9AD6BF9D9C9E9FE17FD8");

/// The quote set that applies while none is configured.
inline std::string defaultSet(bool doubleByte) {
    std::string set = "\"*/:<>?\\|@`" + std::string(1, '\0');
    for (char control = 1; control <= 0x1F; ++control) set += control;
    return set +
           bytesOfHex(doubleByte ? "7F80A0FDFEFF" : "7F87898F9091929394959798999C9D9EB7D5D8DADBDDDEDFE0E1E2E4E5E8FF");
}

/// A result, and the bytes before the terminator.
using Outcome = std::pair<int, std::string>;

/// What a translation writes, piece by piece.
struct Stated {
    std::vector<std::string> pieces;
    std::string last;          // replaces the last byte
    std::size_t capacity = 1;  // what is measured
    std::size_t spare = 0;     // bytes that a double-byte character must leave free
    int numbers = 0;           // pieces that are, or were, a bracketed number
    bool finished = true;      // not cut within a character, and none was cut to quote its last byte

    Outcome into(std::size_t size) const {
        std::string bytes;
        for (const std::string& piece : pieces) {
            if (bytes.size() == size) break;
            if (size - bytes.size() < piece.size() + (piece.size() == 2 ? spare : 0)) return {-1, bytes};
            bytes += piece;
        }
        if (bytes.size() == size) return {-1, bytes.substr(0, size - 1)};
        if (!last.empty()) {
            const bool fits = size - bytes.size() >= 5;
            bytes.pop_back();
            if (!fits) return {-1, bytes};
            bytes += last;
        }
        return {static_cast<int>(bytes.size()) + 1, bytes};
    }
};

/// Everything that names are translated by.
struct Naming {
    tamrix::LeadByteTable leads;
    bool translates;  // through the character table
    std::string set;
    unsigned char open = '[', close = ']';

    /// Makes them those of the process.
    void use() const {
        tamrix::QuoteSettings quotes = {{}, open, close};
        for (const char byte : set) quotes.inSet[static_cast<unsigned char>(byte)] = true;
        tamrix::sbcsTranslator.table = translates ? &tamrix::kCharacterTable : nullptr;
        tamrix::nameRules = tamrix::makeNameRules(quotes, leads, tamrix::sbcsTranslator.table);
    }
    bool inSet(char byte) const { return set.find(byte) != std::string::npos; }
    char onMacintosh(char byte) const {
        const auto value = static_cast<unsigned char>(byte);
        return translates && value >= 0x7F ? kOnMacintosh[value - 0x7Fu] : byte;
    }
    /// The inverse, but for two bytes.
    char onWindows(char byte) const {
        if (!translates || static_cast<unsigned char>(byte) < 0x7F || byte == '\xD0') return byte;
        return byte == '\xF5' ? '\xAF' : static_cast<char>(0x7F + kOnMacintosh.find(byte));
    }
    std::string quote(char byte) const {
        const std::string digits = std::to_string(1000 + static_cast<unsigned char>(byte)).substr(1);
        return static_cast<char>(open) + digits + static_cast<char>(close);
    }
    /// The byte for which a number at `at` stands, -1 for none.
    int number(const std::string& name, std::size_t at) const {
        if (name.size() - at < 5 || name[at] != static_cast<char>(open) || name[at + 4] != static_cast<char>(close))
            return -1;
        int value = 0;
        for (std::size_t i = at + 1; i < at + 4; ++i) {
            if (name[i] < '0' || name[i] > '9') return -1;
            value = value * 10 + name[i] - '0';
        }
        return value == ' ' || value == '.' || (value < 256 && inSet(static_cast<char>(value))) ? value : -1;
    }

    Stated toWindows(const std::string& name) const {
        Stated stated;
        std::size_t count = 0, at = 0;
        bool quoted = false;
        for (const std::string& character : charactersOf(leads, name)) {
            const char byte = character[0];
            const bool single = character.size() == 1;
            const bool exempt = (static_cast<unsigned char>(byte) < 0x80 && std::isalnum(byte)) || byte == ' ';
            quoted = single && inSet(byte) && !exempt;
            stated.pieces.push_back(quoted ? quote(byte) : single ? std::string(1, onWindows(byte)) : character);
            stated.numbers += quoted;
            stated.capacity += single && inSet(byte) ? 5 : character.size();
            count += stated.pieces.back().size();
            at += character.size();
        }
        const auto drops = [&](std::size_t counted) {
            if (at == 0 || quoted) return false;
            return name[at - 1] == ' ' || (name[at - 1] == '.' && !(counted > 2 && leads.leads(name[at - 2])));
        };
        if (drops(count)) {
            stated.last = quote(name[at - 1]);
            stated.finished = stated.pieces.back().size() == 1;
            ++stated.numbers;
        }
        if (drops(stated.capacity - 1)) stated.capacity += 4;
        stated.finished = stated.finished && at == name.size();
        return stated;
    }

    Stated toMacintosh(const std::string& name) const {
        Stated stated;
        stated.spare = 1;
        for (std::size_t i = 0; i < name.size(); stated.capacity += stated.pieces.back().size()) {
            const bool isDouble = leads.leads(name[i]);
            if (isDouble && i + 1 == name.size()) break;
            const int value = isDouble ? -1 : number(name, i);
            const char plain = name[i] == '\\' ? '\0' : onMacintosh(name[i]);
            stated.pieces.push_back(isDouble ? name.substr(i, 2) : std::string(1, value < 0 ? plain : char(value)));
            stated.numbers += value >= 0;
            i += isDouble ? 2 : value < 0 ? 1 : 5;
        }
        return stated;
    }
};

/// Holds one direction to its statement in blocks of `smallest` bytes and up to one more than is measured.
template <typename Call>
void holdBlocks(const char* what, const Stated& stated, std::size_t smallest, int intoNothing, Call call) {
    for (std::size_t size = smallest; size <= stated.capacity + 1; ++size) {
        const Block block(size);
        const Outcome expected = size > 0 ? stated.into(size) : Outcome{intoNothing, ""};
        require(call(block, static_cast<unsigned>(size)) == expected.first, what);
        require(size == 0 || std::memcmp(block, expected.second.c_str(), expected.second.size() + 1) == 0, what);
    }
}

/// One name both ways, and there and back. Unless `everySize`, only into the blocks that are large enough.
inline void holdName(const Naming& naming, const std::string& name, bool everySize) {
    const auto holdMacintosh = [&](const Exact& source, const Stated& stated) {
        require(OStoAFPLen(source) == static_cast<int>(stated.capacity), "OStoAFPLen");
        holdBlocks("OStoAFPCopy", stated, everySize ? 0 : stated.capacity, 0,
                   [&](char* b, unsigned size) { return OStoAFPCopy(b, source, size); });
    };
    const Exact source(name);
    const Stated windows = naming.toWindows(name);
    require(AFPtoOSLen(source) == static_cast<int>(windows.capacity), "AFPtoOSLen");
    holdBlocks("AFPtoOSCopy", windows, everySize ? 0 : windows.capacity, -1,
               [&](char* b, unsigned size) { return AFPtoOSCopy(b, source, size); });
    holdMacintosh(source, naming.toMacintosh(name));

    const std::string form = windows.into(windows.capacity).second;
    const Stated back = naming.toMacintosh(form);
    holdMacintosh(Exact(form), back);
    // Brackets that numbers can share bytes with, or an unquoted separator, make no usable format.
    const bool usable = !std::isdigit(naming.open) && naming.open != naming.close && naming.inSet('\\');
    if (!usable || !windows.finished || back.numbers != windows.numbers) return;
    std::string expected = name;
    for (char& byte : expected)  // two bytes share their images with others
        if (naming.translates && !naming.inSet(byte)) byte = byte == '\xD0' ? '\xF5' : byte == '\xF5' ? '\xE8' : byte;
    require(back.into(back.capacity).second == expected, "a name does not come back");
}

inline void holdInPlace(const std::string& name, const Stated& stated, int (*translate)(char*, unsigned),
                        int intoNothing) {
    for (std::size_t size = 0; size <= stated.capacity + 1; ++size) {
        const Block block(std::max(size, name.size() + 1));
        std::memcpy(block, name.c_str(), name.size() + 1);
        const Outcome expected = size > 0 ? stated.into(size) : Outcome{intoNothing, name};
        require(translate(block, static_cast<unsigned>(size)) == expected.first, "result in place");
        require(std::strcmp(block, expected.second.c_str()) == 0, "name in place");
    }
}

/// The character table over a whole string, in place and copied.
template <typename Image>
void holdTable(const std::string& text, Image image, decltype(&SBCS_AtoI) inPlace, decltype(&SBCS_AtoI_Copy) copy,
               decltype(&SBCS_AtoI_nCopy) boundedCopy) {
    std::string images = text;
    for (char& byte : images) byte = image(byte);
    const Exact source(text), changed(text);
    inPlace(changed);
    require(static_cast<char*>(changed) == images, "character table in place");
    const Block copied(text.size() + 1);
    copy(copied, source);
    require(copied.bytes() == images + '\0', "character table copied");
    for (std::size_t size = 0; size <= text.size() + 2; ++size) {
        const Block block(size);
        boundedCopy(block, source, static_cast<unsigned>(size));
        std::string padded = images;
        padded.resize(size);
        require(block.bytes() == padded, "character table copied into a block");
    }
}

/// The settings of a process that was loaded under the code page: those that apply while none are configured. Loading
/// asks the platform, so the last ones are kept.
inline Naming loadedUnder(UINT page) {
    static UINT kept;
    static tamrix::NameRules rules;
    static tamrix::SbcsTranslator translator;
    if (page != kept) {
        require(testing_support::useCodePage(page), "useCodePage");
        tamrix::loadProcess();
        kept = page;
        rules = tamrix::nameRules;
        translator = tamrix::sbcsTranslator;
    }
    tamrix::nameRules = rules;
    tamrix::sbcsTranslator = translator;
    return {leadBytesOf(page), page == 1252, defaultSet(leadBytesOf(page).hasLeadBytes != 0)};
}

inline void property(Input& input) {
    static const std::vector<UINT> pages = testing_support::codePagesAmong({1252, 1251, 932, 936, 949, 950});
    Naming naming = loadedUnder(pages[input.byte() % pages.size()]);
    if (input.byte() % 2) {
        naming.leads = input.leadBytes();
        naming.translates = !naming.leads.hasLeadBytes;
        const char brackets[] = "[]{}()<>09:\\\xAB\xBB\x81";
        naming.open = static_cast<unsigned char>(input.oneOf(brackets));
        naming.close = static_cast<unsigned char>(input.oneOf(brackets));
        naming.set = input.bytes(80) + (input.byte() % 2 ? defaultSet(false) : "");
        if (!naming.open || !naming.close) return;
        naming.use();
    }
    const std::string name = input.rest().substr(0, 60);
    holdName(naming, name, true);
    holdInPlace(name, naming.toWindows(name), AFPtoOS, -1);
    holdInPlace(name, naming.toMacintosh(name), OStoAFP, 0);
    holdTable(
        name, [&](char b) { return naming.onWindows(b); }, SBCS_AtoI, SBCS_AtoI_Copy, SBCS_AtoI_nCopy);
    holdTable(
        name, [&](char b) { return naming.onMacintosh(b); }, SBCS_ItoA, SBCS_ItoA_Copy, SBCS_ItoA_nCopy);
}

}  // namespace properties
