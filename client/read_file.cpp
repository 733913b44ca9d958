#include "client/read_file.h"

#include "client/system/open_file.h"

namespace tamrix::client {

bool readAll(FILE* stream, std::size_t maxSize, std::string& text, std::string& reason) {
    char block[2048];
    while (const std::size_t size = fread(block, 1, sizeof block, stream)) {
        text.append(block, size);
        if (text.size() > maxSize) {
            reason = "the file is larger than " + std::to_string(maxSize >> 20) + " MB";
            return false;
        }
    }
    if (!ferror(stream)) return true;
    reason = "cannot read the file";
    return false;
}

bool readFile(const std::string& path, std::size_t maxSize, std::string& text, std::string& reason) {
    FILE* file = openToRead(path, reason);
    if (!file) {
        reason = "cannot read the file: " + reason;
        return false;
    }
    const bool isRead = readAll(file, maxSize, text, reason);
    fclose(file);
    return isRead;
}

}  // namespace tamrix::client
