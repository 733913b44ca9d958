// Which names Windows can keep.
#pragma once

#include <cstddef>
#include <string>

namespace tamrix::client {

/// The longest name that Windows takes, in bytes.
constexpr std::size_t kLongestWindowsName = 255;

/// Why Windows, whatever its version, can't keep a file under this name of the ANSI code page; null when it can.
const char* whyWindowsCannotKeep(const std::string& name);

}  // namespace tamrix::client
