// Opens files that users name. open_file_windows.cpp and open_file_native.cpp implement it.
#pragma once

#include <stdio.h>

#include <string>

namespace tamrix::client {

/// Opens a file for binary reading; null with the reason on failure.
FILE* openToRead(const std::string& path, std::string& reason);

}  // namespace tamrix::client
