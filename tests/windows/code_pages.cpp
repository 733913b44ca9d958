#include "code_pages.h"

#include <algorithm>

std::vector<UINT> testing_support::codePagesAmong(std::initializer_list<UINT> wanted) {
    return std::vector<UINT>(std::ranges::count(wanted, GetACP()), GetACP());
}

bool testing_support::useCodePage(UINT ansi) {
    return GetACP() == ansi;
}
