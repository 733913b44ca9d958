// How string functions are called to be timed: with a function of the library or its namesake in C, a buffer and a
// text.
#pragma once

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

}  // namespace calls
