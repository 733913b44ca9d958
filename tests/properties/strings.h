// The dbcs_ functions under each code page that can be chosen, compared with their rules for a string of characters.
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

/// One string, and what each function should make of it.
struct StringModel {
    unsigned page;
    std::string text;
    tamrix::LeadByteTable leads = leadBytesOf(page);
    Exact source = Exact(text);
    std::vector<std::string> characters = charactersOf(leads, text);

    void hold(const std::string& other) const {
        for (const char byte : text) require(isdbchar(byte) == leads.leads(byte), "isdbchar");
        require(dbcs_strlen(source) == static_cast<int>(text.size()), "dbcs_strlen");
        leaves("dbcs_strcpy", text + '\0', [this](char* b) { return dbcs_strcpy(b, source) == b; });
        leaves("dbcs_strcat", "z" + text + '\0',
               [this](char* b) { return dbcs_strcat(std::strcpy(b, "z"), source) == b; });
        for (std::size_t size = 0; size <= text.size() + 2; ++size) holdCut(size);
        for (const char byte : text + '\0')
            for (const int c : {int{byte}, int{static_cast<unsigned char>(byte)}}) holdSearch(c);
        for (const std::string& right : {other, text + other}) {
            holdOrder(dbcs_strcmp, right, Letters::asTheyAre);
            holdOrder(dbcs_stricmp, right, Letters::lower);
        }
        holdCase(dbcs_strupr, Letters::upper);
        holdCase(dbcs_strlwr, Letters::lower);
    }

    /// What is copied into, or found within, `size` bytes ends with a whole character.
    void holdCut(std::size_t size) const {
        const int bytes = static_cast<int>(size), whole = static_cast<int>(text.size());
        const std::string part = fitting(characters, size), shorter = size ? fitting(characters, size - 1) : "";
        const auto partSize = static_cast<int>(part.size()), shorterSize = static_cast<int>(shorter.size());
        leaves("dbcs_strncpy", part + std::string(size - part.size(), '\0'),
               [&](char* b) { return dbcs_strncpy(b, source, bytes) == b; });
        std::string terminated = size ? shorter + '\0' : "";
        terminated.resize(size, '?');
        leaves("BufStrCpy", terminated, [&](char* b) { return BufStrCpy(b, source, bytes) == shorterSize; });
        require(dbcs_trunc(source, bytes, 1) == (bytes < whole ? partSize : whole), "dbcs_trunc");
        if (bytes > whole) return;
        require(dbcs_trunc(source, bytes, 0) == partSize, "dbcs_trunc unchecked");
        const char* const previous = bytes ? source + shorterSize : nullptr;
        require(dbcs_prevchar(source + bytes, source) == previous, "dbcs_prevchar");
    }

    /// Under a single-byte code page the searches are C's, which take any byte's value and find the terminator.
    void holdSearch(int c) const {
        const char *first = nullptr, *last = nullptr, *at = source;
        for (const std::string& character : charactersOf(leads, leads.hasLeadBytes ? text : text + '\0')) {
            const bool isFound = *at == (leads.hasLeadBytes ? c : static_cast<char>(c));
            if (isFound && !first) first = at;
            if (isFound && character.size() == 1) last = at;
            at += character.size();
        }
        require(dbcs_strchr(source, c) == first, "dbcs_strchr");
        require(dbcs_strrchr(source, c) == last, "dbcs_strrchr");
    }

    /// The code of a letter in the wanted case; of anything else, its own.
    unsigned inCase(unsigned code, Letters wanted) const {
        if (wanted == Letters::asTheyAre) return code;
        // The Roman numerals of 932 have two codes each; both fold alike.
        if (page == 932 && code >= 0xEEEF && code <= 0xEEF8) code += 0xFA40 - 0xEEEF;
        if (page == 932 && code >= 0xFA4A && code <= 0xFA53) code -= 0xFA4A - 0x8754;
        for (const auto& [codePage, capital, small, count] : kLetterRuns) {
            const unsigned from = wanted == Letters::upper ? small : capital;
            if ((codePage == 0 || codePage == page) && code >= from && code < from + count)
                return code - from + (wanted == Letters::upper ? capital : small);
        }
        return code;
    }

    /// The characters as numbers; a lone lead byte has the terminator as its trail byte.
    std::vector<unsigned> codes(const std::string& string, Letters wanted) const {
        std::vector<unsigned> numbers;
        for (const std::string& character : charactersOf(leads, string, true)) {
            const unsigned first = std::uint8_t(character[0]), second = std::uint8_t(character.c_str()[1]);
            numbers.push_back(inCase(leads.leads(character[0]) ? first << 8 | second : first, wanted));
        }
        return numbers;
    }

    void holdOrder(int (*compare)(const char*, const char*), const std::string& right, Letters wanted) const {
        const Exact compared(right);
        const auto order = codes(text, wanted) <=> codes(right, wanted);
        require((compare(source, compared) <=> 0) == order, "a comparison");
        require((0 <=> compare(compared, source)) == order, "a comparison the other way round");
    }

    void holdCase(char* (*change)(char*), Letters wanted) const {
        std::string expected;
        for (const unsigned code : codes(text, wanted)) {
            if (code > 0xFF) expected += static_cast<char>(code >> 8);
            expected += static_cast<char>(code);
        }
        const Exact changed(text);
        require(change(changed) == changed, "result of a change of case");
        require(std::strcmp(changed, expected.c_str()) == 0, "a change of case");
    }
};

/// Nothing is done with a missing string, nor into a room below zero.
inline void holdNulls() {
    const Exact x("x");
    char* const none = nullptr;
    const bool areDistinguished = dbcs_strcmp(none, x) == -1 && dbcs_strcmp(x, none) == -1 &&
                                  dbcs_stricmp(none, x) == -1 && dbcs_stricmp(x, none) == -1;
    require(areDistinguished, "a comparison with null");
    const bool areReturned = dbcs_strcpy(x, none) == x && dbcs_strcat(x, none) == x && dbcs_strncpy(x, none, 1) == x &&
                             dbcs_strncpy(x, "y", -1) == x && !BufStrCpy(x, "y", -1) && !BufStrCpy(none, x, 2);
    require(areReturned && x.bytes() == std::string("x\0", 2), "a copy of null or below zero");
    require(!dbcs_strcpy(none, x) && !dbcs_strcat(none, x) && !dbcs_strncpy(none, x, 1), "a copy into null");
    require(!dbcs_strupr(none) && !dbcs_strlwr(none) && !dbcs_strlen(none), "the case or length of null");
    require(!dbcs_strchr(none, 'x') && !dbcs_strrchr(none, 'x'), "a search in null");
    require(!dbcs_prevchar(none, x) && !dbcs_prevchar(x, none), "dbcs_prevchar of null");
    require(dbcs_trunc(none, 1, 1) == 0 && dbcs_trunc(x, -3, 1) == -3, "dbcs_trunc of null or below zero");
    require(!BufStrCpy(x, none, 2) && !*x, "BufStrCpy of null");
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
    StringModel{page, text}.hold(other.empty() ? std::string(text.rbegin(), text.rend()) : other);
    holdNulls();
}

}  // namespace properties
