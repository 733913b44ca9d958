#include "strings/lead_bytes.h"

#include <windows.h>

namespace tamrix {

LeadByteTable leadByteTable;

int buildLeadByteTable() {
    leadByteTable = {};
    for (int value = 0; value < 256; ++value) {
        if (!IsDBCSLeadByte(static_cast<BYTE>(value))) continue;
        leadByteTable.isLead[value] = 1;
        leadByteTable.hasLeadBytes = 1;
    }
    return 1;
}

}  // namespace tamrix
