// Reads whole files and streams.
#pragma once

#include <stdio.h>

#include <cstddef>
#include <string>

namespace tamrix::client {

/// Appends a stream's content to `text`. False with the reason on failure, or if there are more than `maxSize` bytes,
/// since a device may be endless.
bool readAll(FILE* stream, std::size_t maxSize, std::string& text, std::string& reason);

/// The same for a file.
bool readFile(const std::string& path, std::size_t maxSize, std::string& text, std::string& reason);

}  // namespace tamrix::client
