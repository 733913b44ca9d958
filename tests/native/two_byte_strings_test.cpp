// Every string of two bytes under each pair of code pages, all in one process: through the string family, and as each
// part of a UNC path.
#include <gtest/gtest.h>
#include <standin.h>

#include <array>
#include <map>

#include "frame/entry.h"
#include "published_tables.h"
#include "string_model.h"
#include "tamrix32/macnames.h"

namespace {

using testing_support::Characters;
using testing_support::charactersOf;

struct Pages {
    UINT ansi, oem;
};

class TwoByteStrings : public testing::TestWithParam<Pages> {
protected:
    void SetUp() override { use(GetParam()); }
    void TearDown() override { use({1252, 437}); }

    static void use(Pages pages) {
        ASSERT_TRUE(standin::setCodePages(pages.ansi, pages.oem));
        tamrix::constructStatics();
    }

    /// Calls `check` with all of them, the one-byte strings included, until one is wrong.
    template <typename Check>
    static void forAll(Check check) {
        for (int bytes = 0x100; bytes < 0x10000; ++bytes) {
            const std::string text = {static_cast<char>(bytes >> 8), static_cast<char>(bytes)};
            check(text.substr(0, text.find('\0')));
            if (HasFatalFailure()) return;
        }
    }

    const tamrix::LeadByteTable leads_ = testing_support::leadBytesOf(static_cast<int>(GetParam().ansi));
};

TEST_P(TwoByteStrings, AgreeWithTheStringFamilysModel) {
    forAll([this](const std::string& text) {
        const std::string other = {text.back(), text.front()};
        const char* const disagreement = testing_support::StringModel(leads_, text).disagreement(other);
        ASSERT_EQ(disagreement, nullptr) << disagreement << " of " << testing::PrintToString(text);
    });
}

using Parts = std::array<std::string, 5>;  // the result as a digit, zone, name, share, rest

/// The characters from `from` to the next one that was taken out, as text.
std::string uncut(const Characters& path, std::size_t from) {
    std::string joined;
    for (std::size_t i = from; i < path.size() && !path[i].empty(); ++i) joined += path[i];
    return joined;
}

std::size_t find(const Characters& path, const char* delimiter, std::size_t from) {
    while (from < path.size() && path[from] != delimiter && !path[from].empty()) ++from;
    return from < path.size() && path[from] == delimiter ? from : path.size();
}

/// The grammar, over characters: delimiters are found first and taken out then. What an unusable path leaves in the
/// outputs is not looked at.
Parts stated(Characters path) {
    const std::size_t none = path.size(), printer = find(path, "`", 0), server = find(path, "@", 0);
    const std::size_t separator = find(path, "\\", 2);
    path.resize(none + 2);  // so that positions behind the last one hold nothing
    if (printer != none) {
        path[printer] = path[separator] = "";
        const std::string zone = uncut(path, 2), name = uncut(path, printer + 1), share = uncut(path, separator + 1);
        const bool usable = server == none && separator != none && !name.empty() && !share.empty();
        return usable ? Parts{"2", zone.empty() ? "*" : zone, name, share, ""} : Parts{"0"};
    }
    path[server] = path[separator] = "";
    Parts parts = {"1", server == none ? "" : uncut(path, 2), uncut(path, server == none ? 2 : server + 1)};
    const std::size_t next = find(path, "\\", separator + 1);
    if (next < none) {
        path[next] = "";
        parts[4] = uncut(path, next + 1);
    }
    parts[3] = uncut(path, separator + 1);
    return parts;
}

TEST_P(TwoByteStrings, SplitAsPartsOfPaths) {
    forAll([this](const std::string& bytes) {
        for (const std::string& path : {"\\\\" + bytes + "@S\\V", "\\\\Z@S\\" + bytes + "\\r", "\\\\" + bytes + "`P\\Q",
                                        "\\\\Z`" + bytes + "\\Q"}) {
            char zone[20] = "", name[20] = "", share[20] = "", rest[20] = "";
            const int kind = UNCToStrings(testing_support::Exact(path), zone, name, share, rest, sizeof rest);
            Parts parts = {std::to_string(kind)};
            if (kind != 0) parts = {parts[0], zone, name, share, rest};
            ASSERT_EQ(parts, stated(charactersOf(leads_, path))) << testing::PrintToString(path);
        }
    });
}

INSTANTIATE_TEST_SUITE_P(CodePages, TwoByteStrings,
                         testing::Values(Pages{1252, 437}, Pages{1252, 850}, Pages{932, 932}, Pages{936, 936},
                                         Pages{949, 949}, Pages{950, 950}),
                         [](const auto& pages) {
                             return std::to_string(pages.param.ansi) + "_" + std::to_string(pages.param.oem);
                         });

}  // namespace
