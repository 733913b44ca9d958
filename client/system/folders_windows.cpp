// Names on the disk are bytes of the ANSI code page.
#include <string.h>
#include <windows.h>

#include "client/system/error_text.h"
#include "client/system/folders.h"

namespace tamrix::client {

const char kPathSeparator = '\\';
const bool kDiskNamesAreText = false;

bool listFolder(const std::string& path, std::vector<FolderEntry>& entries, std::string& reason) {
    const bool ends = path.ends_with('\\') || path.ends_with('/');
    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA((path + (ends ? "*" : "\\*")).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        reason = errorText();
        return false;
    }
    do {
        const std::string name = found.cFileName;
        if (name == "." || name == "..") continue;
        const bool isLink = (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
        entries.push_back({name, !isLink && (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0});
    } while (FindNextFileA(search, &found));
    if (GetLastError() != ERROR_NO_MORE_FILES) reason = errorText();
    FindClose(search);
    return reason.empty();
}

std::string nameKey(const std::string& name) {
    std::string key = name;
    CharUpperBuffA(key.data(), static_cast<DWORD>(key.size()));
    return key;
}

const char* whyNotAName(const std::string& name) {
    if (name.empty()) return "Windows does not take the name";
    for (std::size_t at = 0; at < name.size(); ++at) {
        const auto byte = static_cast<unsigned char>(name[at]);
        if (IsDBCSLeadByte(byte))
            ++at;
        else if (byte < 0x20 || memchr("\"*/:<>?\\|", byte, 9))
            return "Windows does not take a character of the name";
    }
    if (name.back() == ' ' || name.back() == '.') return "Windows drops a final space or period";
    return name.size() > 255 ? "the name is too long for Windows" : nullptr;
}

bool renameWithoutOverwriting(const std::string& from, const std::string& to, std::string& reason) {
    if (MoveFileA(from.c_str(), to.c_str())) return true;
    reason = errorText();
    return false;
}

}  // namespace tamrix::client
