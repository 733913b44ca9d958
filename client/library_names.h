// The library's name functions over strings, and what the library does with each byte, found by asking it.
#pragma once

#include <string>

namespace tamrix::client {

std::string windowsNameOf(const std::string& macName);
/// The Macintosh form of a Windows name or path; each separator becomes a zero byte.
std::string macNameOf(const std::string& windowsName);

/// The settings of name translation as they show in what the library answers. Lead bytes pass with the byte after them.
struct ByteRules {
    bool tableIsOn = false;
    unsigned char open = 0;
    unsigned char close = 0;
    bool isLead[256] = {};
    bool isQuoted[256] = {};          // of a single byte inside a Macintosh name
    bool decodes[256] = {};           // a bracketed number with this value is read back as its byte
    unsigned char windows[256] = {};  // a byte that is not quoted, as Windows sees it
};

ByteRules askLibrary();

/// The three digits of `value` between the brackets.
std::string bracketed(const ByteRules& rules, int value);

}  // namespace tamrix::client
