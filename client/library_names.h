// The library's name conversions for std::string, and its rules for each byte, which are found by calling the library.
#pragma once

#include <string>

namespace tamrix::client {

std::string windowsNameOf(const std::string& macName);
/// The Macintosh form of a Windows name or path; each separator becomes a zero byte.
std::string macNameOf(const std::string& windowsName);

/// The settings of name conversion, derived from the library's results. Lead bytes are copied with the byte after them.
struct ByteRules {
    bool tableIsOn = false;
    unsigned char open = 0;
    unsigned char close = 0;
    bool isLead[256] = {};
    bool isQuoted[256] = {};          // a single byte that is quoted inside a Macintosh name
    bool decodes[256] = {};           // a bracketed number with this value converts back to its byte
    unsigned char windows[256] = {};  // the Windows form of a byte that is not quoted
};

ByteRules askLibrary();

/// `value` as three digits in brackets.
std::string bracketed(const ByteRules& rules, int value);

}  // namespace tamrix::client
