// Results as JSON, for scripts.
#pragma once

#include <string>
#include <string_view>

#include "client/output.h"
#include "client/text.h"

namespace tamrix::client {

/// One JSON document, printed as it comes, which is also why no library writes it: nothing has to be built up or
/// parsed, and the shipped program has no vendor runtime to link one with. Names and ASCII texts are the program's own.
///
/// A string of bytes becomes two members: NAME, the text, and NAMEHex, the bytes. The text is null where the bytes have
/// none; with --bytes each byte is the character of its value, \u0000 to \u00FF.
class Json {
public:
    void beginObject(const char* name = nullptr) { open(name, '{'); }
    void endObject() { close('}'); }
    void beginArray(const char* name = nullptr) { open(name, '['); }
    void endArray() { close(']'); }
    bool isOpen() const { return depth_ > 0; }
    void number(const char* name, long value);
    void boolean(const char* name, bool value);
    void ascii(const char* name, std::string_view text);
    void bytes(const char* name, Side side, const std::string& value);
    /// As bytes(), for what is text already; its bytes are those of the text.
    void text(const char* name, const std::string& value);
    /// Ends the document.
    void finish() { print("\n"); }

private:
    void member(const char* name);
    void open(const char* name, char bracket);
    void close(char bracket);

    bool first_ = true;
    int depth_ = 0;
};

/// An object, or the outermost array, that ends with its block, and the document with it. An array that is not wanted
/// prints nothing.
class JsonObject {
public:
    explicit JsonObject(Json& json, const char* name = nullptr) : json_(json) { json_.beginObject(name); }
    ~JsonObject() {
        json_.endObject();
        if (!json_.isOpen()) json_.finish();
    }
    JsonObject(const JsonObject&) = delete;
    JsonObject& operator=(const JsonObject&) = delete;

private:
    Json& json_;
};

class JsonArray {
public:
    JsonArray(Json& json, bool isWanted, const char* name = nullptr) : json_(json), isWanted_(isWanted) {
        if (isWanted_) json_.beginArray(name);
    }
    ~JsonArray() {
        if (!isWanted_) return;
        json_.endArray();
        if (!json_.isOpen()) json_.finish();
    }
    JsonArray(const JsonArray&) = delete;
    JsonArray& operator=(const JsonArray&) = delete;

private:
    Json& json_;
    bool isWanted_;
};

}  // namespace tamrix::client
