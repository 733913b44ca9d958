// Start-up of programs and libraries that have no vendor C++ runtime: initialisers, exits, and the heap.
#pragma once

namespace tamrix {

using Step = void (*)();

/// Runs the initialisers that the compiler collected, in the order of their sections' names.
void runInitialisers();

/// Runs what atexit was given, last first.
void runExits();

}  // namespace tamrix
