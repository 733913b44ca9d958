// UNC paths of AppleTalk servers and printers: measured, joined and split, over lead-byte tables of several code pages.
#include "macnames/unc.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "published_tables.h"
#include "tamrix32/macnames.h"

namespace {

using namespace std::string_literals;
using testing_support::leadBytesOf;

/// The kind that a path is split into and its parts, as "1 zone|name|share|rest"; "?" for an output that was left
/// alone.
std::string split(int codePage, std::string path, unsigned restSize = 50) {
    std::vector<std::string> outputs(4, std::string(path.size() + restSize + 2, '\0'));
    for (auto& output : outputs) output[0] = '?';
    std::string& rest = outputs[3];
    rest[restSize] = '!';
    const tamrix::UncParts parts = {outputs[0].data(), outputs[1].data(), outputs[2].data(), rest.data(), restSize};
    std::string result = std::to_string(tamrix::splitUnc(leadBytesOf(codePage), path.data(), parts)) + ' ';
    EXPECT_EQ(rest[restSize], '!') << "written behind the rest";
    rest[restSize] = 0;
    for (const auto& output : outputs) result += output.c_str() + (&output == &rest ? ""s : "|"s);
    return result;
}

TEST(Unc, JoinsPartsIntoEveryCapacityAndSplitsThemAgain) {
    const struct {
        const char* reason;
        int codePage, kind;
        const char *zone, *name, *share;  // null: missing
        int length;                       // what is measured
        const char* path;                 // what is written
        const char* back;                 // the path split; null when it is written in part and 0 returned
    } rows[] = {
        {"server", 1252, 1, "Sales", "Mercury", "Vol", 20, R"(\\Sales@Mercury\Vol)", "1 Sales|Mercury|Vol|"},
        {"the local zone", 1252, 1, "*", "Mercury", "Projects", 19, R"(\\Mercury\Projects)", "1 |Mercury|Projects|"},
        {"a zone that only begins with *", 1252, 1, "*x", "Mercury", nullptr, 13, R"(\\*x@Mercury)", "1 *x|Mercury||"},
        {"nothing at all", 1252, 1, nullptr, nullptr, nullptr, 3, R"(\\)", "1 |||"},
        {"empty parts are measured with their delimiters", 1252, 1, "", "", "", 5, R"(\\)", "1 |||"},
        {"lone lead bytes are empty too", 932, 1, "\x81", "\x81", "\x81", 5, R"(\\)", "1 |||"},
        {"a volume alone", 1252, 1, nullptr, nullptr, "V", 5, R"(\\\V)", "1 ||V|"},
        {"printer", 1252, 2, "Sales", "Laser", "Q\\x", 18, R"(\\Sales`Laser\Q\x)", "2 Sales|Laser|Q\\x|"},
        {"printer without a zone", 1252, 2, nullptr, "Laser", "Queue", 15, R"(\\`Laser\Queue)", "2 *|Laser|Queue|"},
        {"printer with an empty share", 1252, 2, "Sales", "Laser", "", 15, R"(\\Sales`Laser)", nullptr},
        {"printer with an empty name", 1252, 2, "Sales", "", "Queue", 15, R"(\\Sales)", nullptr},
        {"printer without a name", 1252, 2, "Sales", nullptr, "Queue", 0, "", nullptr},
        {"printer without a share", 1252, 2, "Sales", "Laser", nullptr, 0, "", nullptr},
        {"unknown kinds", 1252, 3, "Sales", "Laser", "Queue", 0, "", nullptr},
        {"kind 0", 1252, 0, "Sales", "Laser", "Queue", 0, "", nullptr},
        {"932: trail bytes @ ` and \\", 932, 1, "\x83\x60", "\x83\x40", "\x95\x5C", 11,
         "\\\\\x83\x60@\x83\x40\\\x95\x5C", "1 \x83\x60|\x83\x40|\x95\x5C|"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        const auto leads = leadBytesOf(row.codePage);
        EXPECT_EQ(tamrix::uncLength(leads, row.kind, row.zone, row.name, row.share), row.length);
        for (int size = 0; size <= row.length + 1; ++size) {
            const bool fits = row.length > 0 && size >= row.length;
            std::string path(static_cast<std::size_t>(size) + 2, '?');
            const int result = tamrix::joinUnc(leads, row.kind, path.data(), static_cast<unsigned short>(size),
                                               row.zone, row.name, row.share);
            EXPECT_EQ(result, fits && row.back) << size;
            EXPECT_EQ(path.substr(static_cast<std::size_t>(size)), "??") << "written behind the buffer";
            EXPECT_STREQ(path.c_str(), fits ? row.path : std::string(path.size(), '?').c_str()) << size;
        }
        EXPECT_EQ(tamrix::joinUnc(leads, row.kind, nullptr, 100, row.zone, row.name, row.share), 0);
        EXPECT_EQ(row.back ? split(row.codePage, row.path) : "", row.back ? row.back : "");
    }
}

TEST(Unc, RefusesPathsOverSixteenBits) {
    std::vector<char> path(70000);
    for (const std::size_t length : {32764u, 32765u, 65533u, 65536u}) {
        const std::string name(length, 'n');
        const bool fits = length == 32764;
        EXPECT_EQ(UNCLength(1, nullptr, name.c_str(), nullptr), fits ? 32767 : 0) << length;
        EXPECT_EQ(StringsToUNC(1, path.data(), 65535, nullptr, name.c_str(), nullptr), fits) << length;
    }
    const std::string third(22000, 'n');
    for (const int kind : {1, 2})
        EXPECT_EQ(UNCLength(kind, third.c_str(), third.c_str(), third.c_str()), 0) << "66,005 would wrap to 469";
}

TEST(Unc, SplitsWhatOthersWrote) {
    const struct {
        const char* reason;
        int codePage;
        const char* path;
        const char* parts;
        unsigned restSize = 50;
    } rows[] = {
        {"a path behind the volume", 1252, R"(\\Z@S\V\Docs\a.txt)", R"(1 Z|S|V|Docs\a.txt)"},
        {"as much of it as fits", 1252, R"(\\Z@S\V\Docs\a.txt)", "1 Z|S|V|Docs", 5},
        {"or nothing", 1252, R"(\\Z@S\V\Docs\a.txt)", "1 Z|S|V|", 1},
        {"nothing to write into", 1252, R"(\\Z@S\V\Docs\a.txt)", "1 Z|S|V|", 0},
        {"932: a character is never split", 932, "\\\\S\\V\\ab\x83\x40", "1 |S|V|ab", 4},
        {"an empty zone", 1252, R"(\\@Mercury)", "1 |Mercury||"},
        {"the zone's delimiter behind a backslash", 1252, R"(\\Srv\A@B\C)", R"(1 Srv|B\C|A|)"},
        {"empty volume", 1252, R"(\\Srv\\x)", "1 |Srv||x"},
        {"printer cut before its delimiter", 1252, R"(\\Zone\x`y\z)", R"(2 Zone|y\z|x|)"},
        {"both delimiters", 1252, R"(\\Sales@Mercury`Laser\Queue)", "0 ?|?|?|"},
        {"printer without a share's backslash", 1252, R"(\\Sales`Laser)", "0 ?|?|?|"},
        {"printer with an empty share", 1252, R"(\\Sales`Laser\)", "0 Sales|Laser||"},
        {"printer with an empty name", 1252, R"(\\Sales`\Queue)", "0 Sales||Queue|"},
        {"932: a lone lead byte is no share", 932, "\\\\`P\\\x81", "0 *|P||"},
        {"1252: the bytes of a character are two", 1252, "\\\\\x83\x40\\V", "1 \x83||V|"},
    };
    for (const auto& row : rows) EXPECT_EQ(split(row.codePage, row.path, row.restSize), row.parts) << row.reason;
}

TEST(Unc, ReturnsOnlyWhatIsWanted) {
    char name[40] = "?", rest[40] = "?", none[] = "??";
    EXPECT_EQ(UNCToStrings(R"(\\Z@S\V\r)", nullptr, name, nullptr, rest, sizeof rest), 1);
    EXPECT_STREQ(name, "S");
    EXPECT_STREQ(rest, "") << "the rest is looked for only with the volume";
    EXPECT_EQ(UNCToStrings(R"(\\Z`P\Q)", nullptr, nullptr, nullptr, nullptr, 9), 2);
    EXPECT_EQ(UNCToStrings(R"(\\S\V)", nullptr, nullptr, nullptr, none, 3), 1);
    EXPECT_EQ(std::memcmp(none, "\0?", 3), 0) << "an empty rest is one byte, not zeros to the buffer's end";
}

TEST(Unc, ClearsTheOutputsForOtherPaths) {
    for (const char* path : {R"(\one)", R"(C:\x)", "", "\\", static_cast<const char*>(nullptr)}) {
        char outputs[4][4] = {"?", "?", "?", "?"}, rest[] = "?";
        EXPECT_EQ(UNCToStrings(path, outputs[0], outputs[1], outputs[2], outputs[3], 4), 0);
        for (const auto& output : outputs) EXPECT_STREQ(output, "");
        EXPECT_EQ(UNCToStrings(path, nullptr, nullptr, nullptr, rest, 0), 0);
        EXPECT_STREQ(rest, "?");
    }
    EXPECT_EQ(ZoneSrvDelimiter() + "`"s, "@"s + ZonePrnDelimiter());
}

}  // namespace
