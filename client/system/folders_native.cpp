#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unicode/uchar.h>
#include <unistd.h>

#include "client/system/error_text.h"
#include "client/system/folders.h"
#include "client/text.h"
#include "client/unicode.h"

namespace tamrix::client {

const char kPathSeparator = '/';
const bool kDiskIgnoresCase = false;

namespace {

constexpr char kUnfinishedLink[] = ".tamrix-unfinished-link";

/// A path as an open folder and a relative path for the *at() calls. A call accepts at most PATH_MAX bytes, so the
/// leading folders of a longer path are opened, part by part.
class Place {
public:
    explicit Place(const std::string& path) : rest_(path) {
        while (rest_.size() >= PATH_MAX) {
            const std::size_t cut = rest_.rfind('/', PATH_MAX - 1);
            if (cut == std::string::npos || cut == 0) return;
            const int next = openat(folder_, rest_.substr(0, cut).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
            if (next < 0) return;  // the path stays too long, and the next call fails for that reason
            close();
            folder_ = next;
            rest_.erase(0, cut + 1);
        }
    }
    ~Place() { close(); }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

    int folder() const { return folder_; }
    const char* path() const { return rest_.c_str(); }

private:
    void close() {
        if (folder_ != AT_FDCWD) ::close(folder_);
    }

    int folder_ = AT_FDCWD;
    std::string rest_;
};

FolderEntry entryIn(int folder, const char* path, std::string name) {
    FolderEntry entry;
    entry.name = std::move(name);
    struct stat status;
    if (fstatat(folder, path, &status, AT_SYMLINK_NOFOLLOW) != 0) return entry;
    entry.kind = S_ISDIR(status.st_mode)   ? EntryKind::folder
                 : S_ISLNK(status.st_mode) ? EntryKind::link
                                           : EntryKind::file;
    if (entry.kind != EntryKind::link) return entry;
    char target[PATH_MAX];
    const ssize_t size = readlinkat(folder, path, target, sizeof target);
    if (size > 0) entry.target.assign(target, static_cast<std::size_t>(size));
    return entry;
}

std::string unfinishedLinkNextTo(const std::string& path) {
    return path.substr(0, path.rfind('/') + 1) + kUnfinishedLink;
}

}  // namespace

bool resolveFolder(const std::string& path, std::string& resolved, std::string& reason) {
    char* real = realpath(path.c_str(), nullptr);
    struct stat status;
    if (!real || stat(real, &status) != 0)
        reason = errorText();
    else if (!S_ISDIR(status.st_mode))
        reason = "not a folder";
    resolved = real ? real : "";
    free(real);
    return reason.empty();
}

std::string plainPath(const std::string& resolved) {
    return resolved;
}

bool isRoot(const std::string& resolved) {
    return resolved == "/";
}

std::string joined(const std::string& folder, const std::string& name) {
    return folder.ends_with('/') || folder.empty() ? folder + name : folder + '/' + name;
}

bool listFolder(const std::string& path, std::vector<FolderEntry>& entries, std::string& reason) {
    const Place place(path);
    const int handle = openat(place.folder(), place.path(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    DIR* folder = handle < 0 ? nullptr : fdopendir(handle);
    if (!folder) {
        reason = errorText();
        if (handle >= 0) close(handle);
        return false;
    }
    // Only errno distinguishes the end from an error.
    while (const dirent* found = (errno = 0, readdir(folder))) {
        const std::string name = found->d_name;
        if (name != "." && name != "..") entries.push_back(entryIn(dirfd(folder), found->d_name, name));
    }
    if (errno != 0) reason = errorText();
    closedir(folder);
    return reason.empty();
}

FolderEntry entryAt(const std::string& path) {
    const Place place(path);
    return entryIn(place.folder(), place.path(), path);
}

std::string caseKey(const std::string& name) {
    WideString wide;
    std::string key;
    if (namesAreText ? !wideFromUtf8(name, wide) : !wideFromBytes(CP_ACP, name, wide)) return name;
    for (WCHAR& unit : wide) {
        // Only pairs that convert both ways, as on Windows: the dotless i and the long s do not change.
        const UChar32 upper = u_toupper(unit);
        if (upper < 0x10000 && u_tolower(upper) == unit) unit = static_cast<WCHAR>(upper);
    }
    return utf8FromWide(wide, key) ? key : name;
}

const char* whyNotOnThisDisk(const std::string& name) {
    if (name.empty() || name == "." || name == "..") return "name not allowed on this disk";
    if (name.find('/') != std::string::npos) return "slash not allowed in names on this disk";
    if (name.find('\0') != std::string::npos) return "zero byte not allowed in names on this disk";
    return name.size() > NAME_MAX ? "name too long for this disk" : nullptr;
}

bool renameWithoutOverwriting(const std::string& from, const std::string& to, std::string& reason) {
    const Place source(from), target(to);
    if (renameat2(source.folder(), source.path(), target.folder(), target.path(), RENAME_NOREPLACE) == 0) return true;
    struct stat status;
    if (errno == EINVAL || errno == ENOSYS) {
        // The file system does not support RENAME_NOREPLACE.
        if (fstatat(target.folder(), target.path(), &status, AT_SYMLINK_NOFOLLOW) == 0)
            errno = EEXIST;
        else if (renameat(source.folder(), source.path(), target.folder(), target.path()) == 0)
            return true;
    }
    reason = errno == EEXIST ? "the name already exists" : errorText();
    return false;
}

bool changeLinkTarget(const std::string& path, const std::string& target, std::string& reason) {
    const std::string unfinished = unfinishedLinkNextTo(path);
    const Place from(unfinished), to(path);
    if (symlinkat(target.c_str(), from.folder(), from.path()) == 0) {
        if (renameat2(from.folder(), from.path(), to.folder(), to.path(), 0) == 0) return true;
        const int error = errno;
        removeUnfinishedLink(path);
        errno = error;
    }
    reason = errorText();
    return false;
}

void removeUnfinishedLink(const std::string& path) {
    const std::string unfinished = unfinishedLinkNextTo(path);
    const Place place(unfinished);
    if (entryAt(unfinished).kind == EntryKind::link) unlinkat(place.folder(), place.path(), 0);
}

}  // namespace tamrix::client
