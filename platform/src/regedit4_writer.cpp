#include "regedit4.h"

namespace standin {
namespace {

constexpr const char* kLineEnd = "\r\n";
constexpr char kHexDigits[] = "0123456789abcdef";
constexpr std::size_t kBytesPerLine = 24;

std::string hexNumber(DWORD number, std::size_t minDigits) {
    std::string digits;
    for (; number || digits.size() < minDigits; number >>= 4) digits.insert(digits.begin(), kHexDigits[number & 15]);
    return digits;
}

// The quoted text, if it would read back to the same bytes.
std::optional<std::string> quoted(std::string_view text) {
    if (text.find_first_of(std::string_view("\0\r\n", 3)) != std::string_view::npos) return std::nullopt;
    std::string result = "\"";
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view character = rest.substr(0, fileCharacterSize(rest));
        if (character == "\\" || character == "\"") result += '\\';
        result += character;
        rest.remove_prefix(character.size());
    }
    result += '"';
    std::string_view check = std::string_view(result).substr(1);
    const auto back = takeQuoted(check);
    if (!back || *back != text || !check.empty()) return std::nullopt;
    return result;
}

void putBytes(std::string& text, const std::vector<BYTE>& data) {
    for (std::size_t i = 0; i < data.size(); ++i) {
        if (i > 0) text += ',';
        if (i > 0 && i % kBytesPerLine == 0) text += std::string("\\") + kLineEnd + "  ";
        text += hexNumber(data[i], 2);
    }
}

void putData(std::string& text, const Value& value) {
    const auto& data = value.data;
    if (value.type == REG_SZ && !data.empty() && data.back() == 0) {
        if (const auto string = quoted({reinterpret_cast<const char*>(data.data()), data.size() - 1})) {
            text += *string;
            return;
        }
    }
    if (value.type == REG_DWORD && data.size() == 4) {
        const DWORD number = MAKEWORD(data[0], data[1]) | static_cast<DWORD>(MAKEWORD(data[2], data[3])) << 16;
        text += "dword:" + hexNumber(number, 8);
        return;
    }
    text += value.type == REG_BINARY ? "hex:" : "hex(" + hexNumber(value.type, 1) + "):";
    putBytes(text, data);
}

// Whether a key's path would read back to the same components.
bool readsBack(const std::string& path, const std::vector<std::string_view>& names) {
    return path.find_first_of("\r\n") == std::string::npos && pathComponents(path) == names;
}

class Writer {
public:
    explicit Writer(std::string& reason) : reason_(reason) {}

    bool put(const Key& key, const std::string& rootName, const std::string& path) {
        if (!readsBack(path, names_)) return fail("a key name that the file format can't hold", key.name());
        text_ += "[" + rootName + (path.empty() ? "" : "\\") + path + "]" + kLineEnd;
        for (const Value& value : key.values()) {
            const auto name = value.name.empty() ? "@" : quoted(value.name);
            if (!name) return fail("a value name that the file format can't hold", value.name);
            text_ += *name + "=";
            putData(text_, value);
            text_ += kLineEnd;
        }
        text_ += kLineEnd;
        for (const SubkeyEntry& entry : key.children()) {
            const Key& child = *entry.key();
            names_.push_back(child.name());
            if (!put(child, rootName, path.empty() ? child.name() : path + "\\" + child.name())) return false;
            names_.pop_back();
        }
        return true;
    }

    std::string& text() { return text_; }

private:
    bool fail(const char* what, const std::string& name) {
        reason_ = std::string(what) + ": " + name;
        return false;
    }

    std::string text_ = std::string("REGEDIT4") + kLineEnd + kLineEnd;
    std::vector<std::string_view> names_;  // of the key being written, from the root down
    std::string& reason_;
};

}  // namespace

std::optional<std::string> registryAsText(std::string& reason) {
    const std::scoped_lock lock(registry().guard);
    Writer writer(reason);
    for (const Root& root : registry().roots) {
        if (root.key->children().empty() && root.key->values().empty()) continue;
        if (!writer.put(*root.key, root.name, "")) return std::nullopt;
    }
    return std::move(writer.text());
}

}  // namespace standin
