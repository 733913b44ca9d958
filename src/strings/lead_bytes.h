// The lead bytes of the active ANSI code page. Scanning functions take a table as an argument, so that they work for
// any code page. The exported functions pass the table of the process, which is written only while the library is being
// loaded.
#pragma once

namespace tamrix {

struct LeadByteTable {
    bool isLead[256];   // for each byte value: whether it begins a double-byte character
    bool hasLeadBytes;  // whether any of them is true; if not, the code page is single-byte

    bool leads(char byte) const { return isLead[static_cast<unsigned char>(byte)]; }
};

extern LeadByteTable leadByteTable;

/// Fills `leadByteTable` using the platform's test for lead bytes.
void buildLeadByteTable();

}  // namespace tamrix
