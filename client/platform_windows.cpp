// The shipped EXE: the loader starts the DLL, the system keeps the mappings, and names on the disk are ANSI.
#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <string.h>
#include <windows.h>

#include "client/output.h"
#include "client/platform.h"

namespace tamrix::client {

const char kPathSeparator = '\\';
const bool kDiskNamesAreText = false;

namespace {

constexpr UINT kMacRoman = 10000;

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
            return "collision: the name is taken";
        case ERROR_SHARING_VIOLATION:
            return "another program uses it";
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
            return "the disk is full";
        default:
            return "Windows error " + decimal(static_cast<long>(error));
    }
}

/// The library's section of two counters that all processes share, found through the headers of the loaded module.
const long* sharedCounters() {
    const auto* base = reinterpret_cast<const unsigned char*>(GetModuleHandleA("Tamrix32.dll"));
    if (!base) return nullptr;
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS32*>(base + dos->e_lfanew);
    const IMAGE_SECTION_HEADER* section = IMAGE_FIRST_SECTION(headers);
    for (int left = headers->FileHeader.NumberOfSections; left > 0; --left, ++section)
        if (memcmp(section->Name, ".shared", sizeof ".shared") == 0)
            return reinterpret_cast<const long*>(base + section->VirtualAddress);
    return nullptr;
}

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

std::span<const Option> platformOptions() {
    return {};
}

void makeStreamsBinary() {
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

bool startLibrary(const Arguments&, bool, std::string& reason) {
    WCHAR letter;
    if (!textIsUtf8 || MultiByteToWideChar(kMacRoman, 0, "a", 1, &letter, 1) == 1) return true;
    reason = "--text: this system lacks code page 10000, Mac Roman";
    return false;
}

bool keepMappings(std::string&) {
    return true;
}

bool wideFromMac(const std::string& bytes, WideString& wide) {
    const int size = static_cast<int>(bytes.size());
    wide.resize(bytes.size());
    if (bytes.empty()) return true;
    const int written = MultiByteToWideChar(kMacRoman, 0, bytes.data(), size, wide.data(), size);
    wide.resize(static_cast<std::size_t>(written));
    return written > 0;
}

bool macFromWide(const WideString& wide, std::string& bytes) {
    const int size = static_cast<int>(wide.size());
    bytes.resize(wide.size());
    if (wide.empty()) return true;
    const int written = WideCharToMultiByte(kMacRoman, 0, wide.data(), size, bytes.data(), size, nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(written));
    return written > 0;
}

std::string argumentText(const std::string& argument) {
    std::string text;
    return textFromBytes(Side::windows, argument, text) ? text : argument;
}

bool readCounters(long& processes, long& threads) {
    const long* counters = sharedCounters();
    if (!counters) return false;
    processes = counters[0];
    threads = counters[1];
    return true;
}

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

bool writeWholeFile(const std::string& path, const std::string& text, std::string& reason) {
    Target target;
    const bool written = find(path, target) &&
                         (target.isDevice ? writeInto(path, text) : replaceFile(target.path, text, target.isThere));
    if (!written) reason = "cannot write: " + errorText();
    return written;
}

bool renameWithoutOverwriting(const std::string& from, const std::string& to, std::string& reason) {
    if (MoveFileA(from.c_str(), to.c_str())) return true;
    reason = errorText();
    return false;
}

}  // namespace tamrix::client
