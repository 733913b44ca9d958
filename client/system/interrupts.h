// Ctrl-C and its like while something is under way that should end in order. interrupts_windows.cpp and
// interrupts_native.cpp implement it.
#pragma once

namespace tamrix::client {

/// From here on Ctrl-C, a closing terminal and a request to end only set a flag.
void watchInterrupts();
bool wasInterrupted();

}  // namespace tamrix::client
