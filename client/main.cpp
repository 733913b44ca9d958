// The tamrix program: finds the command in the tables, parses its arguments, starts the library and runs the command.
#include "client/command.h"
#include "client/output.h"
#include "client/system/encodings.h"
#include "client/system/startup.h"
#include "client/system/streams.h"
#include "client/text.h"
#include "tamrix32/version.h"

namespace tamrix::client {
namespace {

constexpr char kVersion[] = "tamrix " TAMRIX32_VERSION "\n";

constexpr Option kCommonOptions[] = {
    {.name = "--text",
     .value = "utf-8",
     .help = "on Windows, read and write pipes and files in UTF-8 instead of the ANSI code page"},
    {.name = "--bytes", .help = "treat names as raw bytes instead of text, for scripts"},
    {.name = "--help", .help = "print this help"},
    {.name = "--version", .help = "print the version"},
};

/// Accepted by the parser for every command, so that commands without JSON reject it with one message.
constexpr Option kJsonAnywhere[] = {kJsonOption};

constexpr char kIntroduction[] =
    "usage: tamrix COMMAND [OPTION...] [ARGUMENT...]\n\n"
    "Converts file names between Macintosh and Windows, builds and splits paths of AppleTalk servers and printers,\n"
    "and maps file-name extensions to Macintosh types and creators.\n\n";

constexpr char kStatuses[] =
    "\nExit status: 0 success; 1 a name was not converted, not accepted or not found, or the user cancelled;\n"
    "2 error in the command line, a file or the environment.\n";

using Group = std::span<const Command> (*)();
constexpr Group kGroups[] = {nameCommands,     renameCommands, uncCommands,   extmapCommands,
                             transferCommands, infoCommands,   dialogCommands};

void printOptions(std::span<const Option> options) {
    for (const Option& option : options) {
        std::string line = "  " + std::string(option.name);
        if (option.value) line += " " + std::string(option.value);
        line.resize(line.size() < 24 ? 24 : line.size() + 1, ' ');
        print(line + option.help + "\n");
    }
}

void printCommand(const Command& command) {
    std::string line = "  " + std::string(command.name) + " " + command.operands;
    line.resize(line.size() < 46 ? 46 : line.size() + 1, ' ');
    print(line + command.summary + "\n");
}

/// Help for the program, or for the commands of one group.
void printOverview(std::string_view group) {
    print(kIntroduction);
    print("Commands:\n");
    for (const Group commands : kGroups)
        for (const Command& command : commands())
            if (group.empty() || std::string_view(command.name).starts_with(group)) printCommand(command);
    print("\nOptions of every command:\n");
    printOptions(kCommonOptions);
    printOptions(platformOptions());
    print(kStatuses);
}

void printHelp(const Command& command) {
    print("usage: tamrix " + std::string(command.name) + " [OPTION...] " + command.operands + "\n\n" + command.summary +
          "\n");
    if (command.details[0]) print("\n" + std::string(command.details));
    if (command.example[0]) print("\nExample:\n  tamrix " + std::string(command.example) + "\n");
    print("\nOptions:\n");
    printOptions(command.options);
    printOptions(kCommonOptions);
    printOptions(platformOptions());
    print(kStatuses);
}

/// Finds the command named by the one or two words at `at` and advances `at`; null if there is none.
const Command* findCommand(std::span<char* const> words, std::size_t& at) {
    const std::string one = words[at];
    const std::string two = at + 1 < words.size() ? one + " " + words[at + 1] : one;
    for (const Group commands : kGroups)
        for (const Command& command : commands()) {
            if (one != command.name && two != command.name) continue;
            at += one == command.name ? 1 : 2;
            return &command;
        }
    return nullptr;
}

bool isGroup(const std::string& word) {
    for (const Group commands : kGroups)
        for (const Command& command : commands())
            if (std::string_view(command.name).starts_with(word + " ")) return true;
    return false;
}

/// Handles a command line without a command: prints help or an error message.
int runWithoutCommand(const Arguments& arguments, std::span<char* const> words, std::size_t at) {
    const std::string word = at < words.size() ? words[at] : "";
    const bool asksHelp =
        arguments.has("--help") || (at + 1 < words.size() && std::string_view(words[at + 1]) == "--help");
    if (!arguments.isGood()) {
        complain("", arguments.complaint());
    } else if (arguments.has("--version")) {
        print(kVersion);
        return kDone;
    } else if (asksHelp && (word.empty() || isGroup(word))) {
        printOverview(word.empty() ? word : word + " ");
        return kDone;
    } else if (word.empty()) {
        complain("", "missing command (tamrix --help lists them)");
    } else if (isGroup(word)) {
        const bool hasSecond = at + 1 < words.size();
        complain(
            hasSecond ? word + " " + words[at + 1] : word,
            (hasSecond ? "no such command (tamrix " : "missing subcommand (tamrix ") + word + " --help lists them)");
    } else {
        complain(word, "no such command (tamrix --help lists them)");
    }
    return kUsageError;
}

bool hasOption(const Command& command, std::string_view name) {
    for (const Option& option : command.options)
        if (name == option.name) return true;
    return false;
}

/// The error message for a command's arguments; empty if they are correct.
std::string complaintAbout(const Command& command, const Arguments& arguments) {
    const int count = static_cast<int>(arguments.operands().size());
    const char* text = arguments.value("--text");
    if (!arguments.isGood()) return arguments.complaint();
    if (arguments.has("--json") && !hasOption(command, "--json")) return "--json: this command has no JSON output";
    if (text && std::string_view(text) != "utf-8") return "--text supports only utf-8: " + std::string(text);
    if (text && arguments.has("--bytes")) return "use either --text or --bytes";
    if (count < command.minOperands) return "missing argument: " + std::string(command.operands);
    if (command.maxOperands >= 0 && count > command.maxOperands)
        return "unexpected argument: " + arguments.operands()[static_cast<std::size_t>(command.maxOperands)];
    return {};
}

int run(const Command& command, const Arguments& arguments) {
    if (arguments.has("--help") || arguments.has("--version")) {
        if (arguments.has("--help"))
            printHelp(command);
        else
            print(kVersion);
        return kDone;
    }
    std::string reason = complaintAbout(command, arguments);
    if (reason.empty()) {
        if (startLibrary(arguments, command.changesMappings, reason)) return command.run(arguments);
    }
    complain(command.name, reason);
    return kUsageError;
}

/// A parsed command line: the command, null if there is none, and its arguments.
struct Line {
    std::vector<char*> words;
    std::size_t at = 1;  // the first word after the leading options and the command's name
    Arguments arguments;
    const Command* command = nullptr;

    explicit Line(std::vector<std::string>& texts) {
        for (std::string& text : texts) words.push_back(text.data());
        arguments.allow(kCommonOptions);
        arguments.allow(platformOptions());
        at = arguments.parse(words, 1, true);
        if (arguments.isGood() && at < words.size()) command = findCommand(words, at);
        if (!command) return;
        arguments.allow(command->options);
        arguments.allow(kJsonAnywhere);
        arguments.parse(words, at, false);
    }
};

int runLine(std::vector<std::string> words) {
    const Line asText(words);
    namesAreText = !asText.arguments.has("--bytes");
    pipesAreUtf8 = asText.arguments.has("--text");
    if (!asText.command) return runWithoutCommand(asText.arguments, asText.words, asText.at);
    if (namesAreText) return run(*asText.command, asText.arguments);
    std::string refused;
    if (!wordsToBytes(words, refused)) {
        complain(refused, "cannot be represented in the ANSI code page");
        return kUsageError;
    }
    const Line asBytes(words);
    return run(*asBytes.command, asBytes.arguments);
}

}  // namespace
}  // namespace tamrix::client

int main(int argc, char** argv) {
    using namespace tamrix::client;
    makeStreamsBinary();
    const int status = runLine(commandLine(argc, argv));
    if (finishOutput()) return status;
    complain("", "cannot write standard output");
    return kUsageError;
}
