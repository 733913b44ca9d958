// The shipped DLL's name translation against the platform's own conversions on the same names: names_wine_bench DLL.
#include <windows.h>

#include <algorithm>
#include <cstdio>

#include "names.h"

namespace {

constexpr UINT kMacintosh = 10000;
constexpr UINT kWindows = 1252;

using Translation = int(__cdecl*)(char*, const char*, unsigned);

/// Through UTF-16, as a program without the library would do it.
int convert(UINT from, UINT to, char* dst, const char* name) {
    WCHAR wide[256];
    const int units = MultiByteToWideChar(from, 0, name, -1, wide, 256);
    return WideCharToMultiByte(to, 0, wide, units, dst, 256, nullptr, nullptr);
}

/// The median of several rounds, in nanoseconds a name.
template <typename Work>
double nanoseconds(const std::vector<std::string>& names, Work work) {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    std::vector<double> rounds;
    volatile int sink = 0;
    for (int round = 0; round < 15; ++round) {
        LARGE_INTEGER begin, end;
        char buffer[256];
        QueryPerformanceCounter(&begin);
        for (int repeat = 0; repeat < 50; ++repeat)
            for (const std::string& name : names) sink = sink + work(buffer, name.c_str()) + buffer[0];
        QueryPerformanceCounter(&end);
        rounds.push_back(static_cast<double>(end.QuadPart - begin.QuadPart) * 1e9 /
                         static_cast<double>(frequency.QuadPart) / (50.0 * static_cast<double>(names.size())));
    }
    std::sort(rounds.begin(), rounds.end());
    return rounds[rounds.size() / 2];
}

/// Prints a line; whether the library was at least twice as fast.
bool compare(const char* name, double library, double platform) {
    const bool fast = library * 2 <= platform;
    std::printf("%-14s %8.1f ns   platform's pair %8.1f ns   %5.1f times as fast (at least 2)%s\n", name, library,
                platform, platform / library, fast ? "" : "  SLOWER");
    return fast;
}

}  // namespace

int main(int argc, char** argv) {
    const HMODULE library = argc > 1 ? LoadLibraryA(argv[1]) : nullptr;
    if (!library) {
        std::fprintf(stderr, "names_wine_bench: can't load %s\n", argc > 1 ? argv[1] : "(name the DLL)");
        return 2;
    }
    const auto entry = [library](const char* name) {
        return reinterpret_cast<Translation>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    };
    const Translation toWindows = entry("AFPtoOSCopy");
    const Translation toMac = entry("OStoAFPCopy");

    std::string high;
    for (int value = 0x80; value < 0x100; ++value) high += static_cast<char>(value);
    const std::vector<std::string> mac = sampleNames(1024, high);
    std::vector<std::string> windows;
    for (const std::string& name : mac) {
        char buffer[256];
        toWindows(buffer, name.c_str(), sizeof buffer);
        windows.push_back(buffer);
    }
    const double there = nanoseconds(mac, [&](char* dst, const char* name) { return toWindows(dst, name, 256); });
    const double pairThere =
        nanoseconds(mac, [](char* dst, const char* name) { return convert(kMacintosh, kWindows, dst, name); });
    const double back = nanoseconds(windows, [&](char* dst, const char* name) { return toMac(dst, name, 256); });
    const double pairBack =
        nanoseconds(windows, [](char* dst, const char* name) { return convert(kWindows, kMacintosh, dst, name); });
    const bool fast = compare("AFPtoOSCopy", there, pairThere);
    return compare("OStoAFPCopy", back, pairBack) && fast ? 0 : 1;
}
