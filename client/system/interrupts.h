// Lets a command finish its current step after Ctrl-C and similar requests. interrupts_windows.cpp and
// interrupts_native.cpp implement it.
#pragma once

namespace tamrix::client {

/// After this call, Ctrl-C, closing the terminal and requests to end the process only set a flag.
void watchInterrupts();
bool wasInterrupted();

}  // namespace tamrix::client
