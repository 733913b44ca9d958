// Name translation and the character table. Rules are made for each code page, so all of them run on any machine; the
// exported functions are held to the code pages of the process.
#include "tamrix32/macnames.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "frame/settings.h"
#include "macnames/name_codec.h"
#include "macnames/sbcs.h"
#include "published_tables.h"
#include "string_model.h"

namespace {

using namespace std::string_literals;
using namespace tamrix;
using testing_support::Exact;
using testing_support::imagesInMacintosh;
using testing_support::imagesInWindows;
using testing_support::kCodePages;
using testing_support::leadBytesOf;

constexpr int kUnfit = -1;

/// The settings that a name is translated by, and the rules that the library makes of them.
struct Settings {
    int codePage;
    std::string set;
    unsigned char open = '[', close = ']';
    LeadByteTable leads = leadBytesOf(codePage);
    NameRules rules = makeNameRules(
        {reinterpret_cast<unsigned char*>(set.data()), static_cast<std::int32_t>(set.size()), open, close}, leads,
        codePage == 1252 ? &kCharacterTable : nullptr);

    bool inSet(char byte) const { return set.find(byte) != std::string::npos; }
    char image(const std::string& images, char byte) const {
        return codePage == 1252 ? images[static_cast<unsigned char>(byte)] : byte;
    }
};

Settings defaults(int codePage) {
    const DefaultQuotes set = defaultQuotes(codePage != 1252);
    return {codePage, {reinterpret_cast<const char*>(set.chars), static_cast<std::size_t>(set.count)}};
}

/// A result, and what stands in the buffer before the terminator.
using Outcome = std::pair<int, std::string>;
using Translation = decltype(&macToWindows);

/// Translates into a block of exactly `size` bytes from one of the name's size, which the sanitizer watches, and into a
/// block with guards behind it.
void expectTranslation(Translation translation, const NameRules& rules, const std::string& name, std::size_t size,
                       const Outcome& expected) {
    const Exact source(name);
    const std::unique_ptr<char[]> exact(new char[size]);
    ASSERT_EQ(translation(rules, exact.get(), source, static_cast<unsigned>(size)), expected.first) << size;
    std::string guarded(size + 8, '\xEE');
    ASSERT_EQ(translation(rules, guarded.data(), source, static_cast<unsigned>(size)), expected.first) << size;
    const std::string written = size > 0 ? expected.second + '\0' : "";
    ASSERT_EQ(guarded.substr(0, written.size()), written) << size;
    ASSERT_EQ(guarded.substr(size), std::string(8, '\xEE')) << "written behind the buffer";
}

/// A translation as it is stated, in a plain way: pieces that are written whole or not at all.
struct Stated {
    std::vector<std::string> pieces;
    std::string last;          // replaces the last byte
    std::size_t capacity = 1;  // what is measured
    std::size_t spare = 0;     // bytes that a double-byte character must leave free

    Outcome into(std::size_t size) const {
        std::string bytes;
        for (const std::string& piece : pieces) {
            if (bytes.size() == size) break;
            if (size - bytes.size() < piece.size() + (piece.size() == 2 ? spare : 0)) return {kUnfit, bytes};
            bytes += piece;
        }
        if (bytes.size() == size) return {kUnfit, bytes.substr(0, size - 1)};
        if (!last.empty()) {
            const bool fits = size - bytes.size() >= 5;
            bytes.pop_back();
            if (!fits) return {kUnfit, bytes};
            bytes += last;
        }
        return {static_cast<int>(bytes.size()) + 1, bytes};
    }
};

Stated statedWindows(const Settings& s, const std::string& name) {
    const auto quote = [&s](char byte) {
        const std::string digits = std::to_string(1000 + static_cast<unsigned char>(byte)).substr(1);
        return static_cast<char>(s.open) + digits + static_cast<char>(s.close);
    };
    Stated stated;
    std::size_t i = 0, count = 0;
    bool quoted = false;
    for (; i < name.size() && !(s.leads.leads(name[i]) && i + 1 == name.size()); count += stated.pieces.back().size()) {
        const bool isDouble = s.leads.leads(name[i]), inSet = !isDouble && s.inSet(name[i]);
        const bool exempt = (static_cast<unsigned char>(name[i]) < 0x80 && std::isalnum(name[i])) || name[i] == ' ';
        quoted = inSet && !exempt;
        stated.pieces.push_back(isDouble ? name.substr(i, 2)
                                : quoted ? quote(name[i])
                                         : std::string(1, s.image(imagesInWindows(), name[i])));
        stated.capacity += isDouble ? 2 : inSet ? 5 : 1;
        i += isDouble ? 2 : 1;
    }
    const auto drops = [&](std::size_t counted) {
        if (i == 0 || quoted) return false;
        return name[i - 1] == ' ' || (name[i - 1] == '.' && !(counted > 2 && s.leads.leads(name[i - 2])));
    };
    if (drops(count)) stated.last = quote(name[i - 1]);
    if (drops(stated.capacity - 1)) stated.capacity += 4;
    return stated;
}

Stated statedMac(const Settings& s, const std::string& name) {
    const auto number = [&](std::size_t at) {
        const std::string quote = name.substr(at, 5), digits = quote.substr(1, 3);
        if (quote.size() < 5 || quote[0] != static_cast<char>(s.open) || quote[4] != static_cast<char>(s.close))
            return -1;
        if (digits.find_first_not_of("0123456789") != std::string::npos) return -1;
        const int value = std::stoi(digits);
        return value == ' ' || value == '.' || (value < 256 && s.inSet(static_cast<char>(value))) ? value : -1;
    };
    Stated stated;
    stated.spare = 1;
    for (std::size_t i = 0; i < name.size(); stated.capacity += stated.pieces.back().size()) {
        const bool isDouble = s.leads.leads(name[i]);
        if (isDouble && i + 1 == name.size()) break;
        const int value = isDouble ? -1 : number(i);
        const char plain = name[i] == '\\' ? '\0' : s.image(imagesInMacintosh(), name[i]);
        stated.pieces.push_back(isDouble ? name.substr(i, 2) : std::string(1, value < 0 ? plain : char(value)));
        i += isDouble ? 2 : value < 0 ? 1 : 5;
    }
    return stated;
}

TEST(Names, GoToWindowsAndBack) {
    const struct {
        const char* reason;
        int codePage;
        std::string mac, windows, back = mac;
    } rows[] = {
        {"colon and question mark", 1252, "Q1: Budget?", "Q1[058] Budget[063]"},
        {"a final period is dropped by Windows", 1252, "Report.", "Report[046]"},
        {"so is a final space", 1252, "ab ", "ab[032]"},
        {"periods and spaces within a name stay", 1252, " a.b c", " a.b c"},
        {"only the last of them", 1252, "a..", "a.[046]"},
        {"nothing but a period", 1252, ".", "[046]"},
        {"empty", 1252, "", ""},
        {"the return that ends a custom icon's name", 1252, "Icon\r", "Icon[013]"},
        {"0x87 is in the set, 0x88 is translated", 1252, "\x87\x88", "[135]\xE0"},
        {"a digit is in no default set", 1252, "a[048]b", "a[048]b"},
        {"over 255, too short, not closed, cut off", 1252, "[300][04][058[05", "[300][04][058[05"},
        {"a bracket before a quote", 1252, "[:]", "[[058]]"},
        {"932: trail byte 0x5C is no backslash", 932, "\x95\x5C:", "\x95\x5C[058]"},
        {"932: the lead byte wins over the set", 932, "\xFC\x40\xFD", "\xFC\x40[253]"},
        {"932: a period behind the value of a lead byte stays", 932, "\x95\x81.", "\x95\x81."},
        {"932: a lone lead byte ends the name", 932, "ab \x81", "ab[032]", "ab "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        const Settings s = defaults(row.codePage);
        const int windowsSize = static_cast<int>(row.windows.size()) + 1,
                  macSize = static_cast<int>(row.back.size()) + 1;
        expectTranslation(macToWindows, s.rules, row.mac, 99, {windowsSize, row.windows});
        expectTranslation(windowsToMac, s.rules, row.windows, 99, {macSize, row.back});
        EXPECT_EQ(macToWindowsCapacity(s.rules, row.mac.c_str()), windowsSize);
        EXPECT_EQ(windowsToMacCapacity(s.rules, row.windows.c_str()), macSize);
    }
    unsigned char colon = ':';  // in no set of a negative size
    const NameRules none = makeNameRules({&colon, -1, '[', ']'}, leadBytesOf(1252), nullptr);
    expectTranslation(macToWindows, none, "a:.", 99, {8, "a:[046]"});
}

using Random = std::mt19937;

int pick(Random& random, int first, int last) {
    return std::uniform_int_distribution<int>(first, last)(random);
}

unsigned char randomBracket(Random& random, const LeadByteTable& leads) {
    for (;;) {
        const int byte = pick(random, 0, 3) ? "[]{}()<>09:\\"[pick(random, 0, 11)] : pick(random, 1, 255);
        if (!leads.isLead[byte]) return static_cast<unsigned char>(byte);
    }
}

Settings randomSettings(Random& random, int codePage) {
    std::string set;
    for (int i = pick(random, 0, 90); i > 0; --i) set += static_cast<char>(pick(random, 0, 255));
    const LeadByteTable leads = leadBytesOf(codePage);
    return {codePage, set, randomBracket(random, leads), randomBracket(random, leads)};
}

/// Any bytes, many of them in numbers between the brackets, and often a period or a space at the end.
std::string randomName(Random& random, const Settings& s) {
    std::string name;
    for (int i = pick(random, 0, 8); i > 0; --i) {
        const int number = pick(random, 0, 9) ? pick(random, 0, 255) : pick(random, 0, 999);
        const std::string digits = std::to_string(1000 + number).substr(1);
        const bool numbered = pick(random, 0, 3) == 0;
        name += numbered ? static_cast<char>(s.open) + digits + static_cast<char>(s.close) : "";
        name += static_cast<char>(pick(random, 0, 3) ? pick(random, 1, 255) : " .:\\/["[pick(random, 0, 5)]);
    }
    return name + std::string(". \x81").substr(static_cast<std::size_t>(pick(random, 0, 3)), 1);
}

TEST(Names, TranslateAsStatedIntoEveryCapacity) {
    Random random(20251);
    const struct {
        Translation translation;
        int (*capacity)(const NameRules&, const char*);
        Stated (*stated)(const Settings&, const std::string&);
        int intoNothing;
    } directions[] = {{macToWindows, macToWindowsCapacity, statedWindows, kUnfit},
                      {windowsToMac, windowsToMacCapacity, statedMac, 0}};
    for (const int codePage : kCodePages) {
        for (int round = 0; round < 400; ++round) {
            const Settings s = randomSettings(random, codePage);
            const std::string name = randomName(random, s);
            for (const auto& direction : directions) {
                SCOPED_TRACE(testing::PrintToString(name) + " under " + std::to_string(codePage));
                const Stated stated = direction.stated(s, name);
                ASSERT_EQ(direction.capacity(s.rules, Exact(name)), static_cast<int>(stated.capacity));
                expectTranslation(direction.translation, s.rules, name, 0, {direction.intoNothing, ""});
                for (std::size_t size = 1; size <= stated.capacity + 1; ++size)
                    expectTranslation(direction.translation, s.rules, name, size, stated.into(size));
                ASSERT_FALSE(HasFatalFailure());
            }
        }
    }
}

// The table.

TEST(CharacterTable, IsOnForWesternSingleByteSystems) {
    for (const std::uint16_t oem : {std::uint16_t{437}, std::uint16_t{850}, std::uint16_t{852}, std::uint16_t{932}}) {
        EXPECT_EQ(chooseTranslator(oem, false).table, oem <= 850 ? &kCharacterTable : nullptr) << oem;
        EXPECT_EQ(chooseTranslator(oem, true).table, nullptr) << "double-byte ANSI code page";
        EXPECT_EQ(chooseTranslator(oem, false).oemCodePage, oem);
    }
}

TEST(CharacterTable, BoundedCopyPadsAndCuts) {
    const auto copy = [](const CharacterTable* table, const char* source, std::size_t size) {
        std::string bytes(8, '?');
        copyTranslated(table, &CharacterPair::toWindows, bytes.data(), source, size);
        return bytes;
    };
    EXPECT_EQ(copy(&kCharacterTable, "\x80\x81\x82xy", 3), "\xC4\xC5\xC7?????");
    EXPECT_EQ(copy(&kCharacterTable, "\x80\x81\x82xy", 8), "\xC4\xC5\xC7xy\0\0\0"s);
    EXPECT_EQ(copy(&kCharacterTable, "\x80", 0), "????????");
    EXPECT_EQ(copy(nullptr, "\x80y", 4), "\x80y\0\0????"s) << "no table";
}

// The exported functions, under the code pages of the process.

TEST(Exported, CharacterTranslationInAllSixForms) {
    const bool tableOn = (GetOEMCP() == 437 || GetOEMCP() == 850) && !leadByteTable.hasLeadBytes;
    std::string all;
    for (int byte = 1; byte < 256; ++byte) all += static_cast<char>(byte);
    const struct {
        decltype(&SBCS_AtoI) inPlace;
        decltype(&SBCS_AtoI_Copy) copy;
        decltype(&SBCS_AtoI_nCopy) boundedCopy;
        std::string images;
    } columns[] = {{SBCS_AtoI, SBCS_AtoI_Copy, SBCS_AtoI_nCopy, imagesInWindows().substr(1)},
                   {SBCS_ItoA, SBCS_ItoA_Copy, SBCS_ItoA_nCopy, imagesInMacintosh().substr(1)}};
    for (const auto& column : columns) {
        const std::string expected = tableOn ? column.images : all;
        std::string inPlace = all, copy(256, '?'), bounded(256, '?');
        column.inPlace(inPlace.data());
        EXPECT_EQ(inPlace, expected);
        column.copy(copy.data(), all.c_str());
        EXPECT_EQ(copy, expected + '\0');
        column.boundedCopy(bounded.data(), all.c_str(), 256);
        EXPECT_EQ(bounded, expected + '\0');
    }
}

TEST(Exported, NameTranslationInCopyAndInPlace) {
    char windowsName[20], macName[12];
    EXPECT_EQ(AFPtoOSLen("Q1: Budget?"), 20);
    EXPECT_EQ(AFPtoOSCopy(windowsName, "Q1: Budget?", 20), 20);
    EXPECT_STREQ(windowsName, "Q1[058] Budget[063]");
    EXPECT_EQ(OStoAFPLen(windowsName), 12);
    EXPECT_EQ(OStoAFPCopy(macName, windowsName, 12), 12);
    EXPECT_STREQ(macName, "Q1: Budget?");

    char name[16] = "a:b";
    EXPECT_EQ(AFPtoOS(name, sizeof name), 8);
    EXPECT_STREQ(name, "a[058]b");
    EXPECT_EQ(OStoAFP(name, sizeof name), 4);
    EXPECT_STREQ(name, "a:b");
    EXPECT_EQ(AFPtoOS(name, 4), kUnfit);
    EXPECT_STREQ(name, "a") << "the cut result";
    char path[] = "dir\\file";
    EXPECT_EQ(OStoAFP(path, sizeof path), 9);
    EXPECT_STREQ(path, "dir") << "the first component, counted whole";
    EXPECT_EQ(AFPtoOS(path, 0), kUnfit);
    EXPECT_EQ(OStoAFP(path, 0), 0);
    EXPECT_STREQ(path, "dir");
}

}  // namespace
