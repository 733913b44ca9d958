// Uses wide calls if the system supports them: they accept every name and, with the prefix \\?\, paths of any length
// and names that ordinary paths cannot contain. Windows 95 has only the ANSI code page and paths of up to 260 bytes.
#include <string.h>
#include <windows.h>

#include "client/system/error_text.h"
#include "client/system/folders.h"
#include "client/system/paths_windows.h"
#include "client/unicode.h"

namespace tamrix::client {

const char kPathSeparator = '\\';
const bool kDiskIgnoresCase = true;

namespace {

constexpr char kLong[] = "\\\\?\\";
constexpr char kLongShare[] = "\\\\?\\UNC\\";
constexpr DWORD kIsNameOfAnother = 0x20000000;  // a bit of reparse tags: links and mounted disks have it

FolderEntry entryOf(DWORD attributes, DWORD tag) {
    const bool isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    const bool isReparsed = (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    FolderEntry entry;
    entry.kind = isReparsed && (isFolder || (tag & kIsNameOfAnother)) ? EntryKind::link
                 : isFolder                                           ? EntryKind::folder
                                                                      : EntryKind::file;
    return entry;
}

/// A wide or ANSI search, with the entry that it found last.
class Search {
public:
    explicit Search(const std::string& pattern)
        : handle_(systemIsWide() ? FindFirstFileW(widePath(pattern).c_str(), &wide_)
                                 : FindFirstFileA(ansiPath(pattern).c_str(), &ansi_)) {}
    ~Search() {
        if (found()) FindClose(handle_);
    }
    Search(const Search&) = delete;
    Search& operator=(const Search&) = delete;

    bool found() const { return handle_ != INVALID_HANDLE_VALUE; }
    bool next() { return systemIsWide() ? FindNextFileW(handle_, &wide_) : FindNextFileA(handle_, &ansi_); }

    FolderEntry entry() const {
        FolderEntry entry =
            systemIsWide() ? entryOf(wide_.dwFileAttributes, wide_.dwReserved0) : entryOf(ansi_.dwFileAttributes, 0);
        entry.canBeNamed =
            systemIsWide() ? pathFromWide(wide_.cFileName, entry.name) : pathFromAnsi(ansi_.cFileName, entry.name);
        return entry;
    }

private:
    WIN32_FIND_DATAW wide_;
    WIN32_FIND_DATAA ansi_;
    HANDLE handle_;
};

DWORD attributesOf(const std::string& path) {
    return systemIsWide() ? GetFileAttributesW(widePath(path).c_str()) : GetFileAttributesA(ansiPath(path).c_str());
}

/// The absolute path; empty on failure.
std::string fullPath(const std::string& path) {
    std::string full;
    if (!systemIsWide()) {
        char bytes[MAX_PATH];
        const DWORD size = GetFullPathNameA(ansiPath(path).c_str(), sizeof bytes, bytes, nullptr);
        return size && size < sizeof bytes && pathFromAnsi(bytes, full) ? full : "";
    }
    const WideString given = widePath(path);
    WideString wide(32768, 0);
    const DWORD size = GetFullPathNameW(given.c_str(), 32768, wide.data(), nullptr);
    wide.resize(size < wide.size() ? size : 0);
    return pathFromWide(wide, full) ? full : "";
}

}  // namespace

bool resolveFolder(const std::string& path, std::string& resolved, std::string& reason) {
    resolved = fullPath(path);
    while (resolved.size() > 3 && resolved.ends_with('\\')) resolved.pop_back();
    const DWORD attributes = resolved.empty() ? INVALID_FILE_ATTRIBUTES : attributesOf(resolved);
    if (attributes == INVALID_FILE_ATTRIBUTES)
        reason = errorText();
    else if (!(attributes & FILE_ATTRIBUTE_DIRECTORY))
        reason = "not a folder";
    if (systemIsWide() && !resolved.starts_with("\\\\?\\") && !resolved.starts_with("\\\\.\\"))
        resolved = resolved.starts_with("\\\\") ? kLongShare + resolved.substr(2) : kLong + resolved;
    return reason.empty();
}

std::string plainPath(const std::string& resolved) {
    if (resolved.starts_with(kLongShare)) return "\\\\" + resolved.substr(strlen(kLongShare));
    return resolved.starts_with(kLong) ? resolved.substr(strlen(kLong)) : resolved;
}

bool isRoot(const std::string& resolved) {
    const std::string path = plainPath(resolved);
    if (!path.starts_with("\\\\")) return path.size() <= 3;
    const std::size_t share = path.find('\\', 2);
    return share == std::string::npos || path.find('\\', share + 1) == std::string::npos;
}

std::string joined(const std::string& folder, const std::string& name) {
    const bool ends = folder.empty() || folder.ends_with('\\') || folder.ends_with('/');
    return ends ? folder + name : folder + '\\' + name;
}

bool listFolder(const std::string& path, std::vector<FolderEntry>& entries, std::string& reason) {
    Search search(joined(path, "*"));
    if (!search.found()) {
        // An empty disk's root does not even contain ".".
        const bool isEmpty = GetLastError() == ERROR_FILE_NOT_FOUND;
        if (!isEmpty) reason = errorText();
        return isEmpty;
    }
    do {
        FolderEntry entry = search.entry();
        if (entry.name == "." || entry.name == "..") continue;
        // Windows 95 may show similar characters for those that the code page lacks, and does not find the file by the
        // name that it shows.
        if (!systemIsWide() && attributesOf(joined(path, entry.name)) == INVALID_FILE_ATTRIBUTES)
            entry.canBeNamed = false;
        entries.push_back(std::move(entry));
    } while (search.next());
    if (GetLastError() != ERROR_NO_MORE_FILES) reason = errorText();
    return reason.empty();
}

FolderEntry entryAt(const std::string& path) {
    const Search search(path);
    return search.found() ? search.entry() : FolderEntry{};
}

std::string caseKey(const std::string& name) {
    std::string key;
    if (!systemIsWide()) {
        key = ansiPath(name);
        CharUpperBuffA(key.data(), static_cast<DWORD>(key.size()));
        return key;
    }
    WideString wide = widePath(name);
    CharUpperBuffW(wide.data(), static_cast<DWORD>(wide.size()));
    return utf8FromWide(wide, key) ? key : name;
}

const char* whyNotOnThisDisk(const std::string& name) {
    return name.find('\0') != std::string::npos ? "zero byte not allowed in names on this disk" : nullptr;
}

bool renameWithoutOverwriting(const std::string& from, const std::string& to, std::string& reason) {
    if (systemIsWide() ? MoveFileW(widePath(from).c_str(), widePath(to).c_str())
                       : MoveFileA(ansiPath(from).c_str(), ansiPath(to).c_str()))
        return true;
    reason = errorText();
    return false;
}

bool changeLinkTarget(const std::string&, const std::string&, std::string& reason) {
    reason = "links cannot be changed on Windows";
    return false;
}

void removeUnfinishedLink(const std::string&) {}

}  // namespace tamrix::client
