#include "strings/lead_bytes.h"

#include <windows.h>

namespace tamrix {

LeadByteTable leadByteTable;

void buildLeadByteTable() {
    leadByteTable = {};
    for (int value = 0; value < 256; ++value) {
        if (!IsDBCSLeadByte(static_cast<BYTE>(value))) continue;
        leadByteTable.isLead[value] = true;
        leadByteTable.hasLeadBytes = true;
    }
}

}  // namespace tamrix
