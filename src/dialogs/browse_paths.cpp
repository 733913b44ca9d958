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
    const int length = scan::length(filter, table);
    const int kept = length > size - 2 ? scan::truncated(filter, size - 2, table) : length;
    std::memset(filter + kept, 0, static_cast<std::size_t>(size - kept));
    for (int step; (step = scan::characterSize(filter, table)) != 0; filter += step)
        if (*filter == '|') *filter = 0;
}

void cutPlaceholder(char* path, const char* placeholder, const LeadByteTable& table) {
    char* const backslash = lastBackslash(path, table);
    if (!backslash || std::strcmp(backslash + 1, placeholder) != 0) return;
    const bool isDriveRoot = backslash == path + 2;
    backslash[isDriveRoot ? 1 : 0] = 0;
}

}  // namespace tamrix
