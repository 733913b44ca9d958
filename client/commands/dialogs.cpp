// tamrix edit, browse, dialog and about: the library's dialogs.
#include "client/system/dialogs.h"

#include "client/command.h"
#include "client/mapping_text.h"
#include "client/output.h"

namespace tamrix::client {
namespace {

constexpr Option kBrowseOptions[] = {
    {.name = "--open", .help = "choose an existing file (default)"},
    {.name = "--save", .help = "choose a name to save under"},
    {.name = "--folder", .help = "choose a folder"},
    {.name = "--title", .value = "T", .help = "the dialog's title, at most 63 bytes"},
    {.name = "--filter", .value = "F", .help = "descriptions and patterns: \"Text|*.txt|All|*.*\""},
    kJsonOption};
constexpr Option kDialogOptions[] = {{.name = "--adjust", .help = "adapt the dialog's size to the font"}};
constexpr Option kAboutOptions[] = {
    {.name = "--modeless", .help = "show a modeless box; the command runs its message loop"}};

int runEdit(const Arguments& arguments) {
    std::string type, creator;
    if (!takeCode(arguments.operands()[0], type) || !takeCode(arguments.operands()[1], creator)) return kUsageError;
    return editMappings(type, creator);
}

/// Converts an option's value to bytes. The library reads at most `maxSize` bytes; a longer value is an error.
bool takeText(const Arguments& arguments, const char* option, std::size_t maxSize, std::string& text) {
    const char* value = arguments.value(option);
    if (!value) return true;
    const bool isText = bytesFromText(Side::windows, value, text);
    if (isText && text.size() <= maxSize) return true;
    const std::string reason =
        isText ? "longer than " + std::to_string(maxSize) + " bytes" : whyNotBytes(Side::windows);
    complain(option, reason + ": " + value);
    return false;
}

int runBrowse(const Arguments& arguments) {
    const auto& operands = arguments.operands();
    if (arguments.has("--open") + arguments.has("--save") + arguments.has("--folder") > 1) {
        complain("browse", "use only one of --open, --save and --folder");
        return kUsageError;
    }
    BrowseRequest request;
    if (arguments.has("--save")) request.mode = BrowseMode::save;
    if (arguments.has("--folder")) request.mode = BrowseMode::folder;
    // One byte is reserved for the bar at the end of a filter.
    if (!takeText(arguments, "--title", kMaxTitleSize, request.title) ||
        !takeText(arguments, "--filter", kMaxFilterSize - 1, request.filter))
        return kUsageError;
    if (!request.filter.empty() && !request.filter.ends_with('|')) request.filter += '|';
    if (!operands.empty() && !bytesFromText(Side::windows, operands[0], request.initial)) {
        complain(operands[0], whyNotBytes(Side::windows));
        return kUsageError;
    }

    std::string chosen;
    const int status = browse(request, chosen);
    if (status != kDone) return status;
    if (!arguments.has("--json")) {
        print(shown(Side::windows, chosen) + "\n");
        return kDone;
    }
    Json json;
    const JsonObject object(json);
    json.bytes("path", Side::windows, chosen);
    return kDone;
}

int runDialog(const Arguments& arguments) {
    return showDialog(arguments.operands()[0], arguments.operands()[1], arguments.has("--adjust"));
}

int runAbout(const Arguments& arguments) {
    return showAbout(!arguments.has("--modeless"));
}

constexpr char kBrowseDetails[] =
    "Prints the chosen path; the exit status is 1 if the user cancelled. With --folder, INITIAL is the folder to\n"
    "begin in. Otherwise INITIAL is a path: the dialog begins in the folder before the last backslash, and --save\n"
    "proposes the rest as the file's name. Needs Windows.\n";
constexpr char kDialogDetails[] =
    "MODULE is an EXE or DLL, ID the number or name of a dialog in it. Its controls do nothing, except that OK and\n"
    "Cancel close it. Needs Windows.\n";
constexpr char kNeedsWindows[] = "Needs Windows.\n";

constexpr Command kCommands[] = {
    {.name = "edit",
     .operands = "TYPE CREATOR",
     .summary = "edit the extensions of one type and creator in a dialog",
     .details = kNeedsWindows,
     .minOperands = 2,
     .maxOperands = 2,
     .run = runEdit,
     .example = "edit TEXT ttxt"},
    {.name = "browse",
     .operands = "[INITIAL]",
     .summary = "ask for a file or a folder",
     .details = kBrowseDetails,
     .options = kBrowseOptions,
     .maxOperands = 1,
     .run = runBrowse,
     .example = "browse --save --filter 'Text|*.txt|All|*.*' 'C:\\Texts\\new.txt'"},
    {.name = "dialog",
     .operands = "MODULE ID",
     .summary = "show a module's dialog in the configured font",
     .details = kDialogDetails,
     .options = kDialogOptions,
     .minOperands = 2,
     .maxOperands = 2,
     .run = runDialog,
     .example = "dialog Tamrix32.dll 411"},
    {.name = "about",
     .summary = "show the about box",
     .details = kNeedsWindows,
     .options = kAboutOptions,
     .run = runAbout,
     .example = "about"},
};

}  // namespace

std::span<const Command> dialogCommands() {
    return kCommands;
}

}  // namespace tamrix::client
