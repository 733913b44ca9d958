#include <windows.h>

#include "client/system/encodings.h"

extern "C" {
struct WideStartInfo {
    int newMode;
};
// A function of msvcrt that no header declares; it works on Windows 95 too.
int __cdecl __wgetmainargs(int* argc, wchar_t*** argv, wchar_t*** environment, int expandWildcards,
                           WideStartInfo* info);
}

namespace tamrix::client {
namespace {

constexpr int kFormC = 1;

/// Exists on Windows Vista and later.
using NormalizeFunction = int(WINAPI*)(int form, LPCWSTR source, int size, LPWSTR target, int capacity);

NormalizeFunction findNormalize() {
    const HMODULE module = LoadLibraryA("normaliz.dll");
    return module
               ? reinterpret_cast<NormalizeFunction>(reinterpret_cast<void*>(GetProcAddress(module, "NormalizeString")))
               : nullptr;
}

}  // namespace

WideString composed(const WideString& text) {
    static const NormalizeFunction normalize = findNormalize();
    if (text.empty()) return text;
    WideString result(text.size() * 3 + 1, 0);
    const int size = static_cast<int>(text.size()), capacity = static_cast<int>(result.size());
    // Windows NT composes letters and marks; on Windows 95 the function exists but fails.
    const int written = normalize ? normalize(kFormC, text.data(), size, result.data(), capacity)
                                  : FoldStringW(MAP_PRECOMPOSED, text.data(), size, result.data(), capacity);
    if (written <= 0) return text;
    result.resize(static_cast<std::size_t>(written));
    return result;
}

std::vector<std::string> commandLine(int, char**) {
    int argc = 0;
    wchar_t** argv = nullptr;
    wchar_t** environment = nullptr;
    WideStartInfo info = {0};
    __wgetmainargs(&argc, &argv, &environment, 0, &info);
    std::vector<std::string> words(static_cast<std::size_t>(argc));
    for (int i = 0; i < argc; ++i)
        // Half a surrogate pair is not text. It becomes a byte that is invalid in UTF-8 and is rejected later.
        if (!utf8FromWide(argv[i], words[static_cast<std::size_t>(i)])) words[static_cast<std::size_t>(i)] = "\xFF";
    return words;
}

bool wordsToBytes(std::vector<std::string>& words, std::string& refused) {
    for (std::string& word : words) {
        WideString wide;
        refused = word;
        if (!wideFromUtf8(word, wide) || !bytesFromWide(CP_ACP, wide, word)) return false;
    }
    return true;
}

}  // namespace tamrix::client
