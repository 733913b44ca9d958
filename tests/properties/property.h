// What the properties of all modules share. A property is `void property(Input&)` in a header of this folder: it takes
// one input apart, runs a module on it beside a model of the module's rules, and ends with a Disagreement where the two
// differ. Its drivers are seeded_test.cpp, the exhaustive suites and fuzz/driver.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "strings/lead_bytes.h"

namespace properties {

/// A module and its model differ; says in what.
class Disagreement : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

inline void require(bool holds, const std::string& what) {
    if (!holds) throw Disagreement(what);
}
/// The same without making a string of the text each time, for exhaustive runs.
inline void require(bool holds, const char* what) {
    if (!holds) throw Disagreement(what);
}

/// The bytes in hexadecimal, two digits each, for messages.
inline std::string hexadecimal(const std::string& bytes) {
    std::string text;
    for (const char byte : bytes) {
        for (const int shift : {4, 0}) text += "0123456789abcdef"[static_cast<unsigned char>(byte) >> shift & 15];
    }
    return text;
}

/// A string on the heap with not one byte after its terminator, so that the sanitizer sees a look past it.
class Exact {
public:
    explicit Exact(const std::string& text) : bytes_(new char[text.size() + 1]) {
        std::memcpy(bytes_.get(), text.c_str(), text.size() + 1);
    }
    operator char*() const { return bytes_.get(); }

private:
    std::unique_ptr<char[]> bytes_;
};

/// A buffer of not one byte more than `size`.
class Block {
public:
    explicit Block(std::size_t size) : size_(size), bytes_(new char[size]) { std::memset(bytes_.get(), '?', size); }
    operator char*() const { return bytes_.get(); }
    std::string bytes() const { return {bytes_.get(), size_}; }

private:
    std::size_t size_;
    std::unique_ptr<char[]> bytes_;
};

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

/// The characters of a string, each as its one or two bytes; a lone lead byte ends it.
inline std::vector<std::string> charactersOf(const tamrix::LeadByteTable& leads, const std::string& text) {
    std::vector<std::string> characters;
    for (std::size_t i = 0; i < text.size(); i += characters.back().size()) {
        const bool isDouble = leads.leads(text[i]);
        if (isDouble && i + 1 == text.size()) break;
        characters.push_back(text.substr(i, isDouble ? 2 : 1));
    }
    return characters;
}

/// An input taken apart into what a property needs; past its end everything is zero or empty.
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
    /// None, a double-byte code page's, or any bytes from 0x80 on.
    tamrix::LeadByteTable leadBytes() {
        tamrix::LeadByteTable table{};
        const std::uint8_t choice = byte();
        for (int value = 0x80; value < 0x100; ++value) {
            const bool japanese = (value >= 0x81 && value <= 0x9F) || (value >= 0xE0 && value <= 0xFC);
            const bool leads = choice % 4 == 1 ? japanese : choice % 4 == 2 ? (value * choice) % 7 == 0 : false;
            table.isLead[value] = leads;
            table.hasLeadBytes |= leads;
        }
        return table;
    }

private:
    static std::string upToZero(const std::string& text) { return text.substr(0, text.find('\0')); }
    std::string take(std::size_t count) {
        const std::string taken = at_ < all_.size() ? all_.substr(at_, count) : "";
        at_ += taken.size();
        return taken;
    }

    std::string all_;
    std::size_t at_ = 0;
};

}  // namespace properties
