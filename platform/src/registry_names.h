// Comparison of key and value names as in the registry: converted to Unicode from the active ANSI code page, and
// case-insensitive. Allocates no memory.
#pragma once

#include <string_view>
#include <vector>

namespace standin {

/// Negative if `left` comes before `right`, 0 if they are the same name, positive if it comes after.
int compareNames(std::string_view left, std::string_view right);

/// The components of a path, split at backslashes that are not trail bytes; empty components are dropped.
std::vector<std::string_view> pathComponents(std::string_view path);

}  // namespace standin
