// Where the links of a tree point after everything in it got its new name.
#include <algorithm>

#include "client/rename_plan.h"

namespace tamrix::client {
namespace {

/// As many links as systems follow before they take them for a circle.
constexpr int kMostLinks = 40;

/// Follows the names of targets through the tree and outside it.
class Follower {
public:
    Follower(const Tree& tree, const std::string& root) : tree_(tree), root_(root) {}

    /// A place on the way: a folder of the tree, a path outside it, or nowhere that is known.
    struct Place {
        std::size_t folder = kNoFolder;
        std::string outside;  // from the root; ends in a separator
    };

    /// Follows `target`, which is read in `folder`, and appends it to `renamed` with new names.
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
    /// Goes from `place` to what `name` is there; its new name.
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
            place = depth < kMostLinks ? follow(place.folder, entry->entry.target, ignored, depth + 1) : Place{};
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
            link.leadsOut = !follower.follow(folder, entry.target, link.target, 0).outside.empty();
            if (link.leadsOut || link.target != entry.target) links.push_back(std::move(link));
        }
    return links;
}

}  // namespace tamrix::client
