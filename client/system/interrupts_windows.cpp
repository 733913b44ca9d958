#include <windows.h>

#include "client/system/interrupts.h"

namespace tamrix::client {
namespace {

volatile LONG interrupted;

BOOL WINAPI interrupt(DWORD) {
    interrupted = 1;
    return TRUE;
}

}  // namespace

void watchInterrupts() {
    SetConsoleCtrlHandler(interrupt, TRUE);
}

bool wasInterrupted() {
    return interrupted != 0;
}

}  // namespace tamrix::client
