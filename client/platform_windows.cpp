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
    FindClose(search);
    return true;
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
