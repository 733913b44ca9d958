// Shows the library's dialogs. dialogs_windows.cpp implements it; in the native program every function only reports
// that it needs Windows. The functions return exit statuses: kUsageError if no dialog could be shown. Errors are
// reported.
#pragma once

#include <string>

namespace tamrix::client {

/// Shows the editor for the extensions of one type and creator.
int editMappings(const std::string& type, const std::string& creator);

enum class BrowseMode { open, save, folder };

struct BrowseRequest {
    BrowseMode mode = BrowseMode::open;
    std::string title;    // at most kMaxTitleSize bytes; empty for the system's own title
    std::string filter;   // such as "Text|*.txt|All|*.*|", at most kMaxFilterSize bytes; empty for none
    std::string initial;  // the initial folder; for open and save, followed by a file name
};

// The number of bytes that the library reads of a title and of a filter.
constexpr std::size_t kMaxTitleSize = 63;
constexpr std::size_t kMaxFilterSize = 127;

/// Asks for a file or folder; kSomeFailed if the user cancels.
int browse(const BrowseRequest& request, std::string& chosen);

/// Shows a module's dialog, whose `id` is a number or a name, in the configured font until OK, Cancel or closing ends
/// it.
int showDialog(const std::string& module, const std::string& id, bool adjustSize);

int showAbout(bool modal);

}  // namespace tamrix::client
