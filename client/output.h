// What the program prints: results on standard output as raw bytes or JSON, complaints on standard error.
#pragma once

#include <string>
#include <string_view>

#include "client/text.h"

namespace tamrix::client {

void print(std::string_view bytes);

/// "tamrix: about: message" on standard error; `about` names the argument and may be empty.
void complain(std::string_view about, std::string_view message);

/// Flushes standard output; false when something was not written.
bool finishOutput();

std::string decimal(long number);

/// Upper-case hexadecimal digits, two a byte.
std::string hex(std::string_view bytes);

/// One JSON document, written as it comes. Names and ASCII texts are the program's own.
///
/// A string of bytes becomes two members: NAME, the text, and NAMEHex, the bytes. The text is real text with --text
/// utf-8 (null where the bytes have none); otherwise each byte is the character of its value, \u0000 to \u00FF.
class Json {
public:
    void beginObject(const char* name = nullptr) { open(name, '{'); }
    void endObject() { close('}'); }
    void beginArray(const char* name = nullptr) { open(name, '['); }
    void endArray() { close(']'); }
    void number(const char* name, long value);
    void boolean(const char* name, bool value);
    void ascii(const char* name, std::string_view text);
    void bytes(const char* name, Side side, const std::string& value);
    /// As bytes(), for what is in the form of --text already.
    void text(const char* name, const std::string& value);
    /// Ends the document.
    void finish() { print("\n"); }

private:
    void member(const char* name);
    void open(const char* name, char bracket);
    void close(char bracket);

    bool first_ = true;
};

}  // namespace tamrix::client
