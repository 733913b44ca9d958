#include <fcntl.h>
#include <stdint.h>
#include <unistd.h>

#include "client/system/append_file.h"
#include "client/system/error_text.h"

namespace tamrix::client {
namespace {

// handle_ is the descriptor plus one, because a descriptor may be 0.
int numberOf(void* handle) {
    return static_cast<int>(reinterpret_cast<intptr_t>(handle)) - 1;
}

}  // namespace

AppendFile::~AppendFile() {
    if (handle_) close(numberOf(handle_));
}

bool AppendFile::open(const std::string& path, bool isNew, std::string& reason) {
    const int flags = O_WRONLY | O_APPEND | O_CLOEXEC | (isNew ? O_CREAT | O_EXCL : 0);
    const int number = ::open(path.c_str(), flags, 0666);
    if (number < 0) reason = errorText();
    handle_ = reinterpret_cast<void*>(static_cast<intptr_t>(number) + 1);
    return number >= 0;
}

bool AppendFile::append(const std::string& text, std::string& reason) {
    if (hasFailed_) return false;
    hasFailed_ = true;
    for (std::size_t at = 0; at < text.size();) {
        const ssize_t written = write(numberOf(handle_), text.data() + at, text.size() - at);
        if (written < 0) {
            reason = errorText();
            return false;
        }
        at += static_cast<std::size_t>(written);
    }
    hasFailed_ = false;
    return true;
}

bool AppendFile::flush(std::string& reason) {
    if (fsync(numberOf(handle_)) == 0) return true;
    reason = errorText();
    return false;
}

}  // namespace tamrix::client
