// What happens to one Macintosh name on its way to Windows and back.
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

/// Five bytes of the name that look like a quote to the way back.
struct LooksQuoted {
    std::size_t position;
    int value;
};

struct NameReport {
    std::string windowsName;
    std::vector<QuotedByte> quoted;
    std::vector<LooksQuoted> looksQuoted;
    bool comesBack = false;
    bool tooLong = false;
    const char* notKept = nullptr;  // why Windows can't keep the name, also where it is too long
};

NameReport checkName(const std::string& macName, const ByteRules& rules);

}  // namespace tamrix::client
