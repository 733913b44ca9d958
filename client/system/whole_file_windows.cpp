#include <windows.h>

#include "client/system/error_text.h"
#include "client/system/folders.h"
#include "client/system/paths_windows.h"
#include "client/system/whole_file.h"

namespace tamrix::client {
namespace {

constexpr DWORD kNoAttributes = 0xFFFFFFFF;

constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE;

bool moveFile(const std::string& from, const std::string& to) {
    return systemIsWide() ? MoveFileW(widePath(from).c_str(), widePath(to).c_str())
                          : MoveFileA(ansiPath(from).c_str(), ansiPath(to).c_str());
}

bool deleteFile(const std::string& path) {
    return systemIsWide() ? DeleteFileW(widePath(path).c_str()) : DeleteFileA(ansiPath(path).c_str());
}

/// An existing file or device, open for writing until the object is destroyed.
class File {
public:
    explicit File(const std::string& path)
        : handle_(systemIsWide() ? CreateFileW(widePath(path).c_str(), GENERIC_WRITE, kShared, nullptr, OPEN_EXISTING,
                                               FILE_ATTRIBUTE_NORMAL, nullptr)
                                 : CreateFileA(ansiPath(path).c_str(), GENERIC_WRITE, kShared, nullptr, OPEN_EXISTING,
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

/// Creates an empty temporary file next to `path`. Returns its path, or an empty string on failure.
std::string makeFileBeside(const std::string& path) {
    std::string made;
    const std::size_t end = path.find_last_of("\\/:");
    const std::string folder = end == std::string::npos ? "." : path.substr(0, end + 1);
    if (systemIsWide()) {
        WCHAR wide[MAX_PATH];
        return GetTempFileNameW(widePath(folder).c_str(), L"tmx", 0, wide) && pathFromWide(wide, made) ? made : "";
    }
    char bytes[MAX_PATH];
    return GetTempFileNameA(ansiPath(folder).c_str(), "tmx", 0, bytes) && pathFromAnsi(bytes, made) ? made : "";
}

bool writeInto(const std::string& path, const std::string& text) {
    File file(path);
    return file.isOpen() && file.write(text) && (!file.isOnDisk() || file.flush());
}

/// Replaces a file by another in one step. On Windows 95 the function for that is missing or not implemented.
bool moveOver(const std::string& from, const std::string& to) {
    using Move = BOOL(WINAPI*)(const WCHAR*, const WCHAR*, DWORD);
    const auto move = reinterpret_cast<Move>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "MoveFileExW")));
    SetLastError(ERROR_CALL_NOT_IMPLEMENTED);
    return systemIsWide() && move &&
           move(widePath(from).c_str(), widePath(to).c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}

/// The same in two steps: the old file is renamed, and renamed back if the new one cannot take its place. If that fails
/// too, `aside` receives the old file's current path; otherwise it is empty.
bool moveOverInTwoSteps(const std::string& from, const std::string& to, std::string& aside) {
    aside = makeFileBeside(to);
    const bool hasMoved = !aside.empty() && deleteFile(aside) && moveFile(to, aside);
    const bool done = hasMoved && moveFile(from, to);
    const DWORD error = GetLastError();
    if (done) deleteFile(aside);
    if (done || !hasMoved || moveFile(aside, to)) aside.clear();
    SetLastError(error);
    return done;
}

void keepAttributes(const std::string& of, const std::string& newFile) {
    const DWORD attributes =
        systemIsWide() ? GetFileAttributesW(widePath(of).c_str()) : GetFileAttributesA(ansiPath(of).c_str());
    if (attributes == kNoAttributes) return;
    if (systemIsWide())
        SetFileAttributesW(widePath(newFile).c_str(), attributes);
    else
        SetFileAttributesA(ansiPath(newFile).c_str(), attributes);
}

bool moveInto(const std::string& path, const std::string& newFile, bool isThere, std::string& aside) {
    if (!isThere) return moveFile(newFile, path);
    keepAttributes(path, newFile);
    if (moveOver(newFile, path)) return true;
    return GetLastError() == ERROR_CALL_NOT_IMPLEMENTED && moveOverInTwoSteps(newFile, path, aside);
}

/// On failure returns false with the reason; an existing file is unchanged, or the reason names the file that has its
/// content.
bool replaceFile(const std::string& path, const std::string& text, bool isThere, std::string& reason) {
    const std::string newFile = makeFileBeside(path);
    std::string aside;
    if (!newFile.empty() && writeInto(newFile, text) && moveInto(path, newFile, isThere, aside)) return true;
    reason = "cannot write the file: " + errorText();
    if (!aside.empty()) reason += "; its former content is now in " + aside;
    if (!newFile.empty()) deleteFile(newFile);
    return false;
}

/// An open file's path without links, on systems that have the function for it; otherwise `path`.
std::string realPath(const File& file, const std::string& path) {
    using GetFinalPath = DWORD(WINAPI*)(HANDLE, WCHAR*, DWORD, DWORD);
    const auto getFinalPath = reinterpret_cast<GetFinalPath>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "GetFinalPathNameByHandleW")));
    constexpr DWORD kRoom = MAX_PATH + 8;
    WCHAR found[kRoom];
    std::string real;
    const DWORD size = getFinalPath ? getFinalPath(file.handle(), found, kRoom, 0) : 0;
    return size && size < kRoom && pathFromWide({found, size}, real) ? plainPath(real) : path;
}

struct Target {
    std::string path;
    bool isThere = false;
    bool isDevice = false;
};

/// Finds the file to write; false if it cannot be written.
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
    const bool isFound = find(path, target);
    if (isFound && !target.isDevice) return replaceFile(target.path, text, target.isThere, reason);
    if (isFound && writeInto(path, text)) return true;
    reason = "cannot write the file: " + errorText();
    return false;
}

}  // namespace tamrix::client
