#include "code_pages.h"

#include <standin.h>

#include "strings/lead_bytes.h"

std::vector<UINT> testing_support::codePagesAmong(std::initializer_list<UINT> wanted) {
    return wanted;
}

bool testing_support::useCodePage(UINT ansi) {
    if (!standin::setCodePages(ansi, ansi == 1252 ? 437 : ansi)) return false;
    tamrix::buildLeadByteTable();
    return true;
}
