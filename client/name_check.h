// Reports how a Macintosh name is converted to Windows and back.
#pragma once

#include <string>
#include <vector>

#include "client/library_names.h"

namespace tamrix::client {

struct QuotedByte {
    std::size_t position;  // in the Macintosh name, from 0
    unsigned char byte;
    const char* reason;
};

/// Five bytes of the Macintosh name that become a bracketed number of the Windows name, which converts back to one
/// byte.
struct LooksQuoted {
    std::size_t position;
    int value;
};

struct NameReport {
    std::string windowsName;
    std::vector<QuotedByte> quoted;
    std::vector<LooksQuoted> looksQuoted;
    bool convertsBack = false;
    bool tooLong = false;
    const char* notAccepted = nullptr;  // why Windows does not accept the name, including its length; null if it does
};

NameReport checkName(const std::string& macName, const ByteRules& rules);

}  // namespace tamrix::client
