#include "client/mapping_import.h"

#include <utility>

#include "client/mapping_store.h"
#include "client/stored_values.h"

namespace tamrix::client {

std::vector<Change> changesFor(std::vector<Mapping> mappings) {
    std::vector<Change> changes;
    for (Mapping& wanted : mappings) {
        if (wanted.comment && wanted.comment->empty()) wanted.comment.reset();
        Mapping old;
        const bool isNew = !findMapping(wanted.extension, old);
        if (isNew || old != wanted) changes.push_back({std::move(wanted), isNew});
    }
    return changes;
}

Refusal applyChanges(const std::vector<Change>& changes) {
    std::vector<StoredValues> before;
    for (const Change& change : changes) {
        const auto stored = StoredValues::of(change.wanted.extension);
        if (!stored) return {change.wanted.extension, {}};
        before.push_back(*stored);
    }
    Refusal refusal;
    for (std::size_t i = 0; i < changes.size(); ++i) {
        if (putMapping(changes[i].wanted)) continue;
        refusal.extension = changes[i].wanted.extension;
        for (std::size_t left = i + 1; left > 0; --left)
            if (!before[left - 1].restore()) refusal.notUndone.push_back(changes[left - 1].wanted.extension);
        break;
    }
    return refusal;
}

}  // namespace tamrix::client
