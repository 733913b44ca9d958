#include "client/json.h"

#include "client/output.h"
#include "client/unicode.h"

namespace tamrix::client {
namespace {

void appendUnit(unsigned unit, std::string& json) {
    const char c = static_cast<char>(unit);
    if (unit >= 0x20 && unit < 0x7F) {
        if (c == '"' || c == '\\') json += '\\';
        json += c;
        return;
    }
    const char bytes[] = {static_cast<char>(unit >> 8), static_cast<char>(unit & 0xFF)};
    json += "\\u" + hex({bytes, 2});
}

/// A JSON string in ASCII, so that it is the same in every output encoding; null if the text is not valid UTF-8. With
/// --bytes each byte becomes the character with its value.
std::string quoted(std::string_view text) {
    std::string result = "\"";
    WideString wide;
    if (namesAreText && !wideFromUtf8(text, wide)) return "null";
    if (namesAreText)
        for (const WCHAR unit : wide) appendUnit(unit, result);
    else
        for (const char c : text) appendUnit(static_cast<unsigned char>(c), result);
    return result += '"';
}

}  // namespace

void Json::member(const char* name) {
    if (!first_) print(",");
    first_ = false;
    if (name) print(quoted(name) + ":");
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
    if (--depth_ == 0) print("\n");
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
    print(quoted(text));
}

void Json::bytes(const char* name, Side side, const std::string& value) {
    std::string text;
    member(name);
    print(textFromBytes(side, value, text) ? quoted(text) : "null");
    ascii((std::string(name) + "Hex").c_str(), hex(value));
}

void Json::text(const char* name, const std::string& value) {
    member(name);
    print(quoted(value));
    ascii((std::string(name) + "Hex").c_str(), hex(value));
}

}  // namespace tamrix::client
