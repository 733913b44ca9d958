// The bytes of a Macintosh name that are quoted if no quote set is configured.
#include <cstddef>

#include "macnames/name_rules.h"

namespace tamrix {
namespace {

// Characters that Windows reserves in names, the zone delimiters of UNC paths (@ and `), and DEL. Zero and the control
// characters are also quoted.
constexpr unsigned char kAlways[] = {'"', '*', '/', ':', '<', '>', '?', '\\', '|', '@', '`', 0x7F};

// Macintosh characters that have no Windows counterpart, or that Windows maps to the same character as another.
constexpr unsigned char kSingleByte[] = {0x87, 0x89, 0x8F, 0x90, 0x91, 0x92, 0x93, 0x94, 0x95, 0x97,  //
                                         0x98, 0x99, 0x9C, 0x9D, 0x9E, 0xB7, 0xD5, 0xD8, 0xDA, 0xDB,  //
                                         0xDD, 0xDE, 0xDF, 0xE0, 0xE1, 0xE2, 0xE4, 0xE5, 0xE8, 0xFF};

// Single bytes that double-byte code pages leave undefined or reserve.
constexpr unsigned char kDoubleByte[] = {0x80, 0xA0, 0xFD, 0xFE, 0xFF};

constexpr int kControls = 0x20;
static_assert(kControls + sizeof kAlways + sizeof kSingleByte == 74 &&
              kControls + sizeof kAlways + sizeof kDoubleByte == 49);

template <std::size_t count>
void include(QuoteSettings& quotes, const unsigned char (&bytes)[count]) {
    for (const unsigned char byte : bytes) quotes.inSet[byte] = true;
}

}  // namespace

QuoteSettings defaultQuotes(bool hasLeadBytes) {
    QuoteSettings quotes = {{}, '[', ']'};
    for (int control = 0; control < kControls; ++control) quotes.inSet[control] = true;
    include(quotes, kAlways);
    if (hasLeadBytes)
        include(quotes, kDoubleByte);
    else
        include(quotes, kSingleByte);
    return quotes;
}

}  // namespace tamrix
