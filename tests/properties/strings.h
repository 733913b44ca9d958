// The dbcs_ family under each code page that can be chosen, held to its rules over a string taken apart into
// characters.
#pragma once

#include <algorithm>

#include "code_pages.h"
#include "properties/property.h"
#include "tamrix32/strings.h"

namespace properties {

/// Runs of letters in the published tables of the double-byte code pages, which follow Unicode's pairs; ASCII's in all.
struct LetterRun {
    unsigned page, capital, small, count;
};
inline constexpr LetterRun kLetterRuns[] = {
    {0, 'A', 'a', 26},         {932, 0x8260, 0x8281, 26}, {932, 0x839F, 0x83BF, 24}, {932, 0x8440, 0x8470, 15},
    {932, 0x844F, 0x8480, 18}, {932, 0x8754, 0xFA40, 10}, {936, 0xA3C1, 0xA3E1, 26}, {936, 0xA6A1, 0xA6C1, 24},
    {936, 0xA7A1, 0xA7D1, 33}, {936, 0xA2F1, 0xA2A1, 10}, {949, 0xA3C1, 0xA3E1, 26}, {949, 0xA5C1, 0xA5E1, 24},
    {949, 0xACA1, 0xACD1, 33}, {949, 0xA5B0, 0xA5A1, 10}, {949, 0xA8A1, 0xA9A1, 1},  {949, 0xA8A2, 0xA9A3, 1},
    {949, 0xA8A4, 0xA9A4, 1},  {949, 0xA8A6, 0xA9A6, 1},  {949, 0xA8A8, 0xA9A8, 4},  {949, 0xA8AD, 0xA9AD, 3},
    {950, 0xA2CF, 0xA2E9, 22}, {950, 0xA2E5, 0xA340, 4},  {950, 0xA344, 0xA35C, 24},
};

enum class Letters { asTheyAre, lower, upper };

/// One string and what each function should make of it.
class StringModel {
public:
    StringModel(unsigned page, const std::string& text)
        : page_(page), leads_(leadBytesOf(page)), text_(text), source_(text), characters_(charactersOf(leads_, text)) {}

    void hold(const std::string& other) const {
        for (const char byte : text_) require(isdbchar(byte) == leads_.isLead[std::uint8_t(byte)], "isdbchar");
        require(dbcs_strlen(source_) == static_cast<int>(text_.size()), "dbcs_strlen");
        leaves("dbcs_strcpy", text_ + '\0', [this](char* b) { return dbcs_strcpy(b, source_) == b; });
        leaves("dbcs_strcat", "z" + text_ + '\0', [this](char* b) {
            std::memcpy(b, "z", 2);
            return dbcs_strcat(b, source_) == b;
        });
        for (std::size_t size = 0; size <= text_.size() + 2; ++size) holdCut(size);
        for (const char byte : text_ + '\0') {
            holdSearch(byte);
            holdSearch(static_cast<unsigned char>(byte));
        }
        for (const std::string& right : {other, text_ + other}) {
            holdOrder(dbcs_strcmp, right, Letters::asTheyAre);
            holdOrder(dbcs_stricmp, right, Letters::lower);
        }
        holdCase(dbcs_strupr, Letters::upper);
        holdCase(dbcs_strlwr, Letters::lower);
    }

private:
    /// What is copied into, or found within, `size` bytes ends with a whole character.
    void holdCut(std::size_t size) const {
        const int bytes = static_cast<int>(size), whole = static_cast<int>(text_.size());
        const std::string part = fitting(characters_, size), shorter = size ? fitting(characters_, size - 1) : "";
        const auto partSize = static_cast<int>(part.size()), shorterSize = static_cast<int>(shorter.size());
        leaves("dbcs_strncpy", part + std::string(size - part.size(), '\0'),
               [&](char* b) { return dbcs_strncpy(b, source_, bytes) == b; });
        std::string terminated = size ? shorter + '\0' : "";
        terminated.resize(size, '?');
        leaves("BufStrCpy", terminated, [&](char* b) { return BufStrCpy(b, source_, bytes) == shorterSize; });
        require(dbcs_trunc(source_, bytes, 1) == (bytes < whole ? partSize : whole), "dbcs_trunc");
        if (bytes > whole) return;
        require(dbcs_trunc(source_, bytes, 0) == partSize, "dbcs_trunc unchecked");
        const char* const previous = bytes ? source_ + shorterSize : nullptr;
        require(dbcs_prevchar(source_ + bytes, source_) == previous, "dbcs_prevchar");
    }

    /// Under a single-byte code page the searches are C's, which find the terminator.
    void holdSearch(int c) const {
        const char* first = leads_.hasLeadBytes ? nullptr : std::strchr(source_, c);
        const char* last = leads_.hasLeadBytes ? nullptr : std::strrchr(source_, c);
        const char* at = source_;
        for (std::size_t i = 0; leads_.hasLeadBytes && i < characters_.size(); at += characters_[i++].size()) {
            if (static_cast<signed char>(*at) != c) continue;
            if (!first) first = at;
            if (characters_[i].size() == 1) last = at;
        }
        require(dbcs_strchr(source_, c) == first, "dbcs_strchr");
        require(dbcs_strrchr(source_, c) == last, "dbcs_strrchr");
    }

    /// The code of a letter in the wanted case; of anything else, its own.
    unsigned inCase(unsigned code, Letters wanted) const {
        if (wanted == Letters::asTheyAre) return code;
        // The Roman numerals of 932 have two codes each; both fold alike.
        if (page_ == 932 && code >= 0xEEEF && code <= 0xEEF8) code += 0xFA40 - 0xEEEF;
        if (page_ == 932 && code >= 0xFA4A && code <= 0xFA53) code -= 0xFA4A - 0x8754;
        for (const auto& [page, capital, small, count] : kLetterRuns) {
            const unsigned from = wanted == Letters::upper ? small : capital;
            if ((page == 0 || page == page_) && code >= from && code < from + count)
                return code - from + (wanted == Letters::upper ? capital : small);
        }
        return code;
    }

    /// The characters as numbers; a lone lead byte has the terminator as its trail byte.
    std::vector<unsigned> codes(const std::string& text, Letters wanted) const {
        std::vector<unsigned> numbers;
        for (const std::string& character : charactersOf(leads_, text, true)) {
            const unsigned first = std::uint8_t(character[0]), second = std::uint8_t(character.c_str()[1]);
            numbers.push_back(inCase(leads_.leads(character[0]) ? first << 8 | second : first, wanted));
        }
        return numbers;
    }

    void holdOrder(int (*compare)(const char*, const char*), const std::string& right, Letters wanted) const {
        const Exact compared(right);
        const auto order = codes(text_, wanted) <=> codes(right, wanted);
        require((compare(source_, compared) <=> 0) == order, "a comparison");
        require((0 <=> compare(compared, source_)) == order, "a comparison the other way round");
    }

    void holdCase(char* (*change)(char*), Letters wanted) const {
        std::string expected;
        for (const unsigned code : codes(text_, wanted)) {
            if (code > 0xFF) expected += static_cast<char>(code >> 8);
            expected += static_cast<char>(code);
        }
        const Exact changed(text_);
        require(change(changed) == changed, "result of a change of case");
        require(std::strcmp(changed, expected.c_str()) == 0, "a change of case");
    }

    const unsigned page_;
    const tamrix::LeadByteTable leads_;
    const std::string text_;
    const Exact source_;
    const std::vector<std::string> characters_;
};

/// Nothing is done with a missing string, nor into a room below zero.
inline void holdNulls() {
    const Exact text("x");
    for (auto* compare : {dbcs_strcmp, dbcs_stricmp})
        require(compare(nullptr, text) == -1 && compare(text, nullptr) == -1, "a comparison with null");
    for (auto* copy : {dbcs_strcpy, dbcs_strcat})
        require(!copy(nullptr, text) && copy(text, nullptr) == text, "a copy of null");
    require(!dbcs_strncpy(nullptr, text, 1) && dbcs_strncpy(text, nullptr, 1) == text, "dbcs_strncpy of null");
    require(dbcs_strncpy(text, "y", -1) == text && !BufStrCpy(text, "y", -1), "a copy below zero");
    require(!dbcs_strupr(nullptr) && !dbcs_strlwr(nullptr), "the case of null");
    require(!dbcs_strchr(nullptr, 'x') && !dbcs_strrchr(nullptr, 'x') && !dbcs_strlen(nullptr), "a search in null");
    require(!dbcs_prevchar(nullptr, text) && !dbcs_prevchar(text, nullptr), "dbcs_prevchar of null");
    require(dbcs_trunc(nullptr, 1, 1) == 0 && dbcs_trunc(text, -3, 1) == -3, "dbcs_trunc of null or below zero");
    require(!BufStrCpy(nullptr, text, 2) && text.bytes() == std::string("x\0", 2), "a text that is only read");
    require(!BufStrCpy(text, nullptr, 2) && !*text, "BufStrCpy of null");
}

inline const std::vector<UINT> kStringPages = testing_support::codePagesAmong({1252, 1251, 932, 936, 949, 950});

/// All strings of one and two bytes. What begins with ASCII is the same under all double-byte code pages, and under all
/// single-byte ones.
inline std::vector<Inputs> exhaustive() {
    std::vector<Inputs> all;
    for (std::size_t page = 0; page < kStringPages.size(); ++page) {
        const bool isFirst = kStringPages[page] == 1252 || kStringPages[page] == 932;
        for (const char byte : isFirst ? kAnyByte : kAnyByte.substr(0x7F))
            all.push_back({{static_cast<char>(page), '\0', byte}, kAnyByte, 1});
    }
    return all;
}

inline void property(Input& input) {
    const UINT page = kStringPages[input.byte() % kStringPages.size()];
    if (GetACP() != page) require(testing_support::useCodePage(page), "useCodePage");
    const std::string other = input.text(24), text = input.rest().substr(0, 40);
    StringModel(page, text).hold(other.empty() ? std::string(text.rbegin(), text.rend()) : other);
    holdNulls();
}

}  // namespace properties
