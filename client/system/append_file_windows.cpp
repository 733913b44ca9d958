#include <windows.h>

#include "client/system/append_file.h"
#include "client/system/error_text.h"
#include "client/system/paths_windows.h"

namespace tamrix::client {

AppendFile::~AppendFile() {
    if (handle_) CloseHandle(handle_);
}

bool AppendFile::open(const std::string& path, bool isNew, std::string& reason) {
    const DWORD how = isNew ? CREATE_NEW : OPEN_EXISTING;
    const HANDLE handle =
        systemIsWide() ? CreateFileW(widePath(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, how, 0, nullptr)
                       : CreateFileA(ansiPath(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, how, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        reason = errorText();
        return false;
    }
    handle_ = handle;
    SetFilePointer(handle, 0, nullptr, FILE_END);
    return true;
}

bool AppendFile::append(const std::string& text, std::string& reason) {
    if (hasFailed_) return false;
    DWORD written = 0;
    hasFailed_ =
        !WriteFile(handle_, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) || written < text.size();
    if (!hasFailed_) return true;
    reason = written < text.size() ? "the disk is full" : errorText();
    return false;
}

bool AppendFile::flush(std::string& reason) {
    if (FlushFileBuffers(handle_)) return true;
    reason = errorText();
    return false;
}

}  // namespace tamrix::client
