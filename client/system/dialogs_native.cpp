// The native program shows no dialogs.
#include "client/command.h"
#include "client/output.h"
#include "client/system/dialogs.h"

namespace tamrix::client {
namespace {

int needsWindows(const char* command) {
    complain(command, "needs Windows: run tamrix.exe");
    return kUsageError;
}

}  // namespace

int editMappings(const std::string&, const std::string&) {
    return needsWindows("edit");
}

int browse(const BrowseRequest&, std::string&) {
    return needsWindows("browse");
}

int showDialog(const std::string&, const std::string&, bool) {
    return needsWindows("dialog");
}

int showAbout(bool) {
    return needsWindows("about");
}

}  // namespace tamrix::client
