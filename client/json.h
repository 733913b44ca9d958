// Results as JSON, for scripts.
#pragma once

#include <string>
#include <string_view>

#include "client/text.h"

namespace tamrix::client {

/// Prints one JSON document piece by piece. No JSON library is used: nothing is stored or parsed, and the shipped
/// program links no C++ runtime that such a library would need. Member names, and the texts passed to ascii(), are
/// ASCII.
///
/// A byte string becomes two members: NAME, the text, and NAMEHex, the bytes. The text is null if the bytes cannot be
/// converted; with --bytes each byte becomes the character with its value, \u0000 to \u00FF.
class Json {
public:
    void number(const char* name, long value);
    void boolean(const char* name, bool value);
    void ascii(const char* name, std::string_view text);
    void bytes(const char* name, Side side, const std::string& value);
    /// Like bytes(), for text; NAMEHex contains its UTF-8 bytes, or the raw bytes with --bytes.
    void text(const char* name, const std::string& value);

private:
    friend class JsonObject;
    friend class JsonArray;

    void member(const char* name);
    void open(const char* name, char bracket);
    /// Closing the outermost bracket also ends the document's line.
    void close(char bracket);

    bool first_ = true;
    int depth_ = 0;
};

/// Opens an object and closes it when it is destroyed: the document, an array's element or, with a name, a member.
class JsonObject {
public:
    explicit JsonObject(Json& json, const char* name = nullptr) : json_(json) { json_.open(name, '{'); }
    ~JsonObject() { json_.close('}'); }
    JsonObject(const JsonObject&) = delete;
    JsonObject& operator=(const JsonObject&) = delete;

private:
    Json& json_;
};

/// Opens an array and closes it when it is destroyed: a member or the document.
class JsonArray {
public:
    JsonArray(Json& json, const char* name) : JsonArray(json, name, true) {}
    /// The document; prints nothing unless `isWanted`.
    JsonArray(Json& json, bool isWanted) : JsonArray(json, nullptr, isWanted) {}
    ~JsonArray() {
        if (isWanted_) json_.close(']');
    }
    JsonArray(const JsonArray&) = delete;
    JsonArray& operator=(const JsonArray&) = delete;

private:
    JsonArray(Json& json, const char* name, bool isWanted) : json_(json), isWanted_(isWanted) {
        if (isWanted_) json_.open(name, '[');
    }

    Json& json_;
    bool isWanted_;
};

}  // namespace tamrix::client
