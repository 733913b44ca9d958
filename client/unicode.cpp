#include "client/unicode.h"

namespace tamrix::client {
namespace {

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

}  // namespace

unsigned takeScalar(std::string_view text, std::size_t& at) {
    constexpr unsigned kMalformed = kMaxScalar + 1;
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

bool wideFromUtf8(std::string_view text, WideString& wide) {
    wide.clear();
    for (std::size_t at = 0; at < text.size();) {
        unsigned value = takeScalar(text, at);
        if (value > kMaxScalar) return false;
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
    // Converting back reveals characters that were replaced by similar ones or by question marks.
    WideString back;
    return written > 0 && wideFromBytes(codePage, bytes, back) && back == wide;
}

}  // namespace tamrix::client
