// The dbcs_ family as its rules are stated, over a string taken apart into characters, compared with what the exported
// functions do. The suite, the exhaustive run and the fuzz target share it.
#pragma once

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "strings/lead_bytes.h"
#include "tamrix32/strings.h"

namespace testing_support {

/// A string on the heap with not one byte behind its terminator, so that the sanitizer sees a look past it.
class Exact {
public:
    explicit Exact(const std::string& text) : bytes_(new char[text.size() + 1]) {
        std::memcpy(bytes_.get(), text.c_str(), text.size() + 1);
    }
    operator char*() const { return bytes_.get(); }

private:
    std::unique_ptr<char[]> bytes_;
};

using Characters = std::vector<std::string>;

/// The characters of a string; a lone lead byte ends it.
inline Characters charactersOf(const tamrix::LeadByteTable& leads, const std::string& text) {
    Characters characters;
    for (std::size_t i = 0; i < text.size(); i += characters.back().size()) {
        const bool isDouble = leads.leads(text[i]);
        if (isDouble && i + 1 == text.size()) break;
        characters.push_back(text.substr(i, isDouble ? 2 : 1));
    }
    return characters;
}

/// As many whole characters as `room` bytes hold.
inline std::string fitting(const Characters& characters, std::size_t room) {
    std::string text;
    for (const std::string& character : characters) {
        if (text.size() + character.size() > room) break;
        text += character;
    }
    return text;
}

/// One string and what each function should make of it. Each check answers whether the function agrees.
class StringModel {
public:
    StringModel(const tamrix::LeadByteTable& table, const std::string& text)
        : leads_(table), text_(text), source_(text), characters_(charactersOf(table, text)) {
        whole_ = fitting(characters_, text.size());
    }

    /// The first function that disagrees, by its name; null when all agree. `other` is compared with the string.
    const char* disagreement(const std::string& other) const {
        if (dbcs_strlen(source_) != static_cast<int>(whole_.size())) return "dbcs_strlen";
        if (!copies()) return "dbcs_strcpy, dbcs_strcat";
        for (std::size_t size = 0; size <= text_.size() + 2; ++size)
            if (!bounded(size)) return "dbcs_strncpy, BufStrCpy";
        if (!stepsBack()) return "dbcs_prevchar, dbcs_trunc";
        for (const char byte : text_)
            if (!finds(byte) || !finds(static_cast<unsigned char>(byte))) return "dbcs_strchr, dbcs_strrchr";
        if (!finds(0)) return "dbcs_strchr, dbcs_strrchr of the terminator";
        if (!orders(other)) return "dbcs_strcmp, dbcs_stricmp";
        return changesCase() ? nullptr : "dbcs_strupr, dbcs_strlwr";
    }

private:
    /// Whether a call leaves `expected` at the start of a buffer of `size` bytes and nothing behind the buffer.
    template <typename Call>
    static bool leaves(const std::string& expected, std::size_t size, Call call) {
        constexpr char kGuard = '\x5A';
        const std::unique_ptr<char[]> area(new char[size + 4]);
        std::memset(area.get(), kGuard, size + 4);
        if (!call(area.get())) return false;
        const auto isGuard = [](char value) { return value == kGuard; };
        return std::memcmp(area.get(), expected.data(), expected.size()) == 0 &&
               std::all_of(area.get() + size, area.get() + size + 4, isGuard);
    }

    bool copies() const {
        const auto copy = [this](char* b) { return dbcs_strcpy(b, source_) == b; };
        const auto append = [this](char* b) { return std::memcpy(b, "z", 2) && dbcs_strcat(b, source_) == b; };
        return leaves(whole_ + '\0', whole_.size() + 1, copy) && leaves("z" + whole_ + '\0', whole_.size() + 2, append);
    }

    bool bounded(std::size_t size) const {
        const int capacity = static_cast<int>(size);
        std::string padded = fitting(characters_, size);
        padded.resize(size);
        if (!leaves(padded, size, [&](char* b) { return dbcs_strncpy(b, source_, capacity) == b; })) return false;
        const std::string cut = size > 0 ? fitting(characters_, size - 1) : "";
        return leaves(size > 0 ? cut + '\0' : "", size,
                      [&](char* b) { return BufStrCpy(b, source_, capacity) == static_cast<int>(cut.size()); });
    }

    bool stepsBack() const {
        int start = 0;
        for (const std::string& character : characters_) {
            const int end = start + static_cast<int>(character.size());
            for (int n = start + 1; n <= end; ++n)
                if (dbcs_prevchar(source_ + n, source_) != source_ + start ||
                    dbcs_trunc(source_, n, 0) != (n == end ? end : start) ||
                    dbcs_trunc(source_, n, 1) != (n == end ? end : start))
                    return false;
            start = end;
        }
        return dbcs_trunc(source_, start + 1, 1) == start && dbcs_trunc(source_, 0, 0) == 0;
    }

    /// Under a single-byte code page the searches are C's.
    bool finds(int c) const {
        const char* first = leads_.hasLeadBytes ? nullptr : std::strchr(source_, c);
        const char* last = leads_.hasLeadBytes ? nullptr : std::strrchr(source_, c);
        const char* at = source_;
        for (std::size_t i = 0; leads_.hasLeadBytes && i < characters_.size(); at += characters_[i++].size()) {
            if (static_cast<signed char>(*at) != c) continue;
            if (!first) first = at;
            if (characters_[i].size() == 1) last = at;
        }
        return dbcs_strchr(source_, c) == first && dbcs_strrchr(source_, c) == last;
    }

    static std::vector<int> values(const Characters& characters) {
        std::vector<int> numbers;
        for (const std::string& c : characters) {
            const auto byte = [&c](std::size_t i) { return static_cast<unsigned char>(c[i]); };
            numbers.push_back(c.size() == 2 ? byte(0) * 256 + byte(1) : byte(0));
        }
        return numbers;
    }

    bool orders(const std::string& other) const {
        const auto sign = [](int number) { return (number > 0) - (number < 0); };
        const Exact right(other);
        const auto a = values(characters_), b = values(charactersOf(leads_, other));
        const int expected = a < b ? -1 : a > b ? 1 : 0;
        const int folded = dbcs_stricmp(source_, right);
        return sign(dbcs_strcmp(source_, right)) == expected && sign(folded) == -sign(dbcs_stricmp(right, source_)) &&
               (folded == 0 || expected != 0);
    }

    /// Characters keep their sizes, single bytes change as ASCII letters do, and the way there leads back.
    bool changesCase() const {
        const Exact upper(text_), lower(text_), both(text_);
        if (dbcs_strupr(upper) != upper || dbcs_strlwr(lower) != lower || dbcs_stricmp(upper, lower) != 0) return false;
        if (std::strcmp(dbcs_strupr(dbcs_strlwr(both)), upper) != 0) return false;
        const Characters after = charactersOf(leads_, static_cast<char*>(upper));
        if (after.size() != characters_.size()) return false;
        for (std::size_t i = 0; i < after.size(); ++i) {
            const char byte = characters_[i][0];
            if (after[i].size() != characters_[i].size()) return false;
            if (after[i].size() == 1 && after[i][0] != (byte >= 'a' && byte <= 'z' ? byte - 32 : byte)) return false;
        }
        return true;
    }

    const tamrix::LeadByteTable& leads_;
    const std::string& text_;
    Exact source_;
    Characters characters_;
    std::string whole_;  // what is left when a lone lead byte at the end is not counted
};

}  // namespace testing_support
