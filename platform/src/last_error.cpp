// The thread's last error.
#include <windows.h>

namespace {

thread_local DWORD lastError = NO_ERROR;

}  // namespace

DWORD WINAPI GetLastError(void) {
    return lastError;
}

void WINAPI SetLastError(DWORD code) {
    lastError = code;
}
