#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <stdio.h>
#include <sys/stat.h>

#include "client/system/error_text.h"
#include "client/system/folders.h"

namespace tamrix::client {

const char kPathSeparator = '/';
const bool kDiskNamesAreText = true;

bool listFolder(const std::string& path, std::vector<FolderEntry>& entries, std::string& reason) {
    DIR* folder = opendir(path.c_str());
    if (!folder) {
        reason = errorText();
        return false;
    }
    // Its end is told from an error by errno alone.
    while (const dirent* found = (errno = 0, readdir(folder))) {
        const std::string name = found->d_name;
        struct stat status;
        if (name == "." || name == "..") continue;
        const bool known = fstatat(dirfd(folder), found->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0;
        entries.push_back({name, known && S_ISDIR(status.st_mode)});
    }
    if (errno != 0) reason = errorText();
    closedir(folder);
    return reason.empty();
}

std::string nameKey(const std::string& name) {
    return name;
}

const char* whyNotAName(const std::string& name) {
    if (name.empty() || name == "." || name == "..") return "this disk does not take the name";
    if (name.find('/') != std::string::npos) return "this disk does not take a slash in a name";
    if (name.find('\0') != std::string::npos) return "this disk does not take a zero byte in a name";
    return name.size() > NAME_MAX ? "the name is too long for this disk" : nullptr;
}

bool renameWithoutOverwriting(const std::string& from, const std::string& to, std::string& reason) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
    struct stat status;
    if (errno == EINVAL || errno == ENOSYS) {
        // A file system without that kind of renaming.
        if (lstat(to.c_str(), &status) == 0)
            errno = EEXIST;
        else if (rename(from.c_str(), to.c_str()) == 0)
            return true;
    }
    reason = errno == EEXIST ? "collision: the name is taken" : errorText();
    return false;
}

}  // namespace tamrix::client
