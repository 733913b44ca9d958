#include <signal.h>

#include <initializer_list>

#include "client/system/interrupts.h"

namespace tamrix::client {
namespace {

volatile sig_atomic_t interrupted;

void interrupt(int) {
    interrupted = 1;
}

}  // namespace

void watchInterrupts() {
    struct sigaction action = {};
    action.sa_handler = interrupt;
    action.sa_flags = SA_RESTART;
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaction(number, &action, nullptr);
}

bool wasInterrupted() {
    return interrupted != 0;
}

}  // namespace tamrix::client
