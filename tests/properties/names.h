// Names between Macintosh and Windows, and the character table: held to the rules as they are stated, in pieces that
// are written whole or not at all, into blocks of every size; and names come back as they were.
#pragma once

#include <algorithm>
#include <cctype>

#include "macnames/name_settings.h"
#include "properties/property.h"
#include "tamrix32/macnames.h"

namespace properties {

/// What each Windows byte from 0x7F on is on a Macintosh; the bytes before are their own images.
inline const std::string kOnMacintosh =
    "\xD9\xDA\xDB\xDC\xC4\xAD\xC9\xA0\xBD\xB0\xB2\xB3\xB6\xCE\xDD\xDE\xDF\xE0\xD4\xD5\xD2\xD3\xA5\xD0\xD1\xE3"
    "\xAA\xB7\xB8\xCF\xE4\xE5\xB9\xCA\xC1\xA2\xA3\xBA\xB4\xE6\xA4\xAC\xA9\xBB\xC7\xC2\xE7\xA8\xE8\xA1\xB1\x8A"
    "\xC3\xAB\xB5\xA6\xC5\xC6\xD7\xBC\xC8\xE9\xEA\xEB\xC0\xCB\xEC\xED\xCC\x80\x81\xAE\x82\xEE\x83\xEF\xF0\xF1"
    "\xF2\xF3\xF4\xF5\x84\xF6\xF7\xF8\xCD\x85\xF9\xAF\xFA\xFB\xFC\x86\xFD\xFE\xA7\x88\x87\x89\x8B\x95\x8C\xBE"
    "\x8D\x8F\x8E\x90\x91\x93\x92\x94\xE2\xFF\x96\x98\x97\x99\x9B\x9A\xD6\xBF\x9D\x9C\x9E\x9F\xE1\x7F\xD8";

/// The quote set that applies while none is configured.
inline std::string defaultSet(bool doubleByte) {
    std::string set = "\"*/:<>?\\|@`" + std::string(1, '\0');
    for (char control = 1; control <= 0x1F; ++control) set += control;
    return set + (doubleByte ? "\x7F\x80\xA0\xFD\xFE\xFF"
                             : "\x7F\x87\x89\x8F\x90\x91\x92\x93\x94\x95\x97\x98\x99\x9C\x9D\x9E\xB7"
                               "\xD5\xD8\xDA\xDB\xDD\xDE\xDF\xE0\xE1\xE2\xE4\xE5\xE8\xFF");
}

/// What a translation writes, piece by piece.
struct Stated {
    struct Piece {
        std::string bytes;
        bool leavesOne = false;  // written only where a byte is left after it
    };
    std::vector<Piece> pieces;
    std::size_t capacity = 1;  // what is measured
    int numbers = 0;           // pieces that are, or were, a bracketed number
    bool finished = true;      // not cut within a character, and none was cut to quote its last byte

    /// The result for a block of `size` bytes, which is not zero, and the bytes before the terminator.
    std::pair<int, std::string> into(std::size_t size) const {
        std::string written;
        for (const auto& [bytes, leavesOne] : pieces) {
            if (written.size() == size) break;
            if (size - written.size() < bytes.size() + leavesOne) return {-1, written};
            written += bytes;
        }
        if (written.size() == size) return {-1, written.substr(0, size - 1)};
        return {static_cast<int>(written.size()) + 1, written};
    }
};

/// Everything that names are translated by.
struct Naming {
    tamrix::LeadByteTable leads;
    bool translates;  // through the character table
    std::string set;
    unsigned char open = '[', close = ']';

    const tamrix::CharacterTable* table() const { return translates ? &tamrix::kCharacterTable : nullptr; }
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
        const std::string digits = name.substr(at + 1, 3);
        if (digits.find_first_not_of("0123456789") != std::string::npos) return -1;
        const int value = std::stoi(digits);
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
            stated.pieces.push_back({quoted ? quote(byte) : single ? std::string(1, onWindows(byte)) : character});
            stated.numbers += quoted;
            stated.capacity += single && inSet(byte) ? 5 : character.size();
            count += stated.pieces.back().bytes.size();
            at += character.size();
        }
        const auto drops = [&](std::size_t counted) {
            if (at == 0 || quoted) return false;
            return name[at - 1] == ' ' || (name[at - 1] == '.' && !(counted > 2 && leads.leads(name[at - 2])));
        };
        stated.finished = at == name.size();
        if (drops(stated.capacity - 1)) stated.capacity += 4;
        if (!drops(count)) return stated;
        std::string& last = stated.pieces.back().bytes;
        stated.finished = stated.finished && last.size() == 1;
        last.pop_back();
        stated.pieces.push_back({quote(name[at - 1]), true});
        ++stated.numbers;
        return stated;
    }

    Stated toMacintosh(const std::string& name) const {
        Stated stated;
        for (std::size_t i = 0; i < name.size(); stated.capacity += stated.pieces.back().bytes.size()) {
            const bool isDouble = leads.leads(name[i]);
            if (isDouble && i + 1 == name.size()) break;
            const int value = isDouble ? -1 : number(name, i);
            const char plain = name[i] == '\\' ? '\0' : onMacintosh(name[i]);
            const std::string single(1, value < 0 ? plain : static_cast<char>(value));
            stated.pieces.push_back({isDouble ? name.substr(i, 2) : single, isDouble});
            stated.numbers += value >= 0;
            i += isDouble ? 2 : value < 0 ? 1 : 5;
        }
        return stated;
    }
};

/// Holds the functions of one direction to its statement in blocks of up to one byte more than is measured: of every
/// size, or only of those that are large enough. A block of no bytes gives `intoNothing`.
template <auto length, auto copy, auto inPlace, int intoNothing>
void holdDirection(const std::string& name, const Stated& stated, bool everySize) {
    const Exact source(name);
    require(length(source) == static_cast<int>(stated.capacity), "the capacity measured");
    for (std::size_t size = everySize ? 0 : stated.capacity; size <= stated.capacity + 1; ++size) {
        const auto limit = static_cast<unsigned>(size);
        const auto [result, written] = size ? stated.into(size) : std::pair(intoNothing, std::string());
        const Block copied(size);
        require(copy(copied, source, limit) == result, "result of a copy");
        require(!size || std::memcmp(copied, written.c_str(), written.size() + 1) == 0, "bytes of a copy");
        if (!everySize) continue;
        const Block changed(std::max(size, name.size() + 1));
        std::memcpy(changed, source, name.size() + 1);
        require(inPlace(changed, limit) == result, "result in place");
        require(std::strcmp(changed, size ? written.c_str() : source) == 0, "name in place");
    }
}

/// One name both ways, and there and back.
inline void holdName(const Naming& naming, const std::string& name, bool everySize) {
    const auto holdMacintosh = holdDirection<OStoAFPLen, OStoAFPCopy, OStoAFP, 0>;
    const Stated windows = naming.toWindows(name);
    holdDirection<AFPtoOSLen, AFPtoOSCopy, AFPtoOS, -1>(name, windows, everySize);
    holdMacintosh(name, naming.toMacintosh(name), everySize);
    const std::string form = windows.into(windows.capacity).second;
    const Stated back = naming.toMacintosh(form);
    holdMacintosh(form, back, everySize);
    // Brackets that numbers or double-byte characters can share bytes with, or an unquoted separator, make no usable
    // format.
    const bool usable = !std::isdigit(naming.open) && naming.open != naming.close && naming.inSet('\\') &&
                        !naming.leads.leads(static_cast<char>(naming.close));
    if (!usable || !windows.finished || back.numbers != windows.numbers) return;
    std::string expected = name;
    for (char& byte : expected)  // two bytes share their images with others
        if (naming.translates && !naming.inSet(byte)) byte = byte == '\xD0' ? '\xF5' : byte == '\xF5' ? '\xE8' : byte;
    require(back.into(back.capacity).second == expected, "a name does not come back");
}

/// The character table over a whole string, in place and copied.
inline void holdTable(const std::string& text, const std::string& images, decltype(&SBCS_AtoI) inPlace,
                      decltype(&SBCS_AtoI_Copy) copy, decltype(&SBCS_AtoI_nCopy) boundedCopy) {
    const Exact source(text), changed(text);
    inPlace(changed);
    require(changed.bytes() == images + '\0', "character table in place");
    leaves("character table copied", images + '\0', [&](char* b) { return copy(b, source), true; });
    for (unsigned size = 0; size <= text.size() + 2; ++size) {
        std::string padded = images;
        padded.resize(size);
        leaves("character table into a block", padded, [&](char* b) { return boundedCopy(b, source, size), true; });
    }
}

/// What applies under a code page while nothing is configured.
struct Standard {
    Naming naming;
    tamrix::NameRules rules;
};

inline Standard standardFor(unsigned page, std::uint16_t oem) {
    const tamrix::LeadByteTable leads = leadBytesOf(page);
    const bool isDouble = leads.hasLeadBytes != 0, isWestern = page == 1252 && (oem == 437 || oem == 850);
    const Naming naming = {leads, isWestern, defaultSet(isDouble)};
    const auto chosen = tamrix::chooseTranslator(oem, isDouble);
    require(chosen.table == naming.table() && chosen.oemCodePage == oem, "chooseTranslator");
    return {naming, tamrix::makeNameRules(tamrix::defaultQuotes(isDouble), leads, chosen.table)};
}

/// An input of these bytes tries only blocks that are large enough.
inline constexpr unsigned kLargeBlocks = 0x80;

inline void property(Input& input) {
    static const Standard standards[] = {standardFor(1252, 437), standardFor(1251, 866), standardFor(932, 932),
                                         standardFor(936, 936),  standardFor(949, 949),  standardFor(950, 950),
                                         standardFor(1252, 850), standardFor(1252, 852)};
    const Standard& standard = input.oneOf(standards);
    Naming naming = standard.naming;
    tamrix::nameRules = standard.rules;
    const unsigned kind = input.byte();
    if (kind % 2) {
        naming.leads = input.leadBytes();
        naming.translates = !naming.leads.hasLeadBytes;
        const char brackets[] = "[]{}()<>09:\\\xAB\xBB\x81";
        naming.open = static_cast<unsigned char>(input.oneOf(brackets));
        naming.close = static_cast<unsigned char>(input.oneOf(brackets));
        naming.set = input.bytes(80) + (input.byte() % 2 ? defaultSet(false) : "");
        if (!naming.open || !naming.close) return;
        tamrix::QuoteSettings quotes = {{}, naming.open, naming.close};
        for (const char byte : naming.set) quotes.inSet[static_cast<unsigned char>(byte)] = true;
        tamrix::nameRules = tamrix::makeNameRules(quotes, naming.leads, naming.table());
    }
    tamrix::sbcsTranslator.table = naming.table();
    const std::string name = input.rest().substr(0, 60);
    holdName(naming, name, kind != kLargeBlocks);
    if (kind == kLargeBlocks) return;
    std::string onWindows = name, onMacintosh = name;
    for (char& byte : onWindows) byte = naming.onWindows(byte);
    for (char& byte : onMacintosh) byte = naming.onMacintosh(byte);
    holdTable(name, onWindows, SBCS_AtoI, SBCS_AtoI_Copy, SBCS_AtoI_nCopy);
    holdTable(name, onMacintosh, SBCS_ItoA, SBCS_ItoA_Copy, SBCS_ItoA_nCopy);
}

/// All names of one and two bytes under each standard and between brackets AB and BB, and all of up to six bytes over
/// those that matter: digits that make numbers of the space, the period, the colon and none, quoted and plain high
/// bytes.
inline std::vector<Inputs> exhaustive() {
    std::vector<Inputs> all = {{{0, '\1', 0, 12, 13, 0, 1}, kAnyByte, 2},
                               {{0, '\x80'}, "[]023458: .\x87\xD0", 6},
                               {{2, '\x80'}, "[]02458 .\\\x81\xFD", 6}};
    for (char standard = 0; standard < 8; ++standard) all.push_back({{standard, 0}, kAnyByte, 2});
    return all;
}

}  // namespace properties
