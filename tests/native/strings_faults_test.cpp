// The case mappings while the platform can't map a character, and that no string function allocates.
#include <gtest/gtest.h>
#include <standin.h>

#include "code_pages.h"
#include "tamrix32/strings.h"

namespace {

class StringFaults : public testing::Test {
protected:
    StringFaults() {
        testing_support::useCodePage(932);
        standin::clearFaults();
    }
    ~StringFaults() override {
        standin::clearFaults();
        testing_support::useCodePage(1252);
    }
};

TEST_F(StringFaults, StopAtTheCharacterThatCannotBeMapped) {
    // Full-width a and b, each asked for there and back.
    const char* const after[] = {"X\x82\x81y\x82\x82z", "X\x82\x81y\x82\x82z", "X\x82\x60Y\x82\x82z",
                                 "X\x82\x60Y\x82\x82z"};
    for (std::size_t n = 1; n <= 4; ++n) {
        char text[] = "x\x82\x81y\x82\x82z";
        standin::failNth(standin::Kind::conversion, n);
        EXPECT_EQ(dbcs_strupr(text), nullptr) << n;
        EXPECT_STREQ(text, after[n - 1]) << n;
        standin::clearFaults();
    }
    char upper[] = "X\x82\x60";
    standin::failNth(standin::Kind::conversion, 1);
    EXPECT_EQ(dbcs_strlwr(upper), nullptr);
    EXPECT_STREQ(upper, "x\x82\x60");
    standin::clearFaults();
    standin::failNth(standin::Kind::conversion, 1);
    EXPECT_NE(dbcs_stricmp("\x82\x60", "\x82\x81"), 0) << "what can't be mapped compares as it is";
}

TEST_F(StringFaults, NeverAllocate) {
    char buffer[64] = "";
    for (const UINT page : {1252u, 932u}) {
        testing_support::useCodePage(page);
        standin::clearFaults();
        dbcs_strcpy(buffer, "Name \x82\x81");
        dbcs_strcat(buffer, "\x82\x60");
        dbcs_strncpy(buffer + 20, buffer, 20);
        dbcs_strupr(buffer);
        dbcs_stricmp(buffer, buffer + 20);
        dbcs_trunc(buffer, 6, 1);
        BufStrCpy(buffer + 20, buffer, 20);
        EXPECT_EQ(standin::calls(standin::Kind::allocation), 0u);
    }
}

}  // namespace
