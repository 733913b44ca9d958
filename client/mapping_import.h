// Changing many mappings as one: all of them, or none.
#pragma once

#include <vector>

#include "client/mapping_file.h"

namespace tamrix::client {

struct Change {
    Mapping wanted;
    Mapping old;  // only where it is not new
    bool isNew;
};

/// What of these mappings differs from the store.
std::vector<Change> changesFor(std::vector<Mapping> mappings);

/// Writes all changes. Where one is refused, it and those before it are undone; the refused one, or null.
const Change* applyChanges(const std::vector<Change>& changes);

}  // namespace tamrix::client
