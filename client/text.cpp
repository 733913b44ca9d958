#include "client/text.h"

#include "client/system/encodings.h"

namespace tamrix::client {

bool textIsUtf8;

namespace {

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

bool wideFromWindows(const std::string& bytes, WideString& wide) {
    const int size = static_cast<int>(bytes.size());
    wide.resize(bytes.size());
    if (bytes.empty()) return true;
    const int written = MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, wide.data(), size);
    wide.resize(static_cast<std::size_t>(written));
    return written > 0;
}

bool windowsFromWide(const WideString& wide, std::string& bytes) {
    const int size = static_cast<int>(wide.size());
    bytes.resize(wide.size() * 2);
    if (wide.empty()) return true;
    const int written = WideCharToMultiByte(CP_ACP, 0, wide.data(), size, bytes.data(), size * 2, nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(written));
    return written > 0;
}

bool wideFromBytes(Side side, const std::string& bytes, WideString& wide) {
    return side == Side::mac ? wideFromMac(bytes, wide) : wideFromWindows(bytes, wide);
}

bool bytesFromWide(Side side, const WideString& wide, std::string& bytes) {
    return side == Side::mac ? macFromWide(wide, bytes) : windowsFromWide(wide, bytes);
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

bool bytesFromText(Side side, std::string_view text, std::string& bytes) {
    bytes = text;
    if (!textIsUtf8) return true;
    WideString wide, back;
    // The way back finds characters that were replaced by similar ones or by question marks.
    return wideFromUtf8(text, wide) && bytesFromWide(side, wide, bytes) && wideFromBytes(side, bytes, back) &&
           wide == back;
}

bool textFromBytes(Side side, const std::string& bytes, std::string& text) {
    text = bytes;
    if (!textIsUtf8) return true;
    WideString wide;
    return wideFromBytes(side, bytes, wide) && utf8FromWide(wide, text);
}

std::string shown(Side side, const std::string& bytes) {
    std::string text;
    return textFromBytes(side, bytes, text) ? text : bytes;
}

}  // namespace tamrix::client
