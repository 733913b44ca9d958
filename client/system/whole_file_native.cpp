#include <errno.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include "client/system/error_text.h"
#include "client/system/whole_file.h"
#include "standin.h"

namespace tamrix::client {
namespace {

bool writeDevice(const std::string& path, const std::string& text) {
    FILE* device = fopen(path.c_str(), "wb");
    if (!device) return false;
    const bool written = fwrite(text.data(), 1, text.size(), device) == text.size();
    return fclose(device) == 0 && written;
}

}  // namespace

bool writeWholeFile(const std::string& path, const std::string& text, std::string& reason) {
    struct stat status;
    const bool isThere = stat(path.c_str(), &status) == 0;
    bool written = false;
    if (isThere && !S_ISREG(status.st_mode)) {
        written = writeDevice(path, text);
    } else if (isThere ? access(path.c_str(), W_OK) == 0 : errno == ENOENT) {
        const standin::FileResult result = standin::replaceFile(path, text);
        if (!result.ok) reason = "cannot write: " + result.reason;
        return result.ok;
    }
    if (!written) reason = "cannot write: " + errorText();
    return written;
}

}  // namespace tamrix::client
