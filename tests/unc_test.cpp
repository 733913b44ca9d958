// UNC paths of AppleTalk servers and printers: measured, joined and split, over lead-byte tables of several code pages.
#include "macnames/unc.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "published_tables.h"
#include "tamrix32/macnames.h"

namespace {

using testing_support::kCodePages;
using testing_support::leadBytesOf;

constexpr int kServer = 1;
constexpr int kPrinter = 2;

/// Parts and the path they make; null for a part that is missing.
struct Joined {
    const char* reason;
    int kind;
    const char* zone;
    const char* name;
    const char* share;
    int length;  // what is measured
    int result;
    const char* path;  // what is written, also when the result is 0
};

TEST(Unc, JoinsParts) {
    const Joined rows[] = {
        {"server", kServer, "Sales", "Mercury", "Projects", 25, 1, R"(\\Sales@Mercury\Projects)"},
        {"server in the local zone", kServer, "*", "Mercury", "Projects", 19, 1, R"(\\Mercury\Projects)"},
        {"a zone that only begins with *", kServer, "*x", "Mercury", nullptr, 13, 1, R"(\\*x@Mercury)"},
        {"nothing at all", kServer, nullptr, nullptr, nullptr, 3, 1, R"(\\)"},
        {"empty parts are measured with their delimiters", kServer, "", "", "", 5, 1, R"(\\)"},
        {"a volume alone", kServer, nullptr, nullptr, "V", 5, 1, R"(\\\V)"},
        {"printer", kPrinter, "Sales", "Laser", "Queue", 20, 1, R"(\\Sales`Laser\Queue)"},
        {"printer without a zone", kPrinter, nullptr, "Laser", "Queue", 15, 1, R"(\\`Laser\Queue)"},
        {"printer with an empty share", kPrinter, "Sales", "Laser", "", 15, 0, R"(\\Sales`Laser)"},
        {"printer with an empty name", kPrinter, "Sales", "", "Queue", 15, 0, R"(\\Sales)"},
        {"printer without a name", kPrinter, "Sales", nullptr, "Queue", 0, 0, "?"},
        {"printer without a share", kPrinter, "Sales", "Laser", nullptr, 0, 0, "?"},
        {"unknown kind", 3, "Sales", "Laser", "Queue", 0, 0, "?"},
        {"kind 0", 0, "Sales", "Laser", "Queue", 0, 0, "?"},
    };
    for (const Joined& row : rows) {
        SCOPED_TRACE(row.reason);
        EXPECT_EQ(UNCLength(row.kind, row.zone, row.name, row.share), row.length);
        for (int size = 0; size <= row.length + 1; ++size) {
            SCOPED_TRACE(size);
            const auto bytes = static_cast<std::size_t>(size);
            const std::unique_ptr<char[]> path(new char[bytes + 2]);
            std::memcpy(path.get() + bytes, "?", 2);
            char* const unc = path.get();
            if (size > 0) std::memcpy(unc, "?", size > 1 ? 2 : 1);
            const bool fits = row.length > 0 && size >= row.length;
            const auto capacity = static_cast<unsigned short>(size);
            EXPECT_EQ(StringsToUNC(row.kind, unc, capacity, row.zone, row.name, row.share), fits ? row.result : 0);
            EXPECT_STREQ(unc, fits ? row.path : size == 1 ? "??" : "?");
            EXPECT_EQ(unc[bytes], '?') << "written behind the buffer";
        }
        EXPECT_EQ(StringsToUNC(row.kind, nullptr, 100, row.zone, row.name, row.share), 0);
    }
}

TEST(Unc, RefusesPathsOverSixteenBits) {
    std::vector<char> path(70000);
    for (const std::size_t length : {32764u, 32765u, 65533u, 65536u}) {
        const std::string name(length, 'n');
        const bool fits = length == 32764;
        EXPECT_EQ(UNCLength(kServer, nullptr, name.c_str(), nullptr), fits ? 32767 : 0) << length;
        EXPECT_EQ(StringsToUNC(kServer, path.data(), 65535, nullptr, name.c_str(), nullptr), fits) << length;
    }
    const std::string third(22000, 'n');
    EXPECT_EQ(UNCLength(kServer, third.c_str(), third.c_str(), third.c_str()), 0) << "66,005 would wrap to 469";
    EXPECT_EQ(UNCLength(kPrinter, third.c_str(), third.c_str(), third.c_str()), 0);
}

/// The parts of a path; "?" where an output was left alone.
struct Parts {
    int result;
    std::string zone, name, share, rest;
};
bool operator==(const Parts& a, const Parts& b) {
    return a.result == b.result && a.zone == b.zone && a.name == b.name && a.share == b.share && a.rest == b.rest;
}
void PrintTo(const Parts& parts, std::ostream* out) {
    *out << parts.result;
    for (const auto& part : {parts.zone, parts.name, parts.share, parts.rest})
        *out << " " << testing::PrintToString(part);
}

Parts split(const std::string& path, int codePage, unsigned restSize = 50) {
    std::string cut = path;
    std::vector<std::vector<char>> outputs(3, std::vector<char>(path.size() + 2));
    for (auto& output : outputs) output[0] = '?';
    std::vector<char> rest(restSize + 2, 0);
    rest[0] = '?';
    rest[restSize] = '!';
    const tamrix::UncParts parts = {outputs[0].data(), outputs[1].data(), outputs[2].data(), rest.data(), restSize};
    const int result = tamrix::splitUnc(leadBytesOf(codePage), cut.data(), parts);
    EXPECT_EQ(rest[restSize], '!') << "written behind the rest";
    rest[restSize] = 0;
    return {result, outputs[0].data(), outputs[1].data(), outputs[2].data(), rest.data()};
}

TEST(Unc, SplitsPaths) {
    const struct {
        const char* reason;
        int codePage;
        std::string path;
        Parts parts;
    } rows[] = {
        {"server", 1252, R"(\\Sales@Mercury\Projects)", {1, "Sales", "Mercury", "Projects", ""}},
        {"server and a path",
         1252,
         R"(\\Sales@Mercury\Projects\Docs\a.txt)",
         {1, "Sales", "Mercury", "Projects", R"(Docs\a.txt)"}},
        {"server without a zone", 1252, R"(\\Mercury\Projects)", {1, "", "Mercury", "Projects", ""}},
        {"just the prefix", 1252, R"(\\)", {1, "", "", "", ""}},
        {"an empty zone", 1252, R"(\\@Mercury)", {1, "", "Mercury", "", ""}},
        {"the zone's delimiter behind a backslash", 1252, R"(\\Srv\A@B)", {1, "Srv", "B", "A", ""}},
        {"and a backslash behind it", 1252, R"(\\Srv\A@B\C)", {1, "Srv", "B\\C", "A", ""}},
        {"empty volume", 1252, R"(\\Srv\\x)", {1, "", "Srv", "", "x"}},
        {"printer", 1252, R"(\\Sales`Laser\Queue)", {2, "Sales", "Laser", "Queue", ""}},
        {"printer without a zone", 1252, R"(\\`Laser\Queue)", {2, "*", "Laser", "Queue", ""}},
        {"a share keeps its backslashes", 1252, R"(\\`Laser\Queue\x)", {2, "*", "Laser", "Queue\\x", ""}},
        {"printer cut before its delimiter", 1252, R"(\\Zone\x`y\z)", {2, "Zone", "y\\z", "x", ""}},
        {"both delimiters", 1252, R"(\\Sales@Mercury`Laser\Queue)", {0, "?", "?", "?", ""}},
        {"printer without a share's backslash", 1252, R"(\\Sales`Laser)", {0, "?", "?", "?", ""}},
        {"printer with an empty share", 1252, R"(\\Sales`Laser\)", {0, "Sales", "Laser", "", ""}},
        {"printer with an empty name", 1252, R"(\\Sales`\Queue)", {0, "Sales", "", "Queue", ""}},
        {"932: trail byte 0x40 is no @", 932, "\\\\\x83\x40\\V", {1, "", "\x83\x40", "V", ""}},
        {"932: trail byte 0x60 is no grave accent", 932, "\\\\\x83\x60\\V", {1, "", "\x83\x60", "V", ""}},
        {"932: trail byte 0x5C is no backslash", 932, "\\\\Z@\x95\x5C\\V", {1, "Z", "\x95\x5C", "V", ""}},
        {"932: a lone lead byte ends the path", 932, "\\\\Z@S\\V\x81", {1, "Z", "S", "V", ""}},
        {"932: and is no share", 932, "\\\\`P\\\x81", {0, "*", "P", "", ""}},
        {"1252: the same bytes are two characters", 1252, "\\\\\x83\x40\\V", {1, "\x83", "", "V", ""}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        EXPECT_EQ(split(row.path, row.codePage), row.parts);
    }
}

TEST(Unc, BoundsTheRest) {
    const std::string path = R"(\\S\V\Docs\a)";
    EXPECT_EQ(split(path, 1252, 5).rest, "Docs");
    EXPECT_EQ(split(path, 1252, 1).rest, "");
    EXPECT_EQ(split(path, 1252, 0).rest, "") << "nothing to write into";
    EXPECT_EQ(split("\\\\S\\V\\ab\x83\x40", 932, 4).rest, "ab") << "a character is never split";
    char none[] = "??";
    EXPECT_EQ(UNCToStrings(R"(\\S\V)", nullptr, nullptr, nullptr, none, 3), 1);
    EXPECT_EQ(std::memcmp(none, "\0?", 3), 0) << "an empty rest is one byte, not zeros to the buffer's end";
}

TEST(Unc, ReturnsOnlyWhatIsWanted) {
    char name[40] = "?";
    char rest[40] = "?";
    EXPECT_EQ(UNCToStrings(R"(\\Z@S\V\r)", nullptr, name, nullptr, rest, sizeof rest), 1);
    EXPECT_STREQ(name, "S");
    EXPECT_STREQ(rest, "") << "the rest is looked for only with the volume";
    EXPECT_EQ(UNCToStrings(R"(\\Z`P\Q)", nullptr, nullptr, nullptr, nullptr, 9), 2);
}

TEST(Unc, ClearsTheOutputsForOtherPaths) {
    for (const char* path : {R"(\one)", R"(C:\x)", "", "\\", static_cast<const char*>(nullptr)}) {
        char outputs[4][4] = {"?", "?", "?", "?"};
        EXPECT_EQ(UNCToStrings(path, outputs[0], outputs[1], outputs[2], outputs[3], 4), 0);
        for (const auto& output : outputs) EXPECT_STREQ(output, "");
        char rest[] = "?";
        EXPECT_EQ(UNCToStrings(path, nullptr, nullptr, nullptr, rest, 0), 0);
        EXPECT_STREQ(rest, "?");
    }
    EXPECT_STREQ(ZoneSrvDelimiter(), "@");
    EXPECT_STREQ(ZonePrnDelimiter(), "`");
}

std::string randomPart(std::mt19937& random, const tamrix::LeadByteTable& leads) {
    std::string part;
    const auto pick = [&random](int first, int last) {
        return std::uniform_int_distribution<int>(first, last)(random);
    };
    for (int i = pick(1, 10); i > 0; --i) {
        char byte = static_cast<char>(pick(0x20, 0xFF));
        if (std::strchr("@`\\*", byte)) byte = 'x';
        part += byte;
        if (leads.leads(byte)) part += "@`\\\x81z"[pick(0, 4)];
    }
    return part;
}

TEST(Unc, SplitsWhatItJoined) {
    std::mt19937 random(3);
    for (const int codePage : kCodePages) {
        const tamrix::LeadByteTable leads = leadBytesOf(codePage);
        for (int round = 0; round < 1000; ++round) {
            const std::string zone = randomPart(random, leads);
            const std::string name = randomPart(random, leads);
            const std::string share = randomPart(random, leads);
            for (const int kind : {kServer, kPrinter}) {
                const int length = tamrix::uncLength(leads, kind, zone.c_str(), name.c_str(), share.c_str());
                std::string path(static_cast<std::size_t>(length), '!');
                ASSERT_EQ(tamrix::joinUnc(leads, kind, path.data(), static_cast<unsigned short>(length), zone.c_str(),
                                          name.c_str(), share.c_str()),
                          1);
                ASSERT_EQ(std::strlen(path.c_str()), path.size() - 1) << "measured exactly";
                ASSERT_EQ(split(path, codePage), (Parts{kind, zone, name, share, ""}));
            }
        }
    }
}

}  // namespace
