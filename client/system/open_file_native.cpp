#include "client/system/error_text.h"
#include "client/system/open_file.h"

namespace tamrix::client {

FILE* openToRead(const std::string& path, std::string& reason) {
    FILE* file = fopen(path.c_str(), "rb");
    if (!file) reason = errorText();
    return file;
}

}  // namespace tamrix::client
