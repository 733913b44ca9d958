// How names come in and go out: as raw bytes, or, with --text utf-8, as text on a UTF-8 terminal.
//
// Bytes of the Macintosh side are Mac Roman, bytes of the Windows side are in the active ANSI code page. A conversion
// that would lose a character fails.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace tamrix::client {

enum class Side { mac, windows };

using WideString = std::basic_string<WCHAR>;

/// UTF-8 to UTF-16 and back; false for what is not well-formed.
bool wideFromUtf8(std::string_view text, WideString& wide);
bool utf8FromWide(const WideString& wide, std::string& text);

/// Whether --text utf-8 is on. Set once, before any command runs.
extern bool textIsUtf8;

/// The bytes of a name as it was typed or read; false when that side cannot write it.
bool bytesFromText(Side side, std::string_view text, std::string& bytes);

/// A name's bytes as they are printed; false when they have no text.
bool textFromBytes(Side side, const std::string& bytes, std::string& text);

/// As textFromBytes, for messages: the raw bytes where there is no text.
std::string shown(Side side, const std::string& bytes);

}  // namespace tamrix::client
