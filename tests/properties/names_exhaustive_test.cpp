// Every name of one and two bytes under each code page, and every name of up to six bytes over those that matter.
// Compiled optimised and without sanitizers, from the library's own sources.
#include <gtest/gtest.h>

#include "properties/names.h"
#include "tamrix32/strings.h"

// What the sources of names refer to besides.
namespace tamrix {
NameRules nameRules{};
SbcsTranslator sbcsTranslator;
}  // namespace tamrix
char* dbcs_strcpy(char* dst, const char* src) {
    return std::strcpy(dst, src);
}

namespace {

using properties::Naming;

Naming defaultsOf(unsigned page, std::uint16_t oem, unsigned char open = '[', unsigned char close = ']') {
    const tamrix::LeadByteTable leads = properties::leadBytesOf(page);
    const bool western = page == 1252 && (oem == 437 || oem == 850);
    const auto chosen = tamrix::chooseTranslator(oem, leads.hasLeadBytes != 0);
    EXPECT_EQ(chosen.table, western ? &tamrix::kCharacterTable : nullptr) << oem;
    EXPECT_EQ(chosen.oemCodePage, oem);
    return {leads, western, properties::defaultSet(leads.hasLeadBytes != 0), open, close};
}

void expectHolds(const Naming& naming, const std::string& name, bool everySize) {
    try {
        properties::holdName(naming, name, everySize);
    } catch (const properties::Disagreement& found) {
        FAIL() << found.what() << " of " << properties::hexadecimal(name);
    }
}

TEST(Names, OfOneAndTwoBytesFollowTheModel) {
    for (const Naming& naming :
         {defaultsOf(1252, 437), defaultsOf(1252, 850), defaultsOf(1252, 852), defaultsOf(932, 932),
          defaultsOf(936, 936), defaultsOf(949, 949), defaultsOf(950, 950), defaultsOf(1252, 437, 0xAB, 0xBB)}) {
        naming.use();
        for (int bytes = 0x100; bytes < 0x10000 && !HasFailure(); ++bytes) {
            const char name[] = {static_cast<char>(bytes >> 8), static_cast<char>(bytes), 0};
            expectHolds(naming, name, true);
        }
    }
}

void expectAllOver(const Naming& naming, const std::string& alphabet) {
    naming.use();
    for (std::string name(1, alphabet[0]); name.size() <= 6 && !testing::Test::HasFailure();) {
        expectHolds(naming, name, false);
        std::size_t at = 0;
        for (; at < name.size() && name[at] == alphabet.back(); ++at) name[at] = alphabet[0];
        if (at == name.size())
            name += alphabet[0];
        else
            name[at] = alphabet[alphabet.find(name[at]) + 1];
    }
}

// Letters, digits that make numbers of the space, the period, the colon and none, quoted and plain high bytes.
TEST(Names, OfUpToSixBytesComeBack) {
    expectAllOver(defaultsOf(1252, 437), "[]023458: .\x87\xD0");
    expectAllOver(defaultsOf(932, 932), "[]02458 .\\\x81\xFD");
}

TEST(Names, GoToWindowsAndBack) {
    const struct {
        const char* reason;
        unsigned page;
        std::string mac, windows, back = mac;
    } rows[] = {
        {"colon and question mark", 1252, "Q1: Budget?", "Q1[058] Budget[063]"},
        {"a final period is dropped by Windows", 1252, "Report.", "Report[046]"},
        {"so is a final space", 1252, "ab ", "ab[032]"},
        {"periods and spaces within a name stay", 1252, " a.b c", " a.b c"},
        {"0x87 is in the set, 0x88 is translated", 1252, "\x87\x88", "[135]\xE0"},
        {"a digit is in no default set", 1252, "a[048]b", "a[048]b"},
        {"over 255, too short, not closed, cut off", 1252, "[300][04][058[05", "[300][04][058[05"},
        {"932: trail byte 0x5C is no backslash", 932, "\x95\x5C:", "\x95\x5C[058]"},
        {"932: a period after the value of a lead byte stays", 932, "\x95\x81.", "\x95\x81."},
        {"932: a lone lead byte ends the name", 932, "ab \x81", "ab[032]", "ab "},
    };
    for (const auto& row : rows) {
        defaultsOf(row.page, 437).use();
        char windows[32], back[32];
        EXPECT_EQ(AFPtoOSCopy(windows, row.mac.c_str(), 32), int(row.windows.size() + 1)) << row.reason;
        EXPECT_EQ(windows, row.windows) << row.reason;
        EXPECT_EQ(OStoAFPCopy(back, windows, 32), int(row.back.size() + 1)) << row.reason;
        EXPECT_EQ(back, row.back) << row.reason;
    }
}

}  // namespace
