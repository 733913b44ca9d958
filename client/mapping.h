// A mapping of an extension as a value.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace tamrix::client {

/// A mapping that can be stored: no string contains a zero byte.
struct Mapping {
    std::string extension;  // including the dot, at most 16 bytes, no backslash
    std::string type;       // 4 bytes
    std::string creator;    // 4 bytes
    std::optional<std::string> comment;

    bool operator==(const Mapping&) const = default;
};

/// The longest extension in bytes, without its dot.
constexpr std::size_t kMaxExtensionSize = 15;

/// Adds the leading dot, which registry keys have and users may omit.
inline void addDot(std::string& extension) {
    if (!extension.starts_with('.')) extension.insert(extension.begin(), '.');
}

}  // namespace tamrix::client
