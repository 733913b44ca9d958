// Names between Macintosh and Windows, and the character table: conversions are compared with the rules, which say
// what is written in whole pieces, for blocks of every size. A name converts back to itself.
#pragma once

#include <algorithm>
#include <cctype>
#include <optional>

#include "macnames/name_settings.h"
#include "properties/property.h"
#include "tamrix32/macnames.h"

namespace properties {

/// The Macintosh byte for each Windows byte from 0x7F on; the bytes below are the same.
inline const std::string kOnMacintosh =
    "\xD9\xDA\xDB\xDC\xC4\xAD\xC9\xA0\xBD\xB0\xB2\xB3\xB6\xCE\xDD\xDE\xDF\xE0\xD4\xD5\xD2\xD3\xA5\xD0\xD1\xE3"
    "\xAA\xB7\xB8\xCF\xE4\xE5\xB9\xCA\xC1\xA2\xA3\xBA\xB4\xE6\xA4\xAC\xA9\xBB\xC7\xC2\xE7\xA8\xE8\xA1\xB1\x8A"
    "\xC3\xAB\xB5\xA6\xC5\xC6\xD7\xBC\xC8\xE9\xEA\xEB\xC0\xCB\xEC\xED\xCC\x80\x81\xAE\x82\xEE\x83\xEF\xF0\xF1"
    "\xF2\xF3\xF4\xF5\x84\xF6\xF7\xF8\xCD\x85\xF9\xAF\xFA\xFB\xFC\x86\xFD\xFE\xA7\x88\x87\x89\x8B\x95\x8C\xBE"
    "\x8D\x8F\x8E\x90\x91\x93\x92\x94\xE2\xFF\x96\x98\x97\x99\x9B\x9A\xD6\xBF\x9D\x9C\x9E\x9F\xE1\x7F\xD8";

/// The quote set if none is configured.
inline std::string defaultSet(bool doubleByte) {
    std::string set = "\"*/:<>?\\|@`" + std::string(1, '\0');
    for (char control = 1; control <= 0x1F; ++control) set += control;
    return set + (doubleByte ? "\x7F\x80\xA0\xFD\xFE\xFF"
                             : "\x7F\x87\x89\x8F\x90\x91\x92\x93\x94\x95\x97\x98\x99\x9C\x9D\x9E\xB7"
                               "\xD5\xD8\xDA\xDB\xDD\xDE\xDF\xE0\xE1\xE2\xE4\xE5\xE8\xFF");
}

/// What a conversion writes, piece by piece, up to the terminator.
struct Conversion {
    struct Piece {
        std::string bytes;
        std::size_t room = bytes.size();  // without so much room, neither this piece nor the next ones are written
    };
    int intoNothing;  // the result for a block of no bytes
    std::vector<Piece> pieces = {};
    std::size_t capacity = 1;  // the measured one
    std::string read = {};     // the converted name, without a lone lead byte
    bool splits = false;       // the last character, to quote its trail byte

    /// The result and the bytes for a block of `size` bytes. In a block that is full the terminator replaces the last
    /// byte.
    std::pair<int, std::string> into(std::size_t size) const {
        if (size == 0) return {intoNothing, ""};
        std::string written;
        for (const auto& [bytes, room] : pieces) {
            if (written.size() + room > size) return {-1, written.substr(0, size - 1) + '\0'};
            written += bytes;
        }
        return {static_cast<int>(written.size()), written};
    }
};

/// Everything that determines how names are converted.
struct Naming {
    tamrix::LeadByteTable leads;
    bool translates;  // by the character table
    std::string set;
    char open = '[', close = ']';
    tamrix::NameRules rules = {};

    const tamrix::CharacterTable* table() const { return translates ? &tamrix::kCharacterTable : nullptr; }
    bool inSet(char byte) const { return set.find(byte) != std::string::npos; }
    char onMacintosh(char byte) const {
        const auto value = static_cast<unsigned char>(byte);
        return translates && value >= 0x7F ? kOnMacintosh[value - 0x7Fu] : byte;
    }
    /// The inverse, except for two bytes.
    char onWindows(char byte) const {
        if (!translates || static_cast<unsigned char>(byte) < 0x7F || byte == '\xD0') return byte;
        return byte == '\xF5' ? '\xAF' : static_cast<char>(0x7F + kOnMacintosh.find(byte));
    }
    std::string quote(char byte) const {
        return open + std::to_string(1000 + static_cast<unsigned char>(byte)).substr(1) + close;
    }
    /// The byte of the quote at `at`; -1 if there is none that decodes.
    int quotedByte(const std::string& name, std::size_t at) const {
        if (name.size() - at < 5 || name[at] != open || name[at + 4] != close) return -1;
        const int value = std::atoi(name.substr(at + 1, 3).c_str());
        const char byte = static_cast<char>(value);
        const bool decodes = byte == ' ' || byte == '.' || inSet(byte);
        return decodes && name.compare(at, 5, quote(byte)) == 0 ? value : -1;
    }

    Conversion toWindows(const std::string& name) const {
        Conversion windows{-1};
        std::string& whole = windows.read;
        std::size_t count = 0;
        bool isQuoted = false;
        for (const std::string& character : charactersOf(leads, name)) {
            const char byte = character[0];
            const bool isSingle = character.size() == 1, isInSet = isSingle && inSet(byte);
            isQuoted = isInSet && byte != ' ' && !std::isalnum(static_cast<unsigned char>(byte));
            windows.pieces.push_back({isQuoted ? quote(byte) : isSingle ? std::string(1, onWindows(byte)) : character});
            windows.capacity += isInSet ? 5 : character.size();
            count += windows.pieces.back().bytes.size();
            whole += character;
        }
        const auto isDropped = [&](std::size_t counted) {  // Windows drops the last byte
            if (isQuoted || !whole.ends_with('.')) return !isQuoted && whole.ends_with(' ');
            return counted <= 2 || !leads.leads(whole[whole.size() - 2]);
        };
        if (isDropped(windows.capacity - 1)) windows.capacity += 4;
        if (isDropped(count)) {
            windows.splits = windows.pieces.back().bytes.size() == 2;
            windows.pieces.back().bytes.pop_back();
            windows.pieces.push_back({quote(whole.back()), 6});
        }
        windows.pieces.push_back({std::string(1, '\0')});
        return windows;
    }

    Conversion toMacintosh(const std::string& name) const {
        Conversion macintosh{0};
        for (std::size_t i = 0; i < name.size();) {
            const std::size_t size = leads.leads(name[i]) ? 2 : 1;
            if (i + size > name.size()) break;
            const int quoted = size == 1 ? quotedByte(name, i) : -1;
            const char image = quoted >= 0 ? static_cast<char>(quoted) : name[i] == '\\' ? '\0' : onMacintosh(name[i]);
            if (size == 2) macintosh.pieces.push_back({name.substr(i, 2), 3});
            if (size == 1) macintosh.pieces.push_back({std::string(1, image)});
            macintosh.capacity += size;
            i += quoted >= 0 ? 5 : size;
        }
        macintosh.pieces.push_back({std::string(1, '\0')});
        return macintosh;
    }
};

/// Compares the functions of one direction with its rules for blocks of up to one byte more than measured: of every
/// size, or only those that are large enough.
template <auto length, auto copy, auto inPlace>
void holdDirection(const std::string& name, const Conversion& conversion, bool everySize) {
    const Exact source(name);
    require(length(source) == static_cast<int>(conversion.capacity), "the capacity measured");
    for (std::size_t size = everySize ? 0 : conversion.capacity; size <= conversion.capacity + 1; ++size) {
        const auto [result, written] = conversion.into(size);
        const auto limit = static_cast<unsigned>(size);
        const Block copied(size);
        require(copy(copied, source, limit) == result, "result of a copy");
        require(std::memcmp(copied, written.data(), written.size()) == 0, "bytes of a copy");
        if (!everySize) continue;
        const Block changed(std::max(size, name.size() + 1));
        std::memcpy(changed, source, name.size() + 1);
        require(inPlace(changed, limit) == result, "result in place");
        require(std::strcmp(changed, size ? written.c_str() : source) == 0, "name in place");
    }
}

/// One name both ways, and there and back.
inline void holdName(const Naming& naming, const std::string& name, bool everySize) {
    const auto holdMacintosh = holdDirection<OStoAFPLen, OStoAFPCopy, OStoAFP>;
    const Conversion windows = naming.toWindows(name), macintosh = naming.toMacintosh(name);
    holdDirection<AFPtoOSLen, AFPtoOSCopy, AFPtoOS>(name, windows, everySize);
    holdMacintosh(name, macintosh, everySize);
    const std::string form = windows.into(windows.capacity).second.c_str();
    const Conversion back = naming.toMacintosh(form);
    holdMacintosh(form, back, everySize);
    // Brackets that numbers or double-byte characters can contain, or an unquoted separator, make no usable format; a
    // name that contains a number converts to a shorter one.
    const bool isUsable = !std::isdigit(static_cast<unsigned char>(naming.open)) && naming.open != naming.close &&
                          naming.inSet('\\') && !naming.leads.leads(naming.close);
    std::string expected = windows.read;
    if (!isUsable || windows.splits || back.capacity != expected.size() + 1) return;
    for (char& byte : expected)  // two bytes share their images with others
        if (naming.translates && !naming.inSet(byte)) byte = byte == '\xD0' ? '\xF5' : byte == '\xF5' ? '\xE8' : byte;
    require(back.into(back.capacity).second == expected + '\0', "a name does not convert back");
}

/// The character table over a whole string, in place and copied.
template <auto inPlace, auto copy, auto boundedCopy>
void holdTable(const std::string& text, std::string images) {
    images += '\0';
    const Exact source(text), changed(text);
    inPlace(changed);
    require(changed.bytes() == images, "character table in place");
    leaves("character table copied", images, [&](char* b) { return copy(b, source), true; });
    for (auto size = static_cast<unsigned>(text.size() + 3); size-- > 0;) {
        images.resize(size);
        leaves("character table into a block", images, [&](char* b) { return boundedCopy(b, source, size), true; });
    }
}

/// What applies under a code page if nothing is configured.
inline Naming standardFor(unsigned page, std::uint16_t oem) {
    const tamrix::LeadByteTable leads = leadBytesOf(page);
    Naming naming = {leads, page == 1252 && (oem == 437 || oem == 850), defaultSet(leads.hasLeadBytes)};
    const auto chosen = tamrix::chooseTranslator(oem, leads.hasLeadBytes);
    require(chosen.table == naming.table() && chosen.oemCodePage == oem, "chooseTranslator");
    naming.rules = tamrix::makeNameRules(tamrix::defaultQuotes(leads.hasLeadBytes), leads, chosen.table);
    return naming;
}

inline const Naming kStandards[] = {standardFor(1252, 437), standardFor(1251, 866), standardFor(932, 932),
                                    standardFor(936, 936),  standardFor(949, 949),  standardFor(950, 950),
                                    standardFor(1252, 850), standardFor(1252, 852)};

/// Names converted by hand, of which one is compared with the rules and with the functions.
inline void holdWorkedName(std::size_t choice) {
    static const struct {
        const char* reason;
        std::size_t standard;  // 0 is 1252, 2 is 932
        std::string mac, windows, back = mac;
    } rows[] = {
        {"colon and question mark", 0, "Q1: Budget?", "Q1[058] Budget[063]"},
        {"Windows drops a final period", 0, "Report.", "Report[046]"},
        {"and a final space", 0, "ab ", "ab[032]"},
        {"periods and spaces within a name are kept", 0, " a.b c", " a.b c"},
        {"0x87 is in the set, 0x88 is converted", 0, "\x87\x88", "[135]\xE0"},
        {"a digit is in no default set", 0, "a[048]b", "a[048]b"},
        {"over 255, too short, not closed, cut off", 0, "[256][04][058[05", "[256][04][058[05"},
        {"932: trail byte 0x5C is no backslash", 2, "\x95\x5C:", "\x95\x5C[058]"},
        {"932: a period after a lead byte's value is kept", 2, "\x95\x81.", "\x95\x81."},
        {"932: a lone lead byte ends the name", 2, "ab \x81", "ab[032]", "ab "},
    };
    const auto& [reason, standard, mac, windows, back] = rows[choice % std::size(rows)];
    const Naming& naming = kStandards[standard];
    require(naming.toWindows(mac).into(32).second == windows + '\0', reason);
    require(naming.toMacintosh(windows).into(32).second == back + '\0', reason);
    tamrix::nameRules = naming.rules;
    holdName(naming, mac, true);
}

/// Settings with any quote set and brackets.
inline Naming drawnNaming(Input& input) {
    const char brackets[] = {'[', ']', '{', '}', '(', ')', '<', '>', '0', '9', ':', '\\', '\xAB', '\xBB', '\x81'};
    const tamrix::LeadByteTable leads = input.leadBytes();
    Naming naming = {leads, !leads.hasLeadBytes, "", input.oneOf(brackets), input.oneOf(brackets)};
    naming.set = input.bytes(80) + (input.byte() % 2 ? defaultSet(false) : "");
    tamrix::QuoteSettings quotes{{}, std::uint8_t(naming.open), std::uint8_t(naming.close)};
    for (const char byte : naming.set) quotes.inSet[std::uint8_t(byte)] = true;
    naming.rules = tamrix::makeNameRules(quotes, leads, naming.table());
    return naming;
}

/// An input with this byte tests only blocks that are large enough.
inline constexpr unsigned kLargeBlocks = 0x80;

inline void property(Input& input) {
    const Naming& standard = input.oneOf(kStandards);
    const unsigned kind = input.byte();
    const std::optional<Naming> drawn = kind % 2 ? std::optional(drawnNaming(input)) : std::nullopt;
    const Naming& naming = drawn ? *drawn : standard;
    tamrix::nameRules = naming.rules;
    tamrix::sbcsTranslator.table = naming.table();
    const std::string name = input.rest().substr(0, 60);
    holdName(naming, name, kind != kLargeBlocks);
    if (kind == kLargeBlocks) return;
    std::string onWindows = name, onMacintosh = name;
    for (char& byte : onWindows) byte = naming.onWindows(byte);
    for (char& byte : onMacintosh) byte = naming.onMacintosh(byte);
    holdTable<SBCS_AtoI, SBCS_AtoI_Copy, SBCS_AtoI_nCopy>(name, onWindows);
    holdTable<SBCS_ItoA, SBCS_ItoA_Copy, SBCS_ItoA_nCopy>(name, onMacintosh);
    holdWorkedName(kind);
}

/// All names of one and two bytes under each standard and between brackets AB and BB, and all of up to six bytes from
/// those that matter: digits that form numbers of the space, the period, the colon and none, quoted and plain high
/// bytes.
inline std::vector<Inputs> exhaustive() {
    std::vector<Inputs> all = {{{0, '\1', 0, 12, 13, 0, 1}, kAnyByte, 2},
                               {{0, '\x80'}, "[]023458: .\x87\xD0", 6},
                               {{2, '\x80'}, "[]02458 .\\\x81\xFD", 6}};
    for (char standard = 0; standard < 8; ++standard) all.push_back({{standard, 0}, kAnyByte, 2});
    return all;
}

}  // namespace properties
