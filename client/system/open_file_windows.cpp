#include "client/system/error_text.h"
#include "client/system/open_file.h"
#include "client/system/paths_windows.h"

namespace tamrix::client {

FILE* openToRead(const std::string& path, std::string& reason) {
    FILE* file = systemIsWide() ? _wfopen(widePath(path).c_str(), L"rb") : fopen(ansiPath(path).c_str(), "rb");
    if (!file) reason = errorText();
    return file;
}

}  // namespace tamrix::client
