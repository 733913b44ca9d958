// Attaches the library before an example's main() begins, as the loader does for a program that links the DLL.
#include "entry/entry.h"

extern "C" int __real_main(int argc, char** argv);

/// The linker puts this in the place of main (--wrap=main); constructors have run by then.
extern "C" int __wrap_main(int argc, char** argv) {
    DllMain(GetModuleHandleA(nullptr), DLL_PROCESS_ATTACH, nullptr);
    return __real_main(argc, argv);
}
