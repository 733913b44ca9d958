#include "client/json.h"

namespace tamrix::client {
namespace {

/// A JSON string; of bytes from 0x80 on, those of UTF-8 text stay and raw ones become the character of their value.
std::string quoted(std::string_view text, bool isUtf8) {
    std::string result = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            result += '\\';
            result += c;
        } else if (byte < 0x20 || byte == 0x7F || (byte >= 0x80 && !isUtf8)) {
            result += "\\u00";
            result += hex({&c, 1});
        } else {
            result += c;
        }
    }
    return result += '"';
}

}  // namespace

void Json::member(const char* name) {
    if (!first_) print(",");
    first_ = false;
    if (name) print(quoted(name, false) + ":");
}

void Json::open(const char* name, char bracket) {
    member(name);
    print({&bracket, 1});
    first_ = true;
    ++depth_;
}

void Json::close(char bracket) {
    print({&bracket, 1});
    first_ = false;
    --depth_;
}

void Json::number(const char* name, long value) {
    member(name);
    print(std::to_string(value));
}

void Json::boolean(const char* name, bool value) {
    member(name);
    print(value ? "true" : "false");
}

void Json::ascii(const char* name, std::string_view text) {
    member(name);
    print(quoted(text, false));
}

void Json::bytes(const char* name, Side side, const std::string& value) {
    std::string text;
    member(name);
    print(textFromBytes(side, value, text) ? quoted(text, textIsUtf8) : "null");
    ascii((std::string(name) + "Hex").c_str(), hex(value));
}

void Json::text(const char* name, const std::string& value) {
    WideString wide;
    member(name);
    print(!textIsUtf8 || wideFromUtf8(value, wide) ? quoted(value, textIsUtf8) : "null");
    ascii((std::string(name) + "Hex").c_str(), hex(value));
}

}  // namespace tamrix::client
