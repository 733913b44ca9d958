// The library's dialogs, shown on a desktop. dialogs_windows.cpp implements them; natively there is none, and
// every action says so. Results are exit statuses, kUsageError where nothing could be shown; complaints have been made.
#pragma once

#include <string>

namespace tamrix::client {

/// Lets the user edit the extensions of one creator and type.
int editMappings(const std::string& type, const std::string& creator);

enum class BrowseMode { open, save, folder };

struct BrowseRequest {
    BrowseMode mode = BrowseMode::open;
    std::string title;    // at most kLongestTitle bytes; empty: the platform's own
    std::string filter;   // at most kLongestFilter bytes, "Text|*.txt|All|*.*|"; empty: none
    std::string initial;  // the folder, or but for a folder's choice a path whose last part is a file's name
};

// What the library reads of a title and of a filter.
constexpr std::size_t kLongestTitle = 63;
constexpr std::size_t kLongestFilter = 127;

/// Asks for a file or folder; kSomeFailed when the user cancels.
int browse(const BrowseRequest& request, std::string& chosen);

/// Shows dialog `id`, a number or a name, of a module in the configured font, until a button or its closing ends it.
int showDialog(const std::string& module, const std::string& id, bool adjustSize);

int showAbout(bool modal);

}  // namespace tamrix::client
