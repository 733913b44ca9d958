// The exported functions under every pair of code pages, and when memory runs out.
#include <gtest/gtest.h>
#include <standin.h>

#include "frame/entry.h"
#include "frame/settings.h"
#include "tamrix32/macnames.h"

namespace {

/// The library as if it were loaded under these code pages.
void loadUnder(UINT ansi, UINT oem) {
    ASSERT_TRUE(standin::setCodePages(ansi, oem));
    tamrix::constructStatics();
    DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr);
}

class CodePages : public testing::Test {
protected:
    ~CodePages() override {
        standin::clearFaults();
        loadUnder(1252, 437);
    }
};

TEST_F(CodePages, DecideOnTableAndQuoteSet) {
    const struct {
        const char* reason;
        UINT ansi;
        UINT oem;
        const char* windows;  // of the Macintosh bytes 80 A1 8F
    } rows[] = {
        {"Western Europe", 1252, 850, "\xC4\xB0[143]"},
        {"a single-byte code page whose OEM code page is another", 1251, 1251, "\x80\xA1[143]"},
        {"Japan: 8F leads nothing at the end", 932, 932, "[128]\xA1"},
        {"Korea: A1 leads 8F, 80 is quoted", 949, 949, "[128]\xA1\x8F"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        loadUnder(row.ansi, row.oem);
        char name[40];
        EXPECT_EQ(AFPtoOSCopy(name, "\x80\xA1\x8F", sizeof name), AFPtoOSLen("\x80\xA1\x8F"));
        EXPECT_STREQ(name, row.windows);
    }
}

TEST_F(CodePages, TheTableIsChosenOnceAndTheLeadBytesAtEveryAttach) {
    loadUnder(1252, 437);
    ASSERT_TRUE(standin::setCodePages(932, 932));
    DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr);
    char name[8];
    EXPECT_EQ(AFPtoOSCopy(name, "\xA5\x95\x5C", sizeof name), 4);
    EXPECT_STREQ(name, "\x95\x95\x5C") << "the table still on, 955C one character";
}

TEST_F(CodePages, InPlaceKeepsHalfCharacters) {
    loadUnder(932, 932);
    char cut[5] = "\x81\x40\x81\x41";
    EXPECT_EQ(AFPtoOS(cut, 4), -1);
    EXPECT_STREQ(cut, "\x81\x40\x81") << "as AFPtoOSCopy leaves it";
    unsigned char lead = 0x81;
    tamrix::nameRules = tamrix::makeNameRules({&lead, 1, '[', ']'}, tamrix::leadByteTable, nullptr);
    char number[] = "a[129]";
    EXPECT_EQ(OStoAFP(number, sizeof number), 3);
    EXPECT_STREQ(number, "a\x81");
}

TEST_F(CodePages, OnlyCopiesDoWithoutMemory) {
    char name[40] = "a:b", outputs[4][16] = {"?", "?", "?", "?"};
    for (const auto translation : {&AFPtoOS, &OStoAFP}) {
        standin::failNth(standin::Kind::allocation, 1);
        EXPECT_EQ(translation(name, sizeof name), -1);
        EXPECT_STREQ(name, "a:b");
    }
    standin::failNth(standin::Kind::allocation, 1);
    EXPECT_EQ(UNCToStrings(R"(\\Z@S\V\r)", outputs[0], outputs[1], outputs[2], outputs[3], 16), 0);
    for (const auto& output : outputs) EXPECT_STREQ(output, "");
    standin::clearFaults();
    EXPECT_EQ(AFPtoOSCopy(name, "a:b.", sizeof name), AFPtoOSLen("a:b."));
    EXPECT_EQ(OStoAFPCopy(name, "a[058]b", sizeof name), OStoAFPLen("a[058]b"));
    EXPECT_EQ(standin::calls(standin::Kind::allocation), 0u);
}

}  // namespace
