// What the program prints: results on standard output, complaints on standard error.
#pragma once

#include <string>
#include <string_view>

namespace tamrix::client {

void print(std::string_view text);

/// Prints the content of a file, which is bytes everywhere.
void printBytes(std::string_view bytes);

/// "tamrix: about: message" on standard error; `about` names the argument and may be empty.
void complain(std::string_view about, std::string_view message);

/// Flushes standard output; false when something was not written.
bool finishOutput();

/// Upper-case hexadecimal digits, two a byte.
std::string hex(std::string_view bytes);

}  // namespace tamrix::client
