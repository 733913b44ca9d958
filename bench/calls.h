// Calls of string functions for measuring: each takes a function of the library or the C function of the same name, a
// buffer and a text.
#pragma once

#include <cstring>

#include "names.h"

namespace calls {

inline constexpr auto length = [](auto f, char*, const Text& text) { return f(text.name.c_str()); };
inline constexpr auto copy = [](auto f, char* dst, const Text& text) { return f(dst, text.name.c_str()); };
inline constexpr auto append = [](auto f, char* dst, const Text& text) {
    dst[0] = 0;
    return f(dst, text.name.c_str());
};
inline constexpr auto copyBounded = [](auto f, char* dst, const Text& text) {
    return f(dst, text.name.c_str(), static_cast<int>(text.name.size()) + 8);
};
inline constexpr auto find = [](auto f, char*, const Text& text) { return f(text.name.c_str(), '~'); };
inline constexpr auto compare = [](auto f, char*, const Text& text) { return f(text.same.c_str(), text.name.c_str()); };
inline constexpr auto compareCase = [](auto f, char*, const Text& text) {
    return f(text.otherCase.c_str(), text.name.c_str());
};
inline constexpr auto copyCut = [](auto f, char* dst, const Text& text) {
    return f(dst, text.name.c_str(), static_cast<int>(text.name.size() / 2) + 1);
};
inline constexpr auto cut = [](auto f, char*, const Text& text) {
    return f(text.name.c_str(), static_cast<int>(text.name.size() / 2), 1);
};
inline constexpr auto previous = [](auto f, char*, const Text& text) {
    return f(text.name.c_str() + text.name.size(), text.name.c_str());
};
inline constexpr auto ofEachByte = [](auto f, char*, const Text& text) {
    int sum = 0;
    for (const char byte : text.name) sum += f(byte);
    return sum;
};

/// A writable copy of the text.
inline char* fresh(char* dst, const Text& text) {
    std::memcpy(dst, text.name.c_str(), text.name.size() + 1);
    return dst;
}
inline constexpr auto inPlace = [](auto f, char* dst, const Text& text) { return f(fresh(dst, text)); };

}  // namespace calls
