// Which file names Windows accepts.
#pragma once

#include <cstddef>
#include <string>

namespace tamrix::client {

/// The longest name that Windows accepts, in bytes.
constexpr std::size_t kMaxWindowsNameSize = 255;

/// Why some version of Windows does not accept this file name in the ANSI code page; null if all versions accept it.
const char* whyWindowsRejects(const std::string& name);

}  // namespace tamrix::client
