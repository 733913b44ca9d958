// names_wine_bench DLL: compares the shipped DLL's name conversion with the platform's conversion functions, and its
// string functions with those of the platform's C library, on the same names.
#include <windows.h>

#include <algorithm>
#include <cstdio>

#include "calls.h"
#include "names.h"
#include "table.h"

namespace {

constexpr UINT kMacintosh = 10000;
constexpr UINT kWindows = 1252;
constexpr std::size_t kNames = 1000;
constexpr unsigned kRoom = 1 << 18;

char buffer[kRoom];

/// Converts through UTF-16, as a program without the library would.
int convert(UINT from, UINT to, char* dst, const char* name) {
    WCHAR wide[256];
    const int units = MultiByteToWideChar(from, 0, name, -1, wide, 256);
    return WideCharToMultiByte(to, 0, wide, units, dst, 256, nullptr, nullptr);
}

int walkWithCharNext(const char* text) {
    const char* p = text;
    while (*p) p = CharNextA(p);
    return static_cast<int>(p - text);
}

/// The shortest time of several rounds, in nanoseconds per text.
template <typename Work>
double nanoseconds(const std::vector<Text>& texts, Work work) {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    const int repeats = static_cast<int>(50 * kNames / (texts.size() * (texts.size() == 1 ? kNames : 1)));
    std::vector<double> rounds;
    for (int round = 0; round < 15; ++round) {
        LARGE_INTEGER begin, end;
        QueryPerformanceCounter(&begin);
        for (int repeat = 0; repeat < repeats; ++repeat) {
            for (const Text& text : texts) {
                volatile auto result = work(buffer, text);
                (void)result;
            }
        }
        QueryPerformanceCounter(&end);
        rounds.push_back(static_cast<double>(end.QuadPart - begin.QuadPart) * 1e9 /
                         static_cast<double>(frequency.QuadPart) / (repeats * static_cast<double>(texts.size())));
    }
    return *std::min_element(rounds.begin(), rounds.end());
}

/// Measures the library's function with each text and with all texts joined, and the other implementation. Returns
/// whether the row is within its limits.
template <typename Ours, typename Theirs>
bool compare(const char* operation, const Texts& texts, Ours ours, const char* reference, Theirs theirs, double limit) {
    const double once = nanoseconds(texts.each, ours);
    const double growth = nanoseconds(texts.joined, ours) / (kNames * once);
    return printRow({operation, once, growth, reference, nanoseconds(texts.each, theirs), limit});
}

template <typename Function>
Function* entry(HMODULE module, const char* name) {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

/// Compares the library's function with that of the platform's C library; `call` calls both.
template <typename Function, typename Call>
bool compareWithC(HMODULE library, const char* ours, const char* theirs, const Texts& texts, Call call,
                  const char* operation = nullptr) {
    const auto with = [call](Function* function) {
        return [=](char* dst, const Text& text) { return call(function, dst, text); };
    };
    return compare(operation ? operation : ours, texts, with(entry<Function>(library, ours)), theirs,
                   with(entry<Function>(GetModuleHandleA("msvcrt.dll"), theirs)), 1.3);
}

bool compareStrings(HMODULE library, const Texts& texts) {
    using Copy = char*(char*, const char*);
    using CopyBounded = char*(char*, const char*, int);
    using Find = char*(const char*, int);
    using Compare = int(const char*, const char*);
    const auto length = entry<int(const char*)>(library, "dbcs_strlen");
    const bool fits[] = {
        compareWithC<int(const char*)>(library, "dbcs_strlen", "strlen", texts, calls::length),
        compare(
            "dbcs_strlen", texts, [=](char* dst, const Text& text) { return calls::length(length, dst, text); },
            "CharNextA walk", [](char* dst, const Text& text) { return calls::length(walkWithCharNext, dst, text); },
            1),
        compareWithC<Copy>(library, "dbcs_strcpy", "strcpy", texts, calls::copy),
        compareWithC<Copy>(library, "dbcs_strcat", "strcat", texts, calls::append),
        compareWithC<CopyBounded>(library, "dbcs_strncpy", "strncpy", texts, calls::copyBounded),
        compareWithC<Find>(library, "dbcs_strchr", "strchr", texts, calls::find),
        compareWithC<Find>(library, "dbcs_strrchr", "strrchr", texts, calls::find),
        compareWithC<Compare>(library, "dbcs_strcmp", "strcmp", texts, calls::compare),
        compareWithC<Compare>(library, "dbcs_stricmp", "_stricmp", texts, calls::compare),
        compareWithC<Compare>(library, "dbcs_stricmp", "_stricmp", texts, calls::compareCase,
                              "dbcs_stricmp, other case"),
    };
    return std::all_of(std::begin(fits), std::end(fits), [](bool fit) { return fit; });
}

}  // namespace

int main(int argc, char** argv) {
    const HMODULE library = argc > 1 ? LoadLibraryA(argv[1]) : nullptr;
    if (!library) {
        std::fprintf(stderr, "names_wine_bench: can't load %s\n", argc > 1 ? argv[1] : "(name the DLL)");
        return 2;
    }
    using Translation = int(char*, const char*, unsigned);
    const auto toWindows = entry<Translation>(library, "AFPtoOSCopy");
    const auto toMac = entry<Translation>(library, "OStoAFPCopy");

    std::string high;
    for (int value = 0x80; value < 0x100; ++value) high += static_cast<char>(value);
    Texts mac, windows;
    for (const std::string& name : sampleNames(kNames, high)) {
        char translated[256];
        toWindows(translated, name.c_str(), sizeof translated);
        mac.add(name);
        windows.add(translated);
    }
    const auto by = [](auto translation) {
        return [=](char* dst, const Text& text) { return translation(dst, text.name.c_str(), kRoom); };
    };
    const auto pair = [](UINT from, UINT to) {
        return [=](char* dst, const Text& text) { return convert(from, to, dst, text.name.c_str()); };
    };
    bool fits =
        compare("AFPtoOSCopy", mac, by(toWindows), "platform's pair to Windows", pair(kMacintosh, kWindows), 0.5);
    fits =
        compare("OStoAFPCopy", windows, by(toMac), "platform's pair to Mac", pair(kWindows, kMacintosh), 0.5) && fits;
    return compareStrings(library, windows) && fits ? 0 : 1;
}
