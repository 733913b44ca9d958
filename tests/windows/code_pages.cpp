#include "code_pages.h"

std::vector<UINT> testing_support::codePagesAmong(std::initializer_list<UINT> wanted) {
    std::vector<UINT> found;
    for (const UINT page : wanted)
        if (useCodePage(page)) found.push_back(page);
    return found;
}

bool testing_support::useCodePage(UINT ansi) {
    return GetACP() == ansi;
}
