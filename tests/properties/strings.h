// The dbcs_ family under each code page that can be chosen, held to its rules over a string taken apart into
// characters.
#pragma once

#include <algorithm>
#include <array>

#include "code_pages.h"
#include "properties/property.h"
#include "tamrix32/strings.h"

namespace properties {

/// Runs of letters in the published tables of the double-byte code pages, which follow Unicode's pairs.
struct LetterRun {
    unsigned page, capital, small, count;
};
inline constexpr LetterRun kLetterRuns[] = {
    {932, 0x8260, 0x8281, 26}, {932, 0x839F, 0x83BF, 24}, {932, 0x8440, 0x8470, 15}, {932, 0x844F, 0x8480, 18},
    {932, 0x8754, 0xFA40, 10}, {936, 0xA3C1, 0xA3E1, 26}, {936, 0xA6A1, 0xA6C1, 24}, {936, 0xA7A1, 0xA7D1, 33},
    {936, 0xA2F1, 0xA2A1, 10}, {949, 0xA3C1, 0xA3E1, 26}, {949, 0xA5C1, 0xA5E1, 24}, {949, 0xACA1, 0xACD1, 33},
    {949, 0xA5B0, 0xA5A1, 10}, {949, 0xA8A1, 0xA9A1, 1},  {949, 0xA8A2, 0xA9A3, 1},  {949, 0xA8A4, 0xA9A4, 1},
    {949, 0xA8A6, 0xA9A6, 1},  {949, 0xA8A8, 0xA9A8, 4},  {949, 0xA8AD, 0xA9AD, 3},  {950, 0xA2CF, 0xA2E9, 22},
    {950, 0xA2E5, 0xA340, 4},  {950, 0xA344, 0xA35C, 24},
};

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
        for (std::size_t size = 0; size <= text_.size() + 2; ++size) holdBounded(size);
        holdSteps();
        for (const char byte : text_ + '\0') {
            holdSearch(byte);
            holdSearch(static_cast<unsigned char>(byte));
        }
        for (const std::string& right : {other, text_ + other}) holdOrder(right);
        holdCase("dbcs_strupr", dbcs_strupr, true);
        holdCase("dbcs_strlwr", dbcs_strlwr, false);
    }

private:
    /// As many characters as `room` bytes hold.
    std::string fitting(std::size_t room) const {
        std::string text;
        for (const std::string& character : characters_) {
            if (text.size() + character.size() > room) break;
            text += character;
        }
        return text;
    }

    template <typename Call>
    static void leaves(const char* function, const std::string& expected, Call call) {
        const Block block(expected.size());
        require(call(block), std::string("result of ") + function);
        require(block.bytes() == expected, std::string("bytes of ") + function);
    }

    void holdBounded(std::size_t size) const {
        const int capacity = static_cast<int>(size);
        std::string padded = fitting(size);
        padded.resize(size);
        leaves("dbcs_strncpy", padded, [&](char* b) { return dbcs_strncpy(b, source_, capacity) == b; });
        const std::string cut = size > 0 ? fitting(size - 1) : "";
        std::string left = size > 0 ? cut + '\0' : "";
        left.resize(size, '?');
        leaves("BufStrCpy", left, [&](char* b) { return BufStrCpy(b, source_, capacity) == int(cut.size()); });
    }

    void holdSteps() const {
        int start = 0;
        for (const std::string& character : characters_) {
            const int end = start + static_cast<int>(character.size());
            for (int n = start + 1; n <= end; ++n) {
                require(dbcs_prevchar(source_ + n, source_) == source_ + start, "dbcs_prevchar");
                for (const int check : {0, 1})
                    require(dbcs_trunc(source_, n, check) == (n == end ? end : start), "dbcs_trunc");
            }
            start = end;
        }
        const int size = static_cast<int>(text_.size());
        require(dbcs_trunc(source_, size + 1, 1) == size, "dbcs_trunc whole");
        require(dbcs_trunc(source_, 0, 0) == 0, "dbcs_trunc to nothing");
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

    static unsigned value(const std::string& character) {
        unsigned number = 0;
        for (const char byte : character) number = number << 8 | static_cast<unsigned char>(byte);
        return number;
    }

    /// A single byte in the wanted case, or a letter of the published runs; anything else is itself.
    unsigned inCase(const std::string& character, bool upper) const {
        unsigned own = value(character);
        const unsigned ascii = upper ? 'a' : 'A';
        if (character.size() == 1) return own >= ascii && own < ascii + 26 ? own ^ 0x20 : own;
        // The Roman numerals of 932 have two codes each; both fold alike.
        if (page_ == 932 && own >= 0xEEEF && own <= 0xEEF8) own += 0xFA40 - 0xEEEF;
        if (page_ == 932 && own >= 0xFA4A && own <= 0xFA53) own -= 0xFA4A - 0x8754;
        for (const LetterRun& run : kLetterRuns) {
            const unsigned from = upper ? run.small : run.capital;
            if (run.page == page_ && own >= from && own < from + run.count)
                return own - from + (upper ? run.capital : run.small);
        }
        return own;
    }

    std::vector<unsigned> values(const std::string& text, bool folded) const {
        std::vector<unsigned> numbers;
        std::size_t scanned = 0;
        for (const std::string& character : charactersOf(leads_, text)) {
            numbers.push_back(folded ? inCase(character, false) : value(character));
            scanned += character.size();
        }
        // A lone lead byte has the terminator as its trail byte.
        if (scanned < text.size()) numbers.push_back(value(text.substr(scanned)) << 8);
        return numbers;
    }

    void holdOrder(const std::string& right) const {
        const auto sign = [](int number) { return (number > 0) - (number < 0); };
        const Exact compared(right);
        for (const bool folded : {false, true}) {
            const auto a = values(text_, folded), b = values(right, folded);
            const int expected = a < b ? -1 : a > b ? 1 : 0;
            const auto compare = folded ? dbcs_stricmp : dbcs_strcmp;
            require(sign(compare(source_, compared)) == expected, folded ? "dbcs_stricmp" : "dbcs_strcmp");
            require(sign(compare(compared, source_)) == -expected, "a comparison the other way round");
        }
    }

    void holdCase(const char* function, char* (*change)(char*), bool upper) const {
        std::string expected;
        for (const std::string& character : characters_) {
            const unsigned number = inCase(character, upper);
            if (character.size() == 2) expected += static_cast<char>(number >> 8);
            expected += static_cast<char>(number);
        }
        const Exact changed(text_);
        require(change(changed) == changed, std::string("result of ") + function);
        require(static_cast<char*>(changed) == expected + text_.substr(expected.size()),
                std::string("bytes of ") + function);
    }

    const unsigned page_;
    const tamrix::LeadByteTable leads_;
    const std::string text_;
    const Exact source_;
    const std::vector<std::string> characters_;
};

inline void property(Input& input) {
    static const std::vector<UINT> pages = testing_support::codePagesAmong({1252, 1251, 932, 936, 949, 950});
    static unsigned active = 0;
    const unsigned page = pages[input.byte() % pages.size()];
    if (page != active) require(testing_support::useCodePage(active = page), "useCodePage");
    const std::string other = input.text(24);
    StringModel(page, input.rest().substr(0, 40)).hold(other);
}

}  // namespace properties
