// Conversions between UTF-8, UTF-16 and code pages. UTF-8 is implemented here because Windows 95 lacks it.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace tamrix::client {

using WideString = std::basic_string<WCHAR>;

constexpr unsigned kMaxScalar = 0x10FFFF;

/// Reads the UTF-8 sequence at `at` and advances `at`. Returns the scalar value, or more than kMaxScalar if the
/// sequence is malformed.
unsigned takeScalar(std::string_view text, std::size_t& at);

/// UTF-8 to UTF-16 and back; false if the input is not well-formed.
bool wideFromUtf8(std::string_view text, WideString& wide);
bool utf8FromWide(const WideString& wide, std::string& text);

/// Converts bytes of a code page to UTF-16; false if they are invalid in it.
bool wideFromBytes(unsigned codePage, std::string_view bytes, WideString& wide);
/// Converts UTF-16 to bytes of a code page; false if it lacks a character. The result then contains the system's
/// replacements.
bool bytesFromWide(unsigned codePage, const WideString& wide, std::string& bytes);

}  // namespace tamrix::client
