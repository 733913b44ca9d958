// The names that a command processes: its operands or, without operands, the lines of standard input.
#pragma once

#include <functional>
#include <string>

#include "client/options.h"
#include "client/text.h"

namespace tamrix::client {

/// Names in standard input and in the output end in a zero byte instead of a newline.
constexpr Option kZeroOption = {.name = "-0", .help = "names in standard input and in the output end in a zero byte"};

/// Calls `act` with the bytes of each name. Returns kSomeFailed if `act` returned false or a name could not be
/// converted, which is reported; kUsageError if standard input cannot be read.
int forEachName(const Arguments& arguments, Side side, const std::function<bool(const std::string& bytes)>& act);

}  // namespace tamrix::client
