// The registry's text: any text is read completely, or rejected with the number of a line and nothing changed. What is
// written reads back byte for byte; a name that the format can't hold makes writing fail.
#pragma once

#include <standin.h>

#include <algorithm>

#include "properties/property.h"
#include "registry_text.h"

namespace properties {

/// Any text is read completely or rejected.
inline void readDrawn(Input& input) {
    const std::string text = "REGEDIT4\n" + input.restBytes();
    const auto before = testing_support::registryText();
    const auto error = standin::mergeRegistry(text);
    const auto lines = static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
    require(!error || (!error->message.empty() && error->line > 0 && error->line <= lines), "the error");
    require(!error || testing_support::registryText() == before, "a refused text changes nothing");
}

/// Made of characters with a meaning in the format, and of halves of double-byte characters.
inline std::string drawnName(Input& input) {
    std::string name = input.bytes(6);
    for (char& byte : name) byte = "ab\\\"\x83\x5C\x81=]\n\r@"[static_cast<unsigned char>(byte) % 12];
    return name;
}

/// Stores a value in a key that is created below another key's handle; that key's name may end within a character.
inline void storeDrawn(Input& input) {
    const DWORD types[] = {REG_SZ, REG_SZ, REG_BINARY, REG_DWORD, REG_DWORD, 7, 0x89ABCDEF};
    HKEY key = nullptr;
    RegCreateKeyA(input.byte() % 2 ? HKEY_CLASSES_ROOT : HKEY_LOCAL_MACHINE, ("k" + drawnName(input)).c_str(), &key);
    const std::string name = input.byte() % 2 ? drawnName(input) : input.text(6);
    testing_support::givenValue(key, drawnName(input), name, input.oneOf(types),
                                input.bytes(40) + std::string(input.byte() % 2, '\0'));
    RegCloseKey(key);
}

inline void property(Input& input) {
    const UINT pages[] = {1252, 932, 936, 949, 950};
    require(standin::setCodePages(input.oneOf(pages), 437), "setCodePages");
    testing_support::emptyRegistry();
    testing_support::givenValue(HKEY_CURRENT_USER, "before", "n", REG_SZ, "x");
    if (input.byte() % 4 == 0) return readDrawn(input);
    while (!input.atEnd()) storeDrawn(input);
    const auto stored = testing_support::registryText();
    std::string reason;
    const auto written = standin::registryAsText(reason);
    require(written || reason.find("can't hold") != std::string::npos, reason);
    const bool isPlain = std::ranges::all_of(stored, [](const auto& entry) {
        return std::ranges::all_of(entry.first, [](char byte) { return byte >= ' ' && byte < '~'; });
    });
    require(written || !isPlain, "plain names are written");
    if (!written) return;
    testing_support::emptyRegistry();
    require(!standin::mergeRegistry(*written) && testing_support::registryText() == stored, "what comes back");
}

}  // namespace properties
