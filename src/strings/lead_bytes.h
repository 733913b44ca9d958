// The lead bytes of the active ANSI code page. Scans take a table as an argument, so that any code page can be walked;
// the exported functions pass the process's own, which is written only while the library is being loaded.
#pragma once

#include <cstdint>

namespace tamrix {

struct LeadByteTable {
    std::uint8_t isLead[256];   // 1 for a byte that begins a double-byte character
    std::int32_t hasLeadBytes;  // 1 when any does

    bool leads(char byte) const { return isLead[static_cast<unsigned char>(byte)] != 0; }
};

extern LeadByteTable leadByteTable;

/// Fills `leadByteTable` from the platform's lead-byte test. Always 1.
int buildLeadByteTable();

}  // namespace tamrix
