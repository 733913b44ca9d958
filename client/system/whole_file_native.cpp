#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

#include "client/system/error_text.h"
#include "client/system/whole_file.h"

namespace tamrix::client {
namespace {

bool writeDevice(const std::string& path, const std::string& text) {
    FILE* device = fopen(path.c_str(), "wb");
    if (!device) return false;
    const bool written = fwrite(text.data(), 1, text.size(), device) == text.size();
    return fclose(device) == 0 && written;
}

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

/// The target of symbolic links, even if it does not exist yet, so that a link is not replaced by a file.
std::string realTarget(std::string path) {
    char resolved[PATH_MAX];
    for (int links = 0; links < 40; ++links) {
        if (realpath(path.c_str(), resolved)) return resolved;
        const ssize_t size = readlink(path.c_str(), resolved, sizeof resolved);
        if (size <= 0) break;
        std::string next(resolved, static_cast<std::size_t>(size));
        if (next[0] != '/') next.insert(0, folderOf(path) + "/");
        path = std::move(next);
    }
    return path;
}

mode_t modeFor(const std::string& target) {
    struct stat status;
    if (stat(target.c_str(), &status) == 0) return status.st_mode & 07777;
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

bool writeAll(int file, std::string_view text) {
    while (!text.empty()) {
        const ssize_t size = write(file, text.data(), text.size());
        if (size < 0 && errno == EINTR) continue;
        if (size < 0) return false;
        text.remove_prefix(static_cast<std::size_t>(size));
    }
    return true;
}

/// Writes and closes a new file and flushes it to the disk.
bool fill(int file, const std::string& text, mode_t mode) {
    const bool isWhole = writeAll(file, text) && fchmod(file, mode) == 0 && fsync(file) == 0;
    const int error = errno;
    const bool isClosed = close(file) == 0;
    if (!isWhole) errno = error;
    return isWhole && isClosed;
}

/// Flushes a folder's entries to the disk. If that fails, the new file is still in place.
void flushFolder(const std::string& path) {
    const int folder = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) return;
    fsync(folder);
    close(folder);
}

/// Writes a new file in the same folder, which then replaces the old one and gets its permissions.
bool replaceFile(const std::string& path, const std::string& text) {
    const std::string target = realTarget(path);
    std::string newFile = folderOf(target) + "/tamrix.XXXXXX";
    const int file = mkostemp(newFile.data(), O_CLOEXEC);
    if (file < 0) return false;
    if (fill(file, text, modeFor(target)) && rename(newFile.c_str(), target.c_str()) == 0) {
        flushFolder(folderOf(target));
        return true;
    }
    const int error = errno;
    unlink(newFile.c_str());
    errno = error;
    return false;
}

}  // namespace

bool writeWholeFile(const std::string& path, const std::string& text, std::string& reason) {
    struct stat status;
    const bool isThere = stat(path.c_str(), &status) == 0;
    bool written = false;
    if (isThere && !S_ISREG(status.st_mode))
        written = writeDevice(path, text);
    else if (isThere ? access(path.c_str(), W_OK) == 0 : errno == ENOENT)
        written = replaceFile(path, text);
    if (!written) reason = "cannot write the file: " + errorText();
    return written;
}

}  // namespace tamrix::client
