// How names come in and go out: as UTF-8 text, or, with --bytes, as raw bytes.
//
// Text is UTF-8 everywhere inside the program; system/ converts it where the system's own calls, consoles and pipes
// take another form. Bytes of the Windows side are in the active ANSI code page; bytes of the Macintosh side are Mac
// Roman where the library translates characters, and in the ANSI code page where it does not. A conversion that would
// lose or replace a character fails.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace tamrix::client {

enum class Side { mac, windows };

using WideString = std::basic_string<WCHAR>;

/// False with --bytes. Set once, before any command runs.
extern bool namesAreText;

/// Whether --text utf-8 is on: then text in pipes and files is UTF-8 on Windows, too. Set once, like the other.
extern bool pipesAreUtf8;

/// UTF-8 to UTF-16 and back; false for what is not well-formed.
bool wideFromUtf8(std::string_view text, WideString& wide);
bool utf8FromWide(const WideString& wide, std::string& text);

/// Text of a code page; false for bytes that are no text there.
bool wideFromBytes(unsigned codePage, std::string_view bytes, WideString& wide);
/// False when the code page lacks a character; the result then holds what the system puts in its place.
bool bytesFromWide(unsigned codePage, const WideString& wide, std::string& bytes);

/// A name's bytes on one side; false when that side cannot write it. Text that the side has no bytes for is tried
/// composed, and with the other omega: the Greek letter and the ohm sign are one character on a Macintosh.
bool bytesFromText(Side side, std::string_view text, std::string& bytes);

/// A name as text, composed where that means the same bytes; false when the bytes have no text.
bool textFromBytes(Side side, const std::string& bytes, std::string& text);

/// As textFromBytes, for messages: bytes without a text are escaped.
std::string shown(Side side, const std::string& bytes);

/// Text for messages: control characters and what is not UTF-8 as \x and two digits, so that an entry is a line.
std::string visible(std::string_view text);

/// Why bytesFromText failed.
const char* whyNotBytes(Side side);

}  // namespace tamrix::client
