// extmap_wine_bench DLL: compares a complete enumeration of the mappings in a large class root by the shipped DLL with
// the same calls of the real registry alone.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <vector>

#include "class_keys.h"
#include "table.h"

namespace {

constexpr int kKeys = 20000;
constexpr double kLimit = 1.15;

/// The record as a client in C declares it.
struct Record {
    unsigned index;
    char* extension;
    char* type;
    char* creator;
    char* comment;
    int extensionSize;
    unsigned commentSize;
};

using Enumerate = int(__cdecl*)(Record*);

template <typename Pass>
double milliseconds(Pass pass) {
    LARGE_INTEGER frequency, begin, end;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&begin);
    pass();
    QueryPerformanceCounter(&end);
    return static_cast<double>(end.QuadPart - begin.QuadPart) * 1e3 / static_cast<double>(frequency.QuadPart);
}

double median(std::vector<double>& times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
    const HMODULE library = argc > 1 ? LoadLibraryA(argv[1]) : nullptr;
    if (!library) {
        std::fprintf(stderr, "extmap_wine_bench: can't load %s\n", argc > 1 ? argv[1] : "(name the DLL)");
        return 2;
    }
    const auto enumerate = reinterpret_cast<Enumerate>(reinterpret_cast<void*>(GetProcAddress(library, "EnumExtMap")));
    class_keys::fill(kKeys);
    std::vector<double> passes, bare;
    int mappings = 0;
    int codes = 0;
    // Alternating, so that other load on the machine affects both equally.
    for (int round = 0; round < 9; ++round) {
        bare.push_back(milliseconds([&] { codes = class_keys::barePass(); }));
        passes.push_back(milliseconds([&] { mappings = class_keys::mappingPass<Record>(enumerate); }));
    }
    class_keys::clear(kKeys);
    if (mappings < kKeys / 10 || codes < kKeys / 5) {
        std::fprintf(stderr, "extmap_wine_bench: %d mappings and %d codes among %d keys\n", mappings, codes, kKeys);
        return 2;
    }
    return printRow({"EnumExtMap, 20000 keys", median(passes) * 1e6, 0, "bare calls, 20000 keys", median(bare) * 1e6,
                     kLimit})
               ? 0
               : 1;
}
