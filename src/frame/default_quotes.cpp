// The bytes of a Macintosh name that are quoted while no set is configured.
#include "frame/settings.h"

namespace tamrix {
namespace {

// What Windows reserves in names and what client paths use as delimiters; then zero, the control characters and delete.
#define TAMRIX_RESERVED_AND_CONTROLS                                                                                \
    '"', '*', '/', ':', '<', '>', '?', '\\', '|', '@', '`', 0x00, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08,   \
        0x09, 0x0A, 0x0B, 0x0C, 0x0D, 0x0E, 0x0F, 0x10, 0x11, 0x12, 0x13, 0x14, 0x15, 0x16, 0x17, 0x18, 0x19, 0x1A, \
        0x1B, 0x1C, 0x1D, 0x1E, 0x1F, 0x7F

// Macintosh characters that lack a Windows counterpart of their own or that Windows folds onto another.
constexpr unsigned char kSingleByte[] = {TAMRIX_RESERVED_AND_CONTROLS,
                                         0x87,
                                         0x89,
                                         0x8F,
                                         0x90,
                                         0x91,
                                         0x92,
                                         0x93,
                                         0x94,
                                         0x95,
                                         0x97,
                                         0x98,
                                         0x99,
                                         0x9C,
                                         0x9D,
                                         0x9E,
                                         0xB7,
                                         0xD5,
                                         0xD8,
                                         0xDA,
                                         0xDB,
                                         0xDD,
                                         0xDE,
                                         0xDF,
                                         0xE0,
                                         0xE1,
                                         0xE2,
                                         0xE4,
                                         0xE5,
                                         0xE8,
                                         0xFF};

// Single bytes that double-byte code pages leave undefined or reserve.
constexpr unsigned char kDoubleByte[] = {TAMRIX_RESERVED_AND_CONTROLS, 0x80, 0xA0, 0xFD, 0xFE, 0xFF};

#undef TAMRIX_RESERVED_AND_CONTROLS

static_assert(sizeof kSingleByte == 74 && sizeof kDoubleByte == 49);

}  // namespace

DefaultQuotes defaultQuotes(bool hasLeadBytes) {
    if (hasLeadBytes) return {kDoubleByte, sizeof kDoubleByte};
    return {kSingleByte, sizeof kSingleByte};
}

}  // namespace tamrix
