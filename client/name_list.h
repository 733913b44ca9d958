// The names that a command is given: its operands or, without any, the lines of standard input.
#pragma once

#include <functional>
#include <string>

#include "client/options.h"
#include "client/text.h"

namespace tamrix::client {

/// Ends names in standard input and in the output with a zero byte.
constexpr Option kZeroOption = {"-0", nullptr, "names from standard input, and printed, end in a zero byte"};

/// Calls `act` with the bytes of each name; kSomeFailed when a name could not be taken, which a complaint has named, or
/// `act` says false.
int forEachName(const Arguments& arguments, Side side, const std::function<bool(const std::string& bytes)>& act);

}  // namespace tamrix::client
