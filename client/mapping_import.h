// Changes several mappings: either all or none.
#pragma once

#include <string>
#include <vector>

#include "client/mapping.h"

namespace tamrix::client {

struct Change {
    Mapping wanted;
    bool isNew;  // the extension has no complete mapping yet
};

/// The mappings that differ from the stored ones.
std::vector<Change> changesFor(std::vector<Mapping> mappings);

/// The result of applyChanges: which change failed, if any.
struct Refusal {
    std::string extension;               // whose mapping could not be stored; empty on success
    std::vector<std::string> notUndone;  // extensions whose former values could not be restored
};

/// Writes all changes. If one fails, the former values are restored byte for byte.
Refusal applyChanges(const std::vector<Change>& changes);

}  // namespace tamrix::client
