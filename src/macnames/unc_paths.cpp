// The exported functions for UNC paths. They use the process's lead bytes; splitting works on a copy of the path.
#include <cstddef>
#include <memory>
#include <new>

#include "macnames/unc.h"
#include "tamrix32/macnames.h"
#include "tamrix32/strings.h"

using tamrix::leadByteTable;

const char* TAMRIX_CALL ZoneSrvDelimiter() {
    return "@";
}

const char* TAMRIX_CALL ZonePrnDelimiter() {
    return "`";
}

int TAMRIX_CALL UNCLength(int kind, const char* zone, const char* name, const char* share) {
    return tamrix::uncLength(kind, zone, name, share);
}

int TAMRIX_CALL StringsToUNC(int kind, char* unc, unsigned short size, const char* zone, const char* name,
                             const char* share) {
    return tamrix::joinUnc(kind, unc, size, zone, name, share);
}

int TAMRIX_CALL UNCToStrings(const char* unc, char* zone, char* name, char* share, char* rest, unsigned restSize) {
    const tamrix::UncParts parts = {zone, name, share, rest, restSize};
    std::unique_ptr<char[]> copy;
    if (tamrix::hasUncPrefix(unc)) copy.reset(new (std::nothrow) char[static_cast<std::size_t>(dbcs_strlen(unc)) + 1]);
    if (!copy) {
        tamrix::clearParts(parts);
        return 0;
    }
    return tamrix::splitUnc(leadByteTable, dbcs_strcpy(copy.get(), unc), parts);
}
