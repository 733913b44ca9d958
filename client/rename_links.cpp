// Computes the new targets of a tree's links from the new names of its entries.
#include <algorithm>

#include "client/rename_plan.h"

namespace tamrix::client {
namespace {

/// Systems follow this many links before they report a loop.
constexpr int kMaxLinks = 40;

/// Follows link targets, name by name, inside and outside the tree.
class Follower {
public:
    Follower(const Tree& tree, const std::string& root) : tree_(tree), root_(root) {}

    /// A position while following a target: a folder of the tree, a path outside it, or unknown.
    struct Place {
        std::size_t folder = kNoFolder;
        std::string outside;  // absolute; ends in a separator
    };

    /// Follows `target`, relative to `folder`, and appends it to `renamed` with the new names.
    Place follow(std::size_t folder, const std::string& target, std::string& renamed, int depth) const {
        Place place{folder, {}};
        if (target.starts_with(kPathSeparator)) place = root_ == "/" ? Place{0, {}} : Place{kNoFolder, "/"};
        for (std::size_t at = 0; at < target.size();) {
            if (target[at] == kPathSeparator) {
                renamed += target[at++];
                continue;
            }
            const std::size_t end = std::min(target.find(kPathSeparator, at), target.size());
            const std::string name = target.substr(at, end - at);
            renamed += step(place, name, depth);
            at = end;
        }
        return place;
    }

private:
    /// Moves `place` to the entry `name` in it. Returns the entry's new name.
    std::string step(Place& place, const std::string& name, int depth) const {
        if (name == ".") return name;
        if (place.folder == kNoFolder) {
            if (!place.outside.empty()) stepOutside(place, name);
            return name;
        }
        if (name == "..") {
            const std::size_t parent = tree_[place.folder].parent;
            if (parent != kNoFolder)
                place.folder = parent;
            else if (root_ != "/")
                place = {kNoFolder, root_.substr(0, root_.rfind('/') + 1)};
            return name;
        }
        const PlannedEntry* entry = find(place.folder, name);
        if (!entry) {
            place = {};
            return name;
        }
        std::string ignored;
        if (entry->entry.kind == EntryKind::link)
            place = depth < kMaxLinks ? follow(place.folder, entry->entry.target, ignored, depth + 1) : Place{};
        else
            place = {entry->folder, {}};
        return entry->newName();
    }

    void stepOutside(Place& place, const std::string& name) const {
        if (name == "..") {
            if (place.outside.size() > 1) place.outside.erase(place.outside.rfind('/', place.outside.size() - 2) + 1);
        } else {
            place.outside += name;
            if (place.outside == root_)
                place = {0, {}};
            else
                place.outside += '/';
        }
    }

    const PlannedEntry* find(std::size_t folder, const std::string& name) const {
        const auto& entries = tree_[folder].entries;
        const auto found = std::lower_bound(
            entries.begin(), entries.end(), name,
            [](const PlannedEntry& entry, const std::string& wanted) { return entry.name() < wanted; });
        return found != entries.end() && found->name() == name ? &*found : nullptr;
    }

    const Tree& tree_;
    const std::string& root_;
};

}  // namespace

std::vector<PlannedLink> planLinks(const Tree& tree, const std::string& root) {
    std::vector<PlannedLink> links;
    const Follower follower(tree, root);
    for (std::size_t folder = 0; folder < tree.size(); ++folder)
        for (std::size_t i = 0; i < tree[folder].entries.size(); ++i) {
            const FolderEntry& entry = tree[folder].entries[i].entry;
            if (entry.target.empty()) continue;
            PlannedLink link{folder, i, {}, false};
            link.leadsOutside = !follower.follow(folder, entry.target, link.target, 0).outside.empty();
            if (link.leadsOutside || link.target != entry.target) links.push_back(std::move(link));
        }
    return links;
}

}  // namespace tamrix::client
