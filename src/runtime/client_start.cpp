// The start of a console program that clang builds for the platform's C++ without a vendor's runtime, as one object
// that goes into the package: entry point, initialisers, heap.
#include "runtime/runtime.cpp"
#include "runtime/start_program.cpp"
