// Loads and saves the native program's registry as a REGEDIT4 file.
#pragma once

#include <string>

namespace tamrix::client {

/// Fills the registry from a file; a missing file is not an error. On failure returns false with the reason, which
/// names the file, and the registry is unchanged. A malformed file is rejected as a whole; anything but a regular file
/// is rejected without reading it.
bool loadRegistry(const std::string& path, std::string& reason);

/// Writes the whole registry to a file with writeWholeFile. On failure returns false with the reason, which names the
/// file.
bool saveRegistry(const std::string& path, std::string& reason);

}  // namespace tamrix::client
