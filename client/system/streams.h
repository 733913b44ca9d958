// Text on standard input, output and error: as the console takes it, in pipes and files as the system's programs do.
// streams_windows.cpp and streams_native.cpp implement it. With --bytes, bytes pass as they are.
#pragma once

#include <stdio.h>

#include <string>
#include <string_view>

namespace tamrix::client {

/// Standard input and output carry bytes as they are.
void makeStreamsBinary();

/// Writes text to `stream`, stdout or stderr. A character that it cannot hold is written as \u{} with its number.
void writeText(FILE* stream, std::string_view text);

/// Whether standard output can hold each character of a text.
bool outputHolds(std::string_view text);

/// The next byte of standard input; EOF at the end.
int readByte();

/// Makes text of what was read; false when it is none. `isUtf8`: a byte order mark said so.
bool textOfInput(std::string& bytes, bool isUtf8);

/// Whether someone watches standard error on a terminal.
bool errorIsTerminal();

}  // namespace tamrix::client
