// Runs a suite the way a client meets the library: attached to the process.
#include <gmock/gmock.h>

#include "entry/entry.h"

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    DllMain(GetModuleHandleA(nullptr), DLL_PROCESS_ATTACH, nullptr);
    return RUN_ALL_TESTS();
}
