#include <algorithm>
#include <charconv>

#include "code_page.h"
#include "regedit4.h"

namespace standin {
namespace {

std::string_view withoutBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

void skipBlanks(std::string_view& text) {
    while (!text.empty() && (text[0] == ' ' || text[0] == '\t')) text.remove_prefix(1);
}

bool skip(std::string_view& text, std::string_view prefix) {
    if (!text.starts_with(prefix)) return false;
    text.remove_prefix(prefix.size());
    return true;
}

// A hexadecimal number of 1 to maxDigits digits.
std::optional<DWORD> takeHex(std::string_view& text, std::size_t maxDigits) {
    DWORD number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + std::min(text.size(), maxDigits), number, 16);
    if (error != std::errc()) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

class Reader {
public:
    Reader(std::string_view text, FileResult& result) : rest_(text), result_(result) {}

    std::vector<FileKey> read() {
        std::vector<FileKey> keys;
        result_ = {};
        if (!nextLine() || withoutBlanks(line_) != "REGEDIT4") fail("the file does not begin with REGEDIT4");
        while (!failed() && nextLine()) {
            if (line_.find('\0') != std::string_view::npos) fail("a zero byte in the text");
            const std::string_view line = withoutBlanks(line_);
            if (line.empty() || line[0] == ';') continue;
            if (line[0] == '[') {
                readKey(line, keys);
            } else if (keys.empty()) {
                fail("a value before the first key");
            } else {
                readValue(line, keys.back());
            }
        }
        result_.ok = !failed();
        return failed() ? std::vector<FileKey>() : keys;
    }

private:
    bool failed() const { return !result_.message.empty(); }

    // The first fault is the one reported.
    void fail(const char* message) {
        if (failed()) return;
        result_.line = number_;
        result_.message = message;
    }

    bool nextLine() {
        if (rest_.empty()) return false;
        ++number_;
        const auto end = rest_.find('\n');
        line_ = rest_.substr(0, end);
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
        if (line_.ends_with('\r')) line_.remove_suffix(1);
        return true;
    }

    void readKey(std::string_view line, std::vector<FileKey>& keys) {
        if (!line.ends_with(']')) return fail("a key without its closing bracket");
        line = line.substr(1, line.size() - 2);
        if (line.starts_with('-')) return fail("a key's deletion, which a store can't hold");
        const auto end = line.find('\\');
        const std::string_view rootName = line.substr(0, end);
        for (const Root& root : registry().roots) {
            if (compareNames(rootName, root.name) != 0) continue;
            keys.push_back({root.key, std::string(end == std::string_view::npos ? "" : line.substr(end + 1)), {}});
            const auto components = pathComponents(keys.back().path);
            if (components.size() > kMaxKeyDepth) fail("keys nested more than 512 deep");
            for (const std::string_view component : components)
                if (component.size() > kMaxKeyName) fail("a key name of more than 255 bytes");
            return;
        }
        fail("an unknown root key");
    }

    void readValue(std::string_view line, FileKey& key) {
        FileValue value;
        if (!skip(line, "@")) {
            if (!skip(line, "\"")) return fail("neither a key nor a value");
            auto name = takeQuoted(line);
            if (!name) return fail("a value name without its end, or with an unknown escape");
            if (name->size() > kMaxValueName) return fail("a value name of more than 16383 bytes");
            value.name = *std::move(name);
        }
        skipBlanks(line);
        if (!skip(line, "=")) return fail("a value without an equals sign");
        skipBlanks(line);
        readData(line, value);
        if (!withoutBlanks(line).empty()) return fail("more text behind a value");
        key.values.push_back(std::move(value));
    }

    void readData(std::string_view& line, FileValue& value) {
        if (skip(line, "\"")) {
            const auto text = takeQuoted(line);
            if (!text) return fail("a string without its end, or with an unknown escape");
            value.type = REG_SZ;
            value.data.assign(text->c_str(), text->c_str() + text->size() + 1);
        } else if (skip(line, "dword:")) {
            const auto number = takeHex(line, 8);
            if (!number) return fail("a dword without its number");
            value.type = REG_DWORD;
            for (int shift = 0; shift < 32; shift += 8) value.data.push_back(static_cast<BYTE>(*number >> shift));
        } else if (skip(line, "hex:")) {
            value.type = REG_BINARY;
            readBytes(line, value.data);
        } else if (skip(line, "hex(")) {
            const auto type = takeHex(line, 8);
            if (!type || !skip(line, "):")) return fail("a hex value without its type");
            value.type = *type;
            readBytes(line, value.data);
        } else {
            fail(line == "-" ? "a value's deletion, which a store can't hold" : "data of no known kind");
        }
    }

    // Bytes separated by commas; a backslash behind a comma goes on in the next line.
    void readBytes(std::string_view& line, std::vector<BYTE>& data) {
        while (!withoutBlanks(line).empty()) {
            skipBlanks(line);
            if (withoutBlanks(line) == "\\") {
                if (!nextLine()) return fail("a hex value without its last line");
                line = line_;
                continue;
            }
            const auto byte = takeHex(line, 2);
            if (!byte) return fail("a hex value with something that is no byte");
            data.push_back(static_cast<BYTE>(*byte));
            skipBlanks(line);
            if (!skip(line, ",")) return;
        }
    }

    std::string_view rest_;
    std::string_view line_;
    std::size_t number_ = 0;
    FileResult& result_;
};

}  // namespace

std::size_t fileCharacterSize(std::string_view text) {
    const bool isDouble =
        text.size() > 1 && ansiCodePage().isLead(static_cast<BYTE>(text[0])) && static_cast<BYTE>(text[1]) >= 0x40;
    return isDouble ? 2 : 1;
}

std::optional<std::string> takeQuoted(std::string_view& text) {
    std::string plain;
    while (!text.empty()) {
        const std::size_t size = fileCharacterSize(text);
        std::string_view character = text.substr(0, size);
        text.remove_prefix(size);
        if (character == "\"") return plain;
        if (character == "\\") {
            if (!text.starts_with('\\') && !text.starts_with('"')) return std::nullopt;
            character = text.substr(0, 1);
            text.remove_prefix(1);
        }
        plain += character;
    }
    return std::nullopt;
}

std::vector<FileKey> readRegedit4(std::string_view text, FileResult& result) {
    return Reader(text, result).read();
}

}  // namespace standin
