#include "dialogs/browse_paths.h"

#include <cstring>

#include "strings/scan.h"

namespace tamrix {
namespace {

char* lastBackslash(char* path, const LeadByteTable& table) {
    return const_cast<char*>(scan::findLast(path, '\\', table));
}

}  // namespace

const char* splitInitialPath(char* path, const LeadByteTable& table) {
    char* const backslash = lastBackslash(path, table);
    if (!backslash) {
        *path = 0;
        return nullptr;
    }
    *backslash = 0;
    return backslash + 1;
}

void splitFilter(char* filter, int size, const LeadByteTable& table) {
    char* const end = filter + size - 2;  // last position at which the two final zeros can begin
    bool isFirstString = true;
    while (filter < end) {
        int step = scan::characterSize(filter, table);
        if (step == 0) {
            isFirstString = false;
            step = 1;
        }
        if (step > end - filter) break;
        if (isFirstString && *filter == '|') *filter = 0;
        filter += step;
    }
    std::memset(filter, 0, static_cast<std::size_t>(end + 2 - filter));
}

void cutPlaceholder(char* path, const char* placeholder, const LeadByteTable& table) {
    char* const backslash = lastBackslash(path, table);
    if (!backslash || std::strcmp(backslash + 1, placeholder) != 0) return;
    const bool isDriveRoot = backslash == path + 2;
    backslash[isDriveRoot ? 1 : 0] = 0;
}

}  // namespace tamrix
