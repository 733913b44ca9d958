#include "client/rename_plan.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace tamrix::client {
namespace {

constexpr std::size_t kNobody = static_cast<std::size_t>(-1);

/// How many entries of the folder have, and will have, one name.
struct Slot {
    int holders = 0;              // entries that have the name now
    int stayers = 0;              // holders that are not renamed
    int takers = 0;               // entries that are to get the name
    std::size_t taker = kNobody;  // the last of the takers
};

/// The slots of one folder, found by an entry's index for its old and its new name.
class Slots {
public:
    Slots(const std::vector<PlannedEntry>& entries, bool ignoreCase) {
        std::vector<std::pair<std::string, std::size_t>> keys;  // even: an old name, odd: a new one
        const auto add = [&](const std::string& name, std::size_t number) {
            keys.emplace_back(ignoreCase ? caseKey(name) : name, number);
        };
        for (std::size_t i = 0; i < entries.size(); ++i) {
            // A name that cannot be used in calls is only displayed and collides with no other.
            add(entries[i].entry.canBeNamed ? entries[i].name() : "?", 2 * i);
            if (entries[i].planned.verdict == Verdict::rename) add(entries[i].newName(), 2 * i + 1);
        }
        std::sort(keys.begin(), keys.end());
        slotOf_.resize(2 * entries.size());
        for (std::size_t i = 0; i < keys.size(); ++i) {
            if (i == 0 || keys[i].first != keys[i - 1].first) slots_.emplace_back();
            slotOf_[keys[i].second] = slots_.size() - 1;
        }
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const bool moves = entries[i].planned.verdict == Verdict::rename;
            ++from(i).holders;
            from(i).stayers += !moves;
            if (!moves) continue;
            ++to(i).takers;
            to(i).taker = i;
        }
    }

    Slot& from(std::size_t entry) { return slots_[slotOf_[2 * entry]]; }
    Slot& to(std::size_t entry) { return slots_[slotOf_[2 * entry + 1]]; }

    /// Whether no other entry will get or now has the new name; an entry's own old name does not count.
    bool isFree(std::size_t entry) {
        return to(entry).takers == 1 && to(entry).holders == (&from(entry) == &to(entry) ? 1 : 0);
    }
    void move(std::size_t entry) {
        --from(entry).holders;
        ++to(entry).holders;
    }

private:
    std::vector<Slot> slots_;
    std::vector<std::size_t> slotOf_;
};

void skip(PlannedEntry& entry, const char* reason) {
    entry.planned.verdict = Verdict::collision;
    entry.planned.reason = reason;
}

/// Windows 95 may show a name with characters outside the code page as the name of another entry; no call can then
/// distinguish the two.
void skipTwins(std::vector<PlannedEntry>& entries) {
    for (std::size_t first = 0, end; first < entries.size(); first = end) {
        std::size_t named = 0;
        for (end = first; end < entries.size() && entries[end].name() == entries[first].name(); ++end)
            named += entries[end].entry.canBeNamed;
        for (std::size_t i = first; named > 1 && i < end; ++i) {
            entries[i].entry.canBeNamed = false;
            skip(entries[i], "collision: the system shows another entry under this name");
        }
    }
}

/// Appends `entry` to the order if its new name is free, then the entry that waited for its old name, and so on.
void takeChain(std::size_t entry, std::vector<PlannedEntry>& entries, Slots& slots, std::vector<bool>& done,
               std::vector<std::size_t>& order) {
    for (bool waits = false; entry != kNobody && !done[entry] && slots.isFree(entry); waits = true) {
        done[entry] = true;
        entries[entry].waits = waits;
        order.push_back(entry);
        slots.move(entry);
        entry = slots.from(entry).taker;
    }
}

}  // namespace

void planFolder(std::vector<FolderEntry> entries, Translate translate, bool ignoreCase, PlannedFolder& folder) {
    std::sort(entries.begin(), entries.end(),
              [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
    for (FolderEntry& entry : entries) {
        PlannedEntry planned{std::move(entry), {}};
        if (planned.entry.canBeNamed)
            planned.planned = translate(planned.name());
        else
            planned.planned = {Verdict::notText, {}, "cannot be represented in the ANSI code page"};
        folder.entries.push_back(std::move(planned));
    }
    skipTwins(folder.entries);

    Slots slots(folder.entries, ignoreCase);
    std::vector<bool> done(folder.entries.size());
    for (std::size_t i = 0; i < folder.entries.size(); ++i)
        if (folder.entries[i].planned.verdict == Verdict::rename)
            takeChain(i, folder.entries, slots, done, folder.renamings);
    for (std::size_t i = 0; i < folder.entries.size(); ++i) {
        PlannedEntry& entry = folder.entries[i];
        if (entry.planned.verdict == Verdict::unchanged && slots.from(i).stayers > 1)
            skip(entry, "collision: another name differs only in case");
        else if (entry.planned.verdict == Verdict::rename && !done[i])
            skip(entry, slots.to(i).takers > 1 ? "collision: another entry would get the same name"
                                               : "collision: the new name already exists");
    }
}

std::vector<std::size_t> deepestFirst(const Tree& tree) {
    std::vector<std::size_t> order(tree.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return tree[a].depth != tree[b].depth ? tree[a].depth > tree[b].depth : a < b;
    });
    return order;
}

std::string pathInTree(const Tree& tree, std::size_t folder, bool withNewNames) {
    std::vector<const std::string*> names;
    for (; tree[folder].parent != kNoFolder; folder = tree[folder].parent) {
        const PlannedFolder& parent = tree[tree[folder].parent];
        const PlannedEntry& entry = parent.entries[tree[folder].entryInParent];
        names.push_back(withNewNames ? &entry.newName() : &entry.name());
    }
    std::string path;
    for (std::size_t i = names.size(); i-- > 0;) path = joined(path, *names[i]);
    return path;
}

}  // namespace tamrix::client
