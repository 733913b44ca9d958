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

// Parses a hexadecimal number of 1 to maxDigits digits.
std::optional<DWORD> takeHex(std::string_view& text, std::size_t maxDigits) {
    DWORD number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + std::min(text.size(), maxDigits), number, 16);
    if (error != std::errc()) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

class Reader {
public:
    Reader(std::string_view text, std::optional<TextError>& error) : rest_(text), error_(error) {}

    std::vector<FileKey> read() {
        std::vector<FileKey> keys;
        error_.reset();
        if (!nextLine() || withoutBlanks(line_) != "REGEDIT4") fail("the file does not begin with REGEDIT4");
        while (!failed() && nextLine()) {
            if (line_.find('\0') != std::string_view::npos) fail("zero byte in the text");
            const std::string_view line = withoutBlanks(line_);
            if (line.empty() || line[0] == ';') continue;
            if (line[0] == '[') {
                readKey(line, keys);
            } else if (keys.empty()) {
                fail("value before the first key");
            } else {
                readValue(line, keys.back());
            }
        }
        return failed() ? std::vector<FileKey>() : keys;
    }

private:
    bool failed() const { return error_.has_value(); }

    // Only the first error is reported.
    void fail(const char* message) {
        if (!failed()) error_ = TextError{number_, message};
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
        if (!line.ends_with(']')) return fail("key without a closing bracket");
        line = line.substr(1, line.size() - 2);
        if (line.starts_with('-')) return fail("key deletions are not supported");
        const auto end = line.find('\\');
        const std::string_view rootName = line.substr(0, end);
        for (const Root& root : registry().roots) {
            if (compareNames(rootName, root.name) != 0) continue;
            keys.push_back({root.key, std::string(end == std::string_view::npos ? "" : line.substr(end + 1)), {}});
            const auto components = pathComponents(keys.back().path);
            if (components.size() > kMaxKeyDepth) fail("keys nested more than 512 levels deep");
            for (const std::string_view component : components)
                if (component.size() > kMaxKeyName) fail("key name of more than 255 bytes");
            return;
        }
        fail("unknown root key");
    }

    void readValue(std::string_view line, FileKey& key) {
        FileValue value;
        if (!skip(line, "@")) {
            if (!skip(line, "\"")) return fail("neither a key nor a value");
            auto name = takeQuoted(line);
            if (!name) return fail("value name without a closing quotation mark or with an unknown escape");
            if (name->size() > kMaxValueName) return fail("value name of more than 16383 bytes");
            value.name = *std::move(name);
        }
        skipBlanks(line);
        if (!skip(line, "=")) return fail("value without an equals sign");
        skipBlanks(line);
        readData(line, value);
        if (!withoutBlanks(line).empty()) return fail("text after the value");
        key.values.push_back(std::move(value));
    }

    void readData(std::string_view& line, FileValue& value) {
        if (skip(line, "\"")) {
            const auto text = takeQuoted(line);
            if (!text) return fail("string without a closing quotation mark or with an unknown escape");
            value.type = REG_SZ;
            value.data.assign(text->c_str(), text->c_str() + text->size() + 1);
        } else if (skip(line, "dword:")) {
            const auto number = takeHex(line, 8);
            if (!number) return fail("dword without a hexadecimal number");
            value.type = REG_DWORD;
            for (int shift = 0; shift < 32; shift += 8) value.data.push_back(static_cast<BYTE>(*number >> shift));
        } else if (skip(line, "hex:")) {
            value.type = REG_BINARY;
            readBytes(line, value.data);
        } else if (skip(line, "hex(")) {
            const auto type = takeHex(line, 8);
            if (!type || !skip(line, "):")) return fail("hex value without a type");
            value.type = *type;
            readBytes(line, value.data);
        } else {
            fail(line == "-" ? "value deletions are not supported" : "unknown type of data");
        }
    }

    // Reads bytes separated by commas. After a comma, a backslash continues on the next line.
    void readBytes(std::string_view& line, std::vector<BYTE>& data) {
        while (!withoutBlanks(line).empty()) {
            skipBlanks(line);
            if (withoutBlanks(line) == "\\") {
                if (!nextLine()) return fail("hex value is not complete at the end of the file");
                line = line_;
                continue;
            }
            const auto byte = takeHex(line, 2);
            if (!byte) return fail("not a hexadecimal byte");
            data.push_back(static_cast<BYTE>(*byte));
            skipBlanks(line);
            if (!skip(line, ",")) return;
        }
    }

    std::string_view rest_;
    std::string_view line_;
    std::size_t number_ = 0;
    std::optional<TextError>& error_;
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

std::vector<FileKey> readRegedit4(std::string_view text, std::optional<TextError>& error) {
    return Reader(text, error).read();
}

std::optional<TextError> mergeRegistry(std::string_view text) {
    std::optional<TextError> error;
    const std::scoped_lock lock(registry().guard);
    for (const FileKey& fileKey : readRegedit4(text, error)) {
        bool created = false;
        const auto key = createKey(fileKey.root, fileKey.path, created);
        for (const FileValue& fileValue : fileKey.values) {
            Value& value = key->addValue(fileValue.name);
            value.type = fileValue.type;
            // Copied, because a copy has no spare capacity in which a sanitizer would not detect reads past the data.
            value.data = std::vector<BYTE>(fileValue.data.begin(), fileValue.data.end());
        }
    }
    return error;
}

}  // namespace standin
