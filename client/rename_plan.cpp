#include "client/rename_plan.h"

#include <algorithm>
#include <utility>

namespace tamrix::client {
namespace {

/// How many entries hold a name now, and how many are to get it, by the name's key.
struct Slot {
    std::string key;
    int holders = 0;
    int takers = 0;
};

class Slots {
public:
    void add(const std::string& name) { slots_.push_back({nameKey(name)}); }
    void sort() {
        std::sort(slots_.begin(), slots_.end(), [](const Slot& a, const Slot& b) { return a.key < b.key; });
    }
    /// The slot of a name that was added; all the same for equal keys.
    Slot& of(const std::string& name) {
        const std::string key = nameKey(name);
        return *std::lower_bound(slots_.begin(), slots_.end(), key,
                                 [](const Slot& slot, const std::string& wanted) { return slot.key < wanted; });
    }

private:
    std::vector<Slot> slots_;
};

/// Moves to `done`, as long as there are any, the renamings whose new name is free once those before them are done.
/// What stays in `open` is blocked.
void takeFree(std::vector<Renaming>& open, std::vector<Renaming>& done, Slots& slots) {
    for (bool moved = true; moved;) {
        moved = false;
        std::vector<Renaming> blocked;
        for (Renaming& renaming : open) {
            Slot& from = slots.of(renaming.from);
            Slot& to = slots.of(renaming.to);
            // Its own old name is in nobody's way, as where only the case changes.
            const bool isFree = to.takers == 1 && to.holders == (&from == &to ? 1 : 0);
            if (isFree) {
                --from.holders;
                ++to.holders;
                moved = true;
            }
            (isFree ? done : blocked).push_back(std::move(renaming));
        }
        open = std::move(blocked);
    }
}

}  // namespace

std::vector<Renaming> planRenames(const std::vector<FolderEntry>& entries, NewName newName) {
    std::vector<Renaming> plan, open;
    Slots slots;
    for (const FolderEntry& entry : entries) {
        Renaming renaming{entry.name, {}, {}};
        slots.add(entry.name);
        const bool isUsable = newName(entry.name, renaming.to, renaming.obstacle);
        if (isUsable && renaming.to == entry.name) continue;
        if (const char* why = isUsable ? whyNotAName(renaming.to) : nullptr) renaming.obstacle = why;
        if (renaming.obstacle.empty()) slots.add(renaming.to);
        (renaming.obstacle.empty() ? open : plan).push_back(std::move(renaming));
    }
    slots.sort();
    std::sort(open.begin(), open.end(), [](const Renaming& a, const Renaming& b) { return a.from < b.from; });
    for (const FolderEntry& entry : entries) ++slots.of(entry.name).holders;
    for (const Renaming& renaming : open) ++slots.of(renaming.to).takers;
    takeFree(open, plan, slots);
    for (Renaming& renaming : open) {
        renaming.obstacle = slots.of(renaming.to).takers > 1 ? "collision: another entry would get the same name"
                                                             : "collision: the name is taken";
        plan.push_back(std::move(renaming));
    }
    return plan;
}

}  // namespace tamrix::client
