#include "client/mapping_file.h"

#include <windows.h>

#include <algorithm>
#include <array>

#include "tamrix32/strings.h"

namespace tamrix::client {
namespace {

constexpr std::size_t kMaxFields = 4;
constexpr std::size_t kCodeLength = 4;
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kHexDigits = "0123456789ABCDEF";

struct Escape {
    char byte;
    char letter;
};
constexpr std::array kEscapes = {Escape{'\\', '\\'}, Escape{'"', '"'}, Escape{'\t', 't'}, Escape{'\n', 'n'},
                                 Escape{'\r', 'r'}};

bool isPlain(char byte) {
    return byte > ' ' && byte <= '~' && byte != '"';
}

bool isAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

bool needsQuotes(std::string_view field) {
    return field.empty() || field[0] == '#' || !std::all_of(field.begin(), field.end(), isPlain);
}

void writeField(std::string& text, std::string_view field) {
    if (!needsQuotes(field)) {
        text += field;
        return;
    }
    text += '"';
    for (const char byte : field) {
        const auto escape =
            std::find_if(kEscapes.begin(), kEscapes.end(), [byte](const Escape& known) { return known.byte == byte; });
        const auto value = static_cast<unsigned char>(byte);
        if (escape != kEscapes.end()) {
            text += {'\\', escape->letter};
        } else if (byte == ' ' || isPlain(byte)) {
            text += byte;
        } else {
            text += {'\\', 'x', kHexDigits[value >> 4], kHexDigits[value & 15]};
        }
    }
    text += '"';
}

std::optional<unsigned> hexDigit(char digit) {
    const char upper = digit >= 'a' && digit <= 'f' ? static_cast<char>(digit - 'a' + 'A') : digit;
    const std::size_t value = kHexDigits.find(upper);
    return value == std::string_view::npos ? std::nullopt : std::optional(static_cast<unsigned>(value));
}

/// Parses one line from left to right. Each function returns an error message, or an empty string on success.
class LineReader {
public:
    explicit LineReader(std::string_view line) : rest_(line) {}

    std::string read(Mapping& mapping) {
        std::array<std::string, kMaxFields> fields;
        std::size_t count = 0;
        for (bool more = true; more; ++count) {
            if (count == kMaxFields) return "more than four fields";
            if (std::string wrong = readField(fields[count]); !wrong.empty()) return wrong;
            more = takeTab();
        }
        if (!rest_.empty()) return "text after the closing quote";
        if (count < kMaxFields - 1) return "expected extension, type and creator, separated by tabs";
        mapping = {std::move(fields[0]), std::move(fields[1]), std::move(fields[2]), std::nullopt};
        if (count == kMaxFields) mapping.comment = std::move(fields[3]);
        return "";
    }

private:
    bool takeTab() {
        if (rest_.empty() || rest_[0] != '\t') return false;
        rest_.remove_prefix(1);
        return true;
    }

    char take() {
        const char byte = rest_[0];
        rest_.remove_prefix(1);
        return byte;
    }

    std::string readField(std::string& field) {
        if (!rest_.empty() && rest_[0] == '"') return readQuoted(field);
        field = rest_.substr(0, rest_.find('\t'));
        rest_.remove_prefix(field.size());
        return field.find('\0') == std::string::npos ? "" : "contains a zero byte";
    }

    std::string readQuoted(std::string& field) {
        take();
        while (!rest_.empty()) {
            const char byte = take();
            if (byte == '"') return field.find('\0') == std::string::npos ? "" : "contains a zero byte";
            if (byte != '\\') {
                field += byte;
            } else if (!readEscape(field)) {
                return "unknown escape (allowed: \\\\ \\\" \\t \\n \\r \\xHH)";
            }
        }
        return "missing closing quote";
    }

    bool readEscape(std::string& field) {
        if (rest_.empty()) return false;
        const char letter = take();
        if (letter == 'x') return readHex(field);
        const auto escape = std::find_if(kEscapes.begin(), kEscapes.end(),
                                         [letter](const Escape& known) { return known.letter == letter; });
        if (escape == kEscapes.end()) return false;
        field += escape->byte;
        return true;
    }

    bool readHex(std::string& field) {
        if (rest_.size() < 2) return false;
        const auto high = hexDigit(take());
        const auto low = hexDigit(take());
        if (!high || !low) return false;
        field += static_cast<char>(*high << 4 | *low);
        return true;
    }

    std::string_view rest_;
};

std::string checkCode(std::string_view code, std::string_view what) {
    if (code.size() == kCodeLength) return "";
    return std::string("the ").append(what) + " must have 4 bytes, not " + std::to_string(code.size());
}

/// Adds the extension's dot if it is missing. Returns why the mapping cannot be stored, or an empty string.
std::string complete(Mapping& mapping) {
    std::string& extension = mapping.extension;
    addDot(extension);
    if (extension.size() == 1) return "the extension is empty";
    if (extension.size() > 1 + kMaxExtensionSize) return "the extension is longer than 15 bytes";
    if (dbcs_strchr(extension.c_str(), '\\')) return "the extension contains a backslash";
    // The registry stores characters: other bytes would be read back as a different extension.
    if (!MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, extension.data(), static_cast<int>(extension.size()),
                             nullptr, 0))
        return "the extension contains bytes that are not characters of the ANSI code page";
    std::string wrong = checkCode(mapping.type, "type");
    return wrong.empty() ? checkCode(mapping.creator, "creator") : wrong;
}

/// A mapping's line and its registry key in lower case, since the registry ignores case in keys.
struct Place {
    std::string key;
    std::size_t line;
};

Place placeOf(const Mapping& mapping, std::size_t line) {
    const int size = static_cast<int>(mapping.extension.size());
    Place place{mapping.extension, line};
    const int mapped =
        LCMapStringA(LOCALE_SYSTEM_DEFAULT, LCMAP_LOWERCASE, mapping.extension.data(), size, place.key.data(), size);
    if (mapped > 0) place.key.resize(static_cast<std::size_t>(mapped));
    return place;
}

/// Finds the first line that maps an extension a second time.
std::optional<MappingFileError> findRepetition(std::vector<Place> places) {
    std::sort(places.begin(), places.end(),
              [](const Place& a, const Place& b) { return a.key != b.key ? a.key < b.key : a.line < b.line; });
    const Place* first = nullptr;
    const Place* again = nullptr;
    for (std::size_t i = 1; i < places.size(); ++i) {
        if (places[i].key != places[i - 1].key || (again && again->line < places[i].line)) continue;
        first = &places[i - 1];
        again = &places[i];
    }
    if (!again) return std::nullopt;
    return MappingFileError{again->line, first->key + " is already mapped in line " + std::to_string(first->line)};
}

/// Removes the next line from `text` and returns it without its line end.
std::string_view takeLine(std::string_view& text) {
    const std::size_t length = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, length);
    text.remove_prefix(std::min(length + 1, text.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

}  // namespace

MappingFile parseMappings(std::string_view text) {
    MappingFile file;
    std::vector<Place> places;
    const bool isUtf8 = text.starts_with(kUtf8Mark);
    if (isUtf8) text.remove_prefix(kUtf8Mark.size());
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::string_view line = takeLine(text);
        if (line.empty() || line[0] == '#') continue;
        Mapping mapping;
        std::string wrong = LineReader(line).read(mapping);
        if (isUtf8 && !std::all_of(line.begin(), line.end(), isAscii))
            wrong = "non-ASCII character in a UTF-8 file: write its byte as \\xHH in quotes";
        if (wrong.empty()) wrong = complete(mapping);
        if (!wrong.empty()) return {{}, MappingFileError{number, std::move(wrong)}};
        places.push_back(placeOf(mapping, number));
        file.mappings.push_back(std::move(mapping));
    }
    if (auto repetition = findRepetition(std::move(places))) return {{}, std::move(repetition)};
    return file;
}

std::string writeMappings(std::span<const Mapping> mappings) {
    std::string text;
    for (const Mapping& mapping : mappings) {
        writeField(text, mapping.extension);
        text += '\t';
        writeField(text, mapping.type);
        text += '\t';
        writeField(text, mapping.creator);
        if (mapping.comment) {
            text += '\t';
            writeField(text, *mapping.comment);
        }
        text += '\n';
    }
    return text;
}

}  // namespace tamrix::client
