// The commands: one record per command. Each command group's file defines a table of them.
//
// Exit statuses: 0 success; 1 a name was not converted, not accepted or not found, or the user cancelled; 2 error in
// the command line, a file or the environment.
#pragma once

#include <span>

#include "client/options.h"

namespace tamrix::client {

constexpr int kDone = 0;
constexpr int kSomeFailed = 1;
constexpr int kUsageError = 2;

struct Command {
    const char* name;           // one or two words
    const char* operands = "";  // as shown in the help
    const char* summary;        // one line
    const char* details = "";   // lines of the help, each with a newline at its end
    std::span<const Option> options = {};
    int minOperands = 0;
    int maxOperands = 0;  // -1: any number
    int (*run)(const Arguments& arguments);
    bool changesMappings = false;
    const char* example = "";  // a valid command line without the program's name
};

std::span<const Command> nameCommands();
std::span<const Command> renameCommands();
std::span<const Command> uncCommands();
std::span<const Command> extmapCommands();
std::span<const Command> transferCommands();
std::span<const Command> infoCommands();
std::span<const Command> dialogCommands();

constexpr Option kJsonOption = {.name = "--json", .help = "print one JSON document"};

}  // namespace tamrix::client
