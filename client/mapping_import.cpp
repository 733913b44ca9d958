#include "client/mapping_import.h"

#include <utility>

#include "client/mapping_store.h"

namespace tamrix::client {
namespace {

void undo(const Change& change) {
    if (change.isNew)
        removeMapping(change.wanted.extension);
    else
        putMapping(change.old);
}

}  // namespace

std::vector<Change> changesFor(std::vector<Mapping> mappings) {
    std::vector<Change> changes;
    for (Mapping& wanted : mappings) {
        if (wanted.comment && wanted.comment->empty()) wanted.comment.reset();
        Change change{std::move(wanted), {}, true};
        change.isNew = !findMapping(change.wanted.extension, change.old);
        if (change.isNew || change.old != change.wanted) changes.push_back(std::move(change));
    }
    return changes;
}

const Change* applyChanges(const std::vector<Change>& changes) {
    for (std::size_t i = 0; i < changes.size(); ++i) {
        if (putMapping(changes[i].wanted)) continue;
        for (std::size_t done = 0; done <= i; ++done) undo(changes[done]);
        return &changes[i];
    }
    return nullptr;
}

}  // namespace tamrix::client
