// What the program can do: one record a command, and the tables that the files of the command groups declare.
//
// Exit statuses: 0 done; 1 some name failed or was not found; 2 the command line or the environment is at fault.
#pragma once

#include <span>
#include <string>

#include "client/options.h"

namespace tamrix::client {

constexpr int kDone = 0;
constexpr int kSomeFailed = 1;
constexpr int kUsageError = 2;

struct Command {
    const char* name;      // one or two words
    const char* operands;  // as the help shows them
    const char* summary;   // one line
    const char* details;   // paragraphs of the help, each line ending in a newline
    std::span<const Option> options;
    int fewest;  // operands
    int most;    // operands; -1: any number
    int (*run)(const Arguments& arguments);
    bool changesMappings = false;
    const char* example = "";  // a line that works, without the program's name
};

std::span<const Command> nameCommands();
std::span<const Command> renameCommands();
std::span<const Command> uncCommands();
std::span<const Command> extmapCommands();
std::span<const Command> transferCommands();
std::span<const Command> infoCommands();
std::span<const Command> dialogCommands();

constexpr Option kJsonOption = {"--json", nullptr, "print one JSON document"};

}  // namespace tamrix::client
