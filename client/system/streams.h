// Text on standard input, output and error: Unicode on a console where the system supports it, in pipes and files in
// the system's usual encoding. With --bytes, bytes are passed unchanged. streams_windows.cpp and streams_native.cpp
// implement it.
#pragma once

#include <stdio.h>

#include <string>
#include <string_view>

namespace tamrix::client {

/// Turns off the translation of line ends in the standard streams.
void makeStreamsBinary();

/// Writes text to stdout or stderr. A character that the stream's encoding lacks is written as \u{} with its number.
void writeText(FILE* stream, std::string_view text);

/// Whether the encoding of standard output has all characters of a text.
bool outputCanEncode(std::string_view text);

/// The next byte of standard input; EOF at the end.
int readByte();

/// Converts input to text; false if it is invalid. `isUtf8` is true after a byte order mark.
bool textOfInput(std::string& bytes, bool isUtf8);

/// Whether standard error is a terminal.
bool errorIsTerminal();

}  // namespace tamrix::client
