#include <windows.h>

#include "client/system/error_text.h"

namespace tamrix::client {

std::string errorText() {
    const DWORD error = GetLastError();
    switch (error) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
            return "no such folder or file";
        case ERROR_DIRECTORY:
            return "not a folder";
        case ERROR_ACCESS_DENIED:
            return "access denied";
        case ERROR_ALREADY_EXISTS:
        case ERROR_FILE_EXISTS:
            return "the name already exists";
        case ERROR_SHARING_VIOLATION:
            return "in use by another program";
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
            return "the disk is full";
        default:
            return "Windows error " + std::to_string(error);
    }
}

}  // namespace tamrix::client
