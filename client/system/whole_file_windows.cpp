#include <windows.h>

#include "client/system/error_text.h"
#include "client/system/whole_file.h"

namespace tamrix::client {
namespace {

/// A file or device that is there, open for writing; closes itself.
class File {
public:
    explicit File(const std::string& path)
        : handle_(CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr)) {}
    ~File() {
        if (isOpen()) CloseHandle(handle_);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE handle() const { return handle_; }
    bool isOnDisk() const { return GetFileType(handle_) == FILE_TYPE_DISK; }
    bool write(const std::string& text) {
        DWORD written = 0;
        if (!WriteFile(handle_, text.data(), static_cast<DWORD>(text.size()), &written, nullptr)) return false;
        if (written < text.size()) SetLastError(ERROR_DISK_FULL);
        return written == text.size();
    }
    bool flush() { return FlushFileBuffers(handle_); }

private:
    HANDLE handle_;
};

/// A new, empty file in a file's folder. Empty on failure.
std::string makeFileBeside(const std::string& path) {
    char folder[MAX_PATH], made[MAX_PATH];
    char* name = nullptr;
    const DWORD size = GetFullPathNameA(path.c_str(), sizeof folder, folder, &name);
    if (size == 0 || size >= sizeof folder || !name) return {};
    *name = '\0';
    return GetTempFileNameA(folder, "tmx", 0, made) ? made : "";
}

bool writeInto(const std::string& path, const std::string& text) {
    File file(path);
    return file.isOpen() && file.write(text) && (!file.isOnDisk() || file.flush());
}

/// Windows 95 cannot rename over a file, so the former one steps aside and comes back when the new one cannot follow.
bool moveInto(const std::string& path, const std::string& newFile, bool isThere) {
    if (!isThere) return MoveFileA(newFile.c_str(), path.c_str());
    const std::string aside = makeFileBeside(path);
    if (aside.empty() || !DeleteFileA(aside.c_str()) || !MoveFileA(path.c_str(), aside.c_str())) return false;
    if (MoveFileA(newFile.c_str(), path.c_str())) {
        DeleteFileA(aside.c_str());
        return true;
    }
    const DWORD error = GetLastError();
    MoveFileA(aside.c_str(), path.c_str());
    SetLastError(error);
    return false;
}

bool replaceFile(const std::string& path, const std::string& text, bool isThere) {
    const std::string newFile = makeFileBeside(path);
    if (newFile.empty()) return false;
    if (writeInto(newFile, text) && moveInto(path, newFile, isThere)) return true;
    const DWORD error = GetLastError();
    DeleteFileA(newFile.c_str());
    SetLastError(error);
    return false;
}

/// The path of an open file behind links, which systems have that know this function.
std::string realPath(const File& file, const std::string& path) {
    using GetFinalPath = DWORD(WINAPI*)(HANDLE, char*, DWORD, DWORD);
    const auto getFinalPath = reinterpret_cast<GetFinalPath>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "GetFinalPathNameByHandleA")));
    char found[MAX_PATH + 8];
    const DWORD size = getFinalPath ? getFinalPath(file.handle(), found, sizeof found, 0) : 0;
    if (size == 0 || size >= sizeof found) return path;
    std::string real(found, size);
    if (real.starts_with("\\\\?\\UNC\\"))
        real.replace(0, 7, "\\");
    else if (real.starts_with("\\\\?\\"))
        real.erase(0, 4);
    return File(real).isOpen() ? real : path;  // not where its folder's name has no ANSI form
}

struct Target {
    std::string path;
    bool isThere = false;
    bool isDevice = false;
};

/// Finds what is to be written; false when it cannot be.
bool find(const std::string& path, Target& target) {
    target.path = path;
    const File file(path);
    if (!file.isOpen()) return GetLastError() == ERROR_FILE_NOT_FOUND;
    target.isThere = true;
    target.isDevice = !file.isOnDisk();
    if (!target.isDevice) target.path = realPath(file, path);
    return true;
}

}  // namespace

bool writeWholeFile(const std::string& path, const std::string& text, std::string& reason) {
    Target target;
    const bool written = find(path, target) &&
                         (target.isDevice ? writeInto(path, text) : replaceFile(target.path, text, target.isThere));
    if (!written) reason = "cannot write: " + errorText();
    return written;
}

}  // namespace tamrix::client
