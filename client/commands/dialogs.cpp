// tamrix edit, browse, dialog and about: the library's dialogs.
#include "client/system/dialogs.h"

#include "client/command.h"
#include "client/mapping_text.h"
#include "client/system/encodings.h"

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
    std::string creator, type;
    if (!takeCode(arguments.operands()[0], creator) || !takeCode(arguments.operands()[1], type)) return kUsageError;
    return editMappings(creator, type);
}

/// Takes the value of an option that the library reads at most `most` bytes of.
bool takeText(const Arguments& arguments, const char* option, std::size_t most, std::string& text) {
    const char* value = arguments.value(option);
    if (!value) return true;
    const bool isGood = bytesFromText(Side::windows, argumentText(value), text) && text.size() <= most;
    if (!isGood) complain(option, "longer than " + decimal(static_cast<long>(most)) + " bytes: " + value);
    return isGood;
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
    if (!operands.empty()) request.initial = operands[0];

    std::string chosen;
    const int status = browse(request, chosen);
    if (status != kDone) return status;
    if (!arguments.has("--json")) {
        print(shown(Side::windows, chosen) + "\n");
        return kDone;
    }
    Json json;
    json.beginObject();
    json.bytes("path", Side::windows, chosen);
    json.endObject();
    json.finish();
    return kDone;
}

int runDialog(const Arguments& arguments) {
    return showDialog(arguments.operands()[0], arguments.operands()[1], arguments.has("--adjust"));
}

int runAbout(const Arguments& arguments) {
    return showAbout(!arguments.has("--modeless"));
}

constexpr char kBrowseDetails[] =
    "Prints the path that was chosen; status 1 when the user cancelled. INITIAL is the folder to begin in, or (but "
    "for\n"
    "--folder) a file in it. Needs Windows.\n";
constexpr char kDialogDetails[] =
    "MODULE is an EXE or DLL, ID the number or the name of a dialog in it. The dialog does nothing; OK, Cancel or its\n"
    "closing ends it. Needs Windows.\n";
constexpr char kNeedsWindows[] = "Needs Windows.\n";

constexpr Command kCommands[] = {
    {"edit",
     "CREATOR TYPE",
     "edit the extensions of one creator and type in a dialog",
     kNeedsWindows,
     {},
     2,
     2,
     runEdit},
    {"browse", "[INITIAL]", "ask for a file or a folder", kBrowseDetails, kBrowseOptions, 0, 1, runBrowse},
    {"dialog", "MODULE ID", "show a module's dialog in the configured font", kDialogDetails, kDialogOptions, 2, 2,
     runDialog},
    {"about", "", "show the about box", kNeedsWindows, kAboutOptions, 0, 0, runAbout},
};

}  // namespace

std::span<const Command> dialogCommands() {
    return kCommands;
}

}  // namespace tamrix::client
