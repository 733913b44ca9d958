// Output of the program: results on standard output, error messages on standard error.
#pragma once

#include <string>
#include <string_view>

namespace tamrix::client {

void print(std::string_view text);

/// Prints bytes without conversion, such as the content of a mapping file.
void printBytes(std::string_view bytes);

/// Prints "tamrix: about: message" to standard error. `about` is usually an argument or a path, and may be empty.
void complain(std::string_view about, std::string_view message);

/// Flushes standard output; false if any output could not be written.
bool finishOutput();

}  // namespace tamrix::client
