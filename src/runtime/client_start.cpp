// Start-up code for console programs that clang builds for the Windows platform's C++ ABI without a vendor's runtime:
// entry point, static initializers, heap. The package contains it as one object file.
#include "runtime/runtime.cpp"
#include "runtime/start_program.cpp"
