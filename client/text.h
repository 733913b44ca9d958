// The encoding of names in input and output: UTF-8 text or, with --bytes, raw bytes.
//
// Inside the program all text is UTF-8; system/ converts it for system calls, consoles and pipes that use another
// encoding. Bytes of the Windows side are in the active ANSI code page. Bytes of the Macintosh side are in Mac Roman if
// the library translates characters, otherwise in the ANSI code page. A conversion that would lose or replace a
// character fails.
#pragma once

#include <string>
#include <string_view>

namespace tamrix::client {

enum class Side { mac, windows };

/// False with --bytes. Set once, before any command runs.
extern bool namesAreText;

/// True with --text utf-8: text in pipes and files is then UTF-8 on Windows too. Set once, before any command runs.
extern bool pipesAreUtf8;

/// Converts text to bytes of one side; false if a character cannot be represented there. If the text itself cannot be
/// converted, its composed form is tried, and then the ohm sign in place of the Greek omega and vice versa, which are
/// one character on a Macintosh.
bool bytesFromText(Side side, std::string_view text, std::string& bytes);

/// Converts bytes of one side to text; false if they are not text. The text is composed if the composed form converts
/// back to the same bytes.
bool textFromBytes(Side side, const std::string& bytes, std::string& text);

/// Like textFromBytes, for messages: if the bytes are not text, non-ASCII bytes are escaped.
std::string shown(Side side, const std::string& bytes);

/// Text for messages: control characters and invalid UTF-8 become \x and two digits, so that a message is one line.
std::string visible(std::string_view text);

/// Upper-case hexadecimal digits, two per byte.
std::string hex(std::string_view bytes);

/// The error message for a failed bytesFromText.
const char* whyNotBytes(Side side);

}  // namespace tamrix::client
