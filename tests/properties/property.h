// What the properties of all modules share. A property is `void property(Input&)` in a header of this folder: it
// runs a module on one input on it, and throws an exception where the results differ from a model of the module's
// rules. Its drivers are seeded_test.cpp, exhaustive_test.cpp and fuzz/driver.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "strings/lead_bytes.h"

namespace properties {

/// Throws an exception that says where a module and its model differ.
inline void require(bool holds, std::string_view what) {
    if (!holds) throw std::runtime_error(std::string(what));
}

/// A buffer of not one byte more than `size`, so that the sanitizer sees a step past it.
class Block {
public:
    explicit Block(std::size_t size) : size_(size), bytes_(new char[size]) { std::memset(bytes_.get(), '?', size); }
    operator char*() const { return bytes_.get(); }
    std::string bytes() const { return {bytes_.get(), size_}; }

private:
    std::size_t size_;
    std::unique_ptr<char[]> bytes_;
};

/// A string with not one byte after its terminator.
class Exact : public Block {
public:
    explicit Exact(const std::string& text) : Block(text.size() + 1) {
        std::memcpy(*this, text.c_str(), text.size() + 1);
    }
};

/// Requires that `call`, which says whether its result is right, leaves these bytes in a block of their size.
template <typename Call>
void leaves(std::string_view function, const std::string& expected, Call call) {
    const Block block(expected.size());
    require(call(block) && block.bytes() == expected, function);
}

/// The lead bytes of a code page as they are published.
inline tamrix::LeadByteTable leadBytesOf(unsigned codePage) {
    tamrix::LeadByteTable table{};
    for (unsigned byte = 0x81; byte < 0xFF; ++byte) {
        const bool katakana = (byte >= 0xA0 && byte <= 0xDF) || byte > 0xFC;
        table.isLead[byte] = codePage == 932 ? !katakana : codePage == 936 || codePage == 949 || codePage == 950;
        table.hasLeadBytes |= table.isLead[byte];
    }
    return table;
}

/// The characters of a string, each as its one or two bytes. A lone lead byte ends it; `withHalf`, as its last
/// character.
inline std::vector<std::string> charactersOf(const tamrix::LeadByteTable& leads, const std::string& text,
                                             bool withHalf = false) {
    std::vector<std::string> characters;
    for (std::size_t i = 0; i < text.size(); i += characters.back().size()) {
        const std::size_t size = leads.leads(text[i]) ? 2 : 1;
        if (i + size > text.size() && !withHalf) break;
        characters.push_back(text.substr(i, size));
    }
    return characters;
}

/// The text with an x for each byte of a double-byte character, which is no delimiter.
inline std::string withoutDoubles(const tamrix::LeadByteTable& leads, const std::string& text) {
    std::string plain;
    for (const std::string& character : charactersOf(leads, text)) plain += character.size() == 2 ? "xx" : character;
    return plain;
}

/// As many of the characters as `room` bytes hold.
inline std::string fitting(const std::vector<std::string>& characters, std::size_t room) {
    std::string text;
    for (const std::string& character : characters) {
        if (text.size() + character.size() > room) break;
        text += character;
    }
    return text;
}

/// An input from which a property takes what it needs; after its end everything is zero or empty.
class Input {
public:
    explicit Input(std::string bytes) : all_(std::move(bytes)) {}

    std::uint8_t byte() { return at_ < all_.size() ? static_cast<std::uint8_t>(all_[at_++]) : 0; }
    /// Up to `limit` bytes, as many as the next byte says, of any value.
    std::string bytes(std::size_t limit) { return take(byte() % (limit + 1)); }
    /// The same up to its first zero, so that a name keeps its length as a string.
    std::string text(std::size_t limit) { return upToZero(bytes(limit)); }
    std::string restBytes() { return take(all_.size()); }
    std::string rest() { return upToZero(restBytes()); }
    bool atEnd() const { return at_ >= all_.size(); }
    template <typename T, std::size_t count>
    const T& oneOf(const T (&choices)[count]) {
        return choices[byte() % count];
    }
    /// Those of a code page; half of the code pages have none.
    tamrix::LeadByteTable leadBytes() {
        const unsigned pages[] = {1252, 932, 936, 1252};
        return leadBytesOf(oneOf(pages));
    }

private:
    static std::string upToZero(const std::string& text) { return text.substr(0, text.find('\0')); }
    std::string take(std::size_t count) {
        const std::string taken = all_.substr(at_, count);
        at_ += taken.size();
        return taken;
    }

    std::string all_;
    std::size_t at_ = 0;
};

inline void property(Input& input);

/// Tests the property with one input, which the exception then shows in hexadecimal.
inline void hold(const std::string& bytes) {
    try {
        Input input(bytes);
        property(input);
    } catch (const std::exception& found) {
        std::string text = found.what() + std::string("\n  input ");
        for (const char byte : bytes)
            for (const int shift : {4, 0}) text += "0123456789abcdef"[byte >> shift & 15];
        throw std::runtime_error(text);
    }
}

/// Every byte that a string can hold.
inline const std::string kAnyByte = [] {
    std::string bytes;
    for (int byte = 1; byte < 0x100; ++byte) bytes += static_cast<char>(byte);
    return bytes;
}();

/// Inputs that are all tested: each begins with `prefix` and continues with up to `maxBytes` bytes of the alphabet.
struct Inputs {
    std::string prefix, alphabet;
    std::size_t maxBytes;
};

}  // namespace properties
