// tamrix edit, browse, dialog and about: the library's dialogs.
#include "client/system/dialogs.h"

#include "client/command.h"
#include "client/mapping_text.h"

namespace tamrix::client {
namespace {

constexpr Option kBrowseOptions[] = {{"--open", nullptr, "a file that is there (the default)"},
                                     {"--save", nullptr, "a name to save under"},
                                     {"--folder", nullptr, "a folder"},
                                     {"--title", "T", "the dialog's title, at most 63 bytes"},
                                     {"--filter", "F", "descriptions and patterns: \"Text|*.txt|All|*.*\""},
                                     kJsonOption};
constexpr Option kDialogOptions[] = {{"--adjust", nullptr, "let the dialog's size follow the font"}};
constexpr Option kAboutOptions[] = {
    {"--modeless", nullptr, "a modeless box, whose messages the command itself passes on"}};

int runEdit(const Arguments& arguments) {
    std::string type, creator;
    if (!takeCode(arguments.operands()[0], type) || !takeCode(arguments.operands()[1], creator)) return kUsageError;
    return editMappings(type, creator);
}

/// Takes the value of an option that the library reads at most `most` bytes of.
bool takeText(const Arguments& arguments, const char* option, std::size_t most, std::string& text) {
    const char* value = arguments.value(option);
    if (!value) return true;
    const bool isText = bytesFromText(Side::windows, value, text);
    if (isText && text.size() <= most) return true;
    const std::string reason = isText ? "longer than " + std::to_string(most) + " bytes" : "not text of this code page";
    complain(option, reason + ": " + value);
    return false;
}

int runBrowse(const Arguments& arguments) {
    const auto& operands = arguments.operands();
    if (arguments.has("--open") + arguments.has("--save") + arguments.has("--folder") > 1) {
        complain("browse", "give one of --open, --save and --folder");
        return kUsageError;
    }
    BrowseRequest request;
    if (arguments.has("--save")) request.mode = BrowseMode::save;
    if (arguments.has("--folder")) request.mode = BrowseMode::folder;
    // One byte is kept for the bar that closes a filter.
    if (!takeText(arguments, "--title", kLongestTitle, request.title) ||
        !takeText(arguments, "--filter", kLongestFilter - 1, request.filter))
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
    "Prints the path that was chosen; status 1 when the user cancelled. With --folder, INITIAL is the folder to begin\n"
    "in. With --open and --save, the part after its last backslash is no folder: --save proposes it as the file's "
    "name,\n"
    "--open leaves it out; end it in a backslash to begin in a folder. Needs Windows.\n";
constexpr char kDialogDetails[] =
    "MODULE is an EXE or DLL, ID the number or the name of a dialog in it. The dialog does nothing; OK, Cancel or its\n"
    "closing ends it. Needs Windows.\n";
constexpr char kNeedsWindows[] = "Needs Windows.\n";

constexpr Command kCommands[] = {
    {.name = "edit",
     .operands = "TYPE CREATOR",
     .summary = "edit the extensions of one type and creator in a dialog",
     .details = kNeedsWindows,
     .options = {},
     .fewest = 2,
     .most = 2,
     .run = runEdit,
     .example = "edit TEXT ttxt"},
    {.name = "browse",
     .operands = "[INITIAL]",
     .summary = "ask for a file or a folder",
     .details = kBrowseDetails,
     .options = kBrowseOptions,
     .fewest = 0,
     .most = 1,
     .run = runBrowse,
     .example = "browse --save --filter 'Text|*.txt|All|*.*' 'C:\\Texts\\new.txt'"},
    {.name = "dialog",
     .operands = "MODULE ID",
     .summary = "show a module's dialog in the configured font",
     .details = kDialogDetails,
     .options = kDialogOptions,
     .fewest = 2,
     .most = 2,
     .run = runDialog,
     .example = "dialog Tamrix32.dll 411"},
    {.name = "about",
     .operands = "",
     .summary = "show the about box",
     .details = kNeedsWindows,
     .options = kAboutOptions,
     .fewest = 0,
     .most = 0,
     .run = runAbout,
     .example = "about"},
};

}  // namespace

std::span<const Command> dialogCommands() {
    return kCommands;
}

}  // namespace tamrix::client
