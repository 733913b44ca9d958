#include <windows.h>

#include "client/system/error_text.h"
#include "client/system/whole_file.h"

namespace tamrix::client {
namespace {

constexpr DWORD kNoAttributes = 0xFFFFFFFF;

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

/// Moves a file in place of another in one step. Windows 95 has no function for that, or one that is not implemented.
bool moveOver(const std::string& from, const std::string& to) {
    using Move = BOOL(WINAPI*)(const char*, const char*, DWORD);
    const auto move = reinterpret_cast<Move>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "MoveFileExA")));
    SetLastError(ERROR_CALL_NOT_IMPLEMENTED);
    return move && move(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}

/// The same in two steps: the former file moves aside, and back when the new one can't follow. Where it can't go back
/// either, `aside` names it, and is empty otherwise.
bool moveOverInTwoSteps(const std::string& from, const std::string& to, std::string& aside) {
    aside = makeFileBeside(to);
    const bool hasMoved = !aside.empty() && DeleteFileA(aside.c_str()) && MoveFileA(to.c_str(), aside.c_str());
    const bool done = hasMoved && MoveFileA(from.c_str(), to.c_str());
    const DWORD error = GetLastError();
    if (done) DeleteFileA(aside.c_str());
    if (done || !hasMoved || MoveFileA(aside.c_str(), to.c_str())) aside.clear();
    SetLastError(error);
    return done;
}

bool moveInto(const std::string& path, const std::string& newFile, bool isThere, std::string& aside) {
    if (!isThere) return MoveFileA(newFile.c_str(), path.c_str());
    const DWORD attributes = GetFileAttributesA(path.c_str());
    if (attributes != kNoAttributes) SetFileAttributesA(newFile.c_str(), attributes);
    if (moveOver(newFile, path)) return true;
    return GetLastError() == ERROR_CALL_NOT_IMPLEMENTED && moveOverInTwoSteps(newFile, path, aside);
}

/// False with the reason; a former file is where it was, or the reason names the file in which its content is.
bool replaceFile(const std::string& path, const std::string& text, bool isThere, std::string& reason) {
    const std::string newFile = makeFileBeside(path);
    std::string aside;
    if (!newFile.empty() && writeInto(newFile, text) && moveInto(path, newFile, isThere, aside)) return true;
    reason = "cannot write: " + errorText();
    if (!aside.empty()) reason += "; what was in the file is now in " + aside;
    if (!newFile.empty()) DeleteFileA(newFile.c_str());
    return false;
}

/// The path of an open file where its links lead, which systems have that know this function.
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
    const bool isFound = find(path, target);
    if (isFound && !target.isDevice) return replaceFile(target.path, text, target.isThere, reason);
    if (isFound && writeInto(path, text)) return true;
    reason = "cannot write: " + errorText();
    return false;
}

}  // namespace tamrix::client
