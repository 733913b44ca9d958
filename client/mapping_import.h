// Changing many mappings as one: all of them, or none.
#pragma once

#include <string>
#include <vector>

#include "client/mapping_file.h"

namespace tamrix::client {

struct Change {
    Mapping wanted;
    bool isNew;  // the extension has no complete mapping yet
};

/// What of these mappings differs from the store.
std::vector<Change> changesFor(std::vector<Mapping> mappings);

/// Why changes could not be made.
struct Refusal {
    std::string extension;               // of the change that the registry refuses; empty: none
    std::vector<std::string> notUndone;  // extensions whose former values could not be put back either
};

/// Writes all changes. Where one is refused, the store is put back as it was, byte for byte.
Refusal applyChanges(const std::vector<Change>& changes);

}  // namespace tamrix::client
