#include "client/text.h"

#include <algorithm>

#include "client/library_names.h"
#include "client/output.h"
#include "client/system/encodings.h"

namespace tamrix::client {

bool namesAreText = true;
bool pipesAreUtf8;

namespace {

constexpr unsigned kMacRoman = 10000;
constexpr WCHAR kOmega = 0x3A9;
constexpr WCHAR kOhmSign = 0x2126;
constexpr unsigned kLargest = 0x10FFFF;

/// The scalar value of the UTF-8 sequence at `at`, which moves behind it; larger than any when it is malformed.
unsigned takeScalar(std::string_view text, std::size_t& at) {
    constexpr unsigned kMalformed = kLargest + 1;
    constexpr unsigned kSmallest[] = {0, 0x80, 0x800, 0x10000};
    const unsigned first = static_cast<unsigned char>(text[at++]);
    if (first < 0x80) return first;
    const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
    if (first < 0xC0 || first >= 0xF8) return kMalformed;
    unsigned value = first & (0x3Fu >> more);
    for (int i = 0; i < more; ++i) {
        if (at == text.size() || (static_cast<unsigned char>(text[at]) & 0xC0) != 0x80) return kMalformed;
        value = value << 6 | (static_cast<unsigned char>(text[at++]) & 0x3F);
    }
    const bool isSurrogate = value >= 0xD800 && value < 0xE000;
    return value < kSmallest[more] || isSurrogate ? kMalformed : value;
}

void appendUtf8(unsigned value, std::string& text) {
    const auto put = [&](unsigned byte) { text.push_back(static_cast<char>(byte)); };
    if (value < 0x80) return put(value);
    if (value < 0x800) {
        put(0xC0 | value >> 6);
    } else {
        if (value < 0x10000) {
            put(0xE0 | value >> 12);
        } else {
            put(0xF0 | value >> 18);
            put(0x80 | (value >> 12 & 0x3F));
        }
        put(0x80 | (value >> 6 & 0x3F));
    }
    put(0x80 | (value & 0x3F));
}

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// The code page of a side's names.
unsigned codePageOf(Side side) {
    static const bool translates = askLibrary().tableIsOn;
    return side == Side::mac && translates ? kMacRoman : CP_ACP;
}

bool bytesFromWideName(unsigned codePage, const WideString& wide, std::string& bytes) {
    if (bytesFromWide(codePage, wide, bytes)) return true;
    WideString other = composed(wide);
    if (bytesFromWide(codePage, other, bytes)) return true;
    std::replace(other.begin(), other.end(), kOhmSign, kOmega);
    if (bytesFromWide(codePage, other, bytes)) return true;
    std::replace(other.begin(), other.end(), kOmega, kOhmSign);
    return bytesFromWide(codePage, other, bytes);
}

}  // namespace

bool wideFromUtf8(std::string_view text, WideString& wide) {
    wide.clear();
    for (std::size_t at = 0; at < text.size();) {
        unsigned value = takeScalar(text, at);
        if (value > kLargest) return false;
        if (value >= 0x10000) {
            value -= 0x10000;
            wide.push_back(static_cast<WCHAR>(0xD800 | value >> 10));
            value = 0xDC00 | (value & 0x3FF);
        }
        wide.push_back(static_cast<WCHAR>(value));
    }
    return true;
}

bool utf8FromWide(const WideString& wide, std::string& text) {
    text.clear();
    for (std::size_t at = 0; at < wide.size(); ++at) {
        unsigned value = wide[at];
        const bool isHigh = value >= 0xD800 && value < 0xDC00;
        if (isHigh && at + 1 < wide.size() && wide[at + 1] >= 0xDC00 && wide[at + 1] < 0xE000)
            value = 0x10000 + ((value & 0x3FF) << 10) + (wide[++at] & 0x3FFu);
        else if (value >= 0xD800 && value < 0xE000)
            return false;
        appendUtf8(value, text);
    }
    return true;
}

bool wideFromBytes(unsigned codePage, std::string_view bytes, WideString& wide) {
    const int size = static_cast<int>(bytes.size());
    wide.resize(bytes.size());
    if (bytes.empty()) return true;
    const int written = MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(), size, wide.data(), size);
    wide.resize(static_cast<std::size_t>(written));
    return written > 0;
}

bool bytesFromWide(unsigned codePage, const WideString& wide, std::string& bytes) {
    const int size = static_cast<int>(wide.size());
    bytes.resize(wide.size() * 2);
    if (wide.empty()) return true;
    const int written = WideCharToMultiByte(codePage, 0, wide.data(), size, bytes.data(), size * 2, nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(written));
    // The way back finds characters that were replaced by similar ones or by question marks.
    WideString back;
    return written > 0 && wideFromBytes(codePage, bytes, back) && back == wide;
}

bool bytesFromText(Side side, std::string_view text, std::string& bytes) {
    bytes = text;
    WideString wide;
    return !namesAreText || isAscii(text) ||
           (wideFromUtf8(text, wide) && bytesFromWideName(codePageOf(side), wide, bytes));
}

bool textFromBytes(Side side, const std::string& bytes, std::string& text) {
    text = bytes;
    if (!namesAreText || isAscii(bytes)) return true;
    WideString wide;
    if (!wideFromBytes(codePageOf(side), bytes, wide)) return false;
    const WideString one = composed(wide);
    std::string back;
    const bool isSame = one != wide && bytesFromWideName(codePageOf(side), one, back) && back == bytes;
    return utf8FromWide(isSame ? one : wide, text);
}

std::string visible(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t first = at;
        const bool isControl = static_cast<unsigned char>(text[at]) < 0x20 || text[at] == 0x7F;
        if (!isControl && (!namesAreText || takeScalar(text, at) <= kLargest)) {
            at = namesAreText ? at : first + 1;
            result.append(text, first, at - first);
        } else {
            result.append("\\x").append(hex(text.substr(first, 1)));
            at = first + 1;
        }
    }
    return result;
}

std::string shown(Side side, const std::string& bytes) {
    std::string text;
    if (textFromBytes(side, bytes, text)) return text;
    for (const char c : bytes) text += static_cast<unsigned char>(c) < 0x80 ? std::string(1, c) : "\\x" + hex({&c, 1});
    return text;
}

const char* whyNotBytes(Side side) {
    return codePageOf(side) == kMacRoman ? "not a name in Mac Roman" : "not a name in this code page";
}

}  // namespace tamrix::client
