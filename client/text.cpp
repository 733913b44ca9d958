#include "client/text.h"

#include <algorithm>

#include "client/library_names.h"
#include "client/system/encodings.h"
#include "client/unicode.h"

namespace tamrix::client {

bool namesAreText = true;
bool pipesAreUtf8;

namespace {

constexpr unsigned kMacRoman = 10000;
constexpr char kHexDigits[] = "0123456789ABCDEF";
constexpr WCHAR kOmega = 0x3A9;
constexpr WCHAR kOhmSign = 0x2126;

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
        if (!isControl && (!namesAreText || takeScalar(text, at) <= kMaxScalar)) {
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

std::string hex(std::string_view bytes) {
    std::string digits;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        digits += kHexDigits[byte >> 4];
        digits += kHexDigits[byte & 15];
    }
    return digits;
}

const char* whyNotBytes(Side side) {
    return codePageOf(side) == kMacRoman ? "cannot be represented in Mac Roman"
                                         : "cannot be represented in the ANSI code page";
}

}  // namespace tamrix::client
