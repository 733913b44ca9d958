#include "client/name_list.h"

#include <stdio.h>

#include "client/command.h"
#include "client/output.h"
#include "client/system/streams.h"

namespace tamrix::client {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Converts a name from the command line or the input to bytes; reports an error and returns false on failure.
bool takeName(Side side, const std::string& text, std::string& bytes) {
    const bool isKnown = bytesFromText(side, text, bytes);
    const bool isWhole = text.find('\0') == std::string::npos;
    if (!isKnown)
        complain(text, whyNotBytes(side));
    else if (!isWhole)
        complain(text, "contains a zero byte (use -0 if names end in zero bytes)");
    return isKnown && isWhole;
}

/// Reads names from standard input.
class NameLines {
public:
    explicit NameLines(char ending) : ending_(static_cast<unsigned char>(ending)) {}

    /// Reads the next name, not yet converted; false at the end.
    bool next(std::string& name) {
        name.clear();
        int c = readByte();
        if (c == EOF) return false;
        for (; c != EOF && c != ending_; c = readByte()) name.push_back(static_cast<char>(c));
        const bool isFirst = !hasRead_;
        hasRead_ = true;
        if (!isFirst || !namesAreText || !name.starts_with(kByteOrderMark)) return true;
        // A byte order mark, as editors write it, says that UTF-8 follows; it is not part of a name.
        isUtf8_ = true;
        name.erase(0, kByteOrderMark.size());
        return !name.empty() || c != EOF;
    }

    bool isUtf8() const { return isUtf8_; }

private:
    int ending_;
    bool hasRead_ = false;
    bool isUtf8_ = false;
};

}  // namespace

int forEachName(const Arguments& arguments, Side side, const std::function<bool(const std::string&)>& act) {
    int status = kDone;
    std::string bytes;
    const auto take = [&](const std::string& text) {
        if (!takeName(side, text, bytes) || !act(bytes)) status = kSomeFailed;
    };
    for (const std::string& operand : arguments.operands()) take(operand);
    if (!arguments.operands().empty()) return status;

    const char ending = arguments.has("-0") ? '\0' : '\n';
    NameLines lines(ending);
    std::string text;
    while (lines.next(text)) {
        // Windows names contain no carriage return, but lines written by Windows programs end in one.
        if (side == Side::windows && ending == '\n' && text.ends_with('\r')) text.pop_back();
        if (textOfInput(text, lines.isUtf8())) {
            take(text);
        } else {
            complain(text, "not text in the ANSI code page");
            status = kSomeFailed;
        }
    }
    if (!ferror(stdin)) return status;
    complain("", "cannot read standard input");
    return kUsageError;
}

}  // namespace tamrix::client
