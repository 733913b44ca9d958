#include "registry_text.h"

#include <gmock/gmock.h>

using testing_support::RegistryText;
using namespace std::string_literals;

TEST(RegistryText, HoldsAllThatIsStoredAndNothingOlder) {
    for (int round = 0; round < 2; ++round) {
        testing_support::emptyRegistry();
        EXPECT_EQ(testing_support::registryText(), RegistryText());
        testing_support::givenValue(HKEY_CLASSES_ROOT, ".A\\b", "n", REG_SZ, "x\0y"s);
        testing_support::givenValue(HKEY_LOCAL_MACHINE, "s", "", REG_BINARY, "");
        testing_support::givenValue(HKEY_CURRENT_USER, "s", "long", 77, std::string(300, '\xFE'));
        EXPECT_EQ(testing_support::registryText(), (RegistryText{{"CLASSES\\.A", ""},
                                                                 {"CLASSES\\.A\\b", ""},
                                                                 {"CLASSES\\.A\\b|n", "1:x\0y"s},
                                                                 {"MACHINE\\s", ""},
                                                                 {"MACHINE\\s|", "3:"},
                                                                 {"USER\\s", ""},
                                                                 {"USER\\s|long", "77:" + std::string(300, '\xFE')}}));
    }
}
