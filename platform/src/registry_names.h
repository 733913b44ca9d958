// Names of keys and values as the registry compares them: in Unicode by the active ANSI code page, without regard to
// case. Nothing is allocated for it.
#ifndef TAMRIX_PLATFORM_REGISTRY_NAMES_H
#define TAMRIX_PLATFORM_REGISTRY_NAMES_H

#include <string_view>
#include <vector>

namespace standin {

/// Below, at or above 0 as `left` comes before, is the same name as, or comes after `right`.
int compareNames(std::string_view left, std::string_view right);

/// A path's components, split at backslashes that are no trail bytes; empty components are dropped.
std::vector<std::string_view> pathComponents(std::string_view path);

}  // namespace standin

#endif
