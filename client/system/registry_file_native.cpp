#include "client/system/registry_file_native.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "client/system/error_text.h"
#include "client/system/whole_file.h"
#include "standin.h"

namespace tamrix::client {
namespace {

bool readFrom(int file, std::string& text, std::string& reason) {
    struct stat status;
    // A device or pipe may never end, and saving would replace it by a file.
    if (fstat(file, &status) == 0 && !S_ISREG(status.st_mode)) {
        reason = "not a regular file";
        return false;
    }
    char block[65536];
    ssize_t size = 0;
    while ((size = read(file, block, sizeof block)) > 0) text.append(block, static_cast<std::size_t>(size));
    if (size < 0) reason = "cannot read the file: " + errorText();
    return size == 0;
}

}  // namespace

bool loadRegistry(const std::string& path, std::string& reason) {
    // Does not block, so that a pipe without a writer is rejected too.
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) {
        if (errno != ENOENT) reason = path + ": cannot open the file: " + errorText();
        return reason.empty();
    }
    std::string text;
    const bool isRead = readFrom(file, text, reason);
    close(file);
    if (!isRead) {
        reason = path + ": " + reason;
        return false;
    }
    const auto error = standin::mergeRegistry(text);
    if (error) reason = path + (error->line ? ":" + std::to_string(error->line) : "") + ": " + error->message;
    return !error;
}

bool saveRegistry(const std::string& path, std::string& reason) {
    const auto text = standin::registryAsText(reason);
    const bool isSaved = text && writeWholeFile(path, *text, reason);
    if (!isSaved) reason = path + ": " + reason;
    return isSaved;
}

}  // namespace tamrix::client
