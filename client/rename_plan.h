// Which entries of a folder get which names.
#pragma once

#include <string>
#include <vector>

#include "client/system/folders.h"

namespace tamrix::client {

struct Renaming {
    std::string from;
    std::string to;
    std::string obstacle;  // why it cannot be done; empty when it can
};

/// The Macintosh or Windows form of a name on the disk; false with the obstacle when there is none.
using NewName = bool (*)(const std::string& name, std::string& newName, std::string& obstacle);

/// The entries whose names change, in an order in which each new name is free when its turn comes. Entries that would
/// get one name all stay, and so does one that would get a name that goes on standing in the folder.
std::vector<Renaming> planRenames(const std::vector<FolderEntry>& entries, NewName newName);

}  // namespace tamrix::client
