#include "client/rename_journal.h"

#include <algorithm>
#include <charconv>

#include "client/text.h"

namespace tamrix::client {
namespace {

constexpr std::string_view kTitle = "tamrix rename journal 1";

std::string escaped(std::string_view field) {
    std::string result;
    for (const char c : field) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F || c == '\\')
            result += "\\x" + hex({&c, 1});
        else
            result += c;
    }
    return result;
}

bool unescaped(std::string_view field, std::string& result) {
    result.clear();
    for (std::size_t at = 0; at < field.size(); ++at) {
        unsigned value = 0;
        if (field[at] != '\\') {
            result += field[at];
            continue;
        }
        if (field.size() - at < 4 || field[at + 1] != 'x') return false;
        const auto read = std::from_chars(&field[at] + 2, &field[at] + 4, value, 16);
        if (read.ec != std::errc{} || read.ptr != &field[at] + 4) return false;
        result += static_cast<char>(value);
        at += 3;
    }
    return true;
}

/// A line's keyword and up to three fields.
struct Fields {
    std::string_view word;
    std::string field[3];
    std::size_t count = 0;

    explicit Fields(std::string_view line) {
        word = line.substr(0, line.find('\t'));
        for (std::size_t at = word.size(); at < line.size();) {
            const std::size_t end = std::min(line.find('\t', at + 1), line.size());
            if (count == 3 || !unescaped(line.substr(at + 1, end - at - 1), field[count++])) {
                word = {};
                return;
            }
            at = end;
        }
    }
    bool are(std::string_view wanted, std::size_t fields) const { return word == wanted && count == fields; }
};

bool takeStep(const Fields& fields, Journal& journal) {
    const auto& field = fields.field;
    const std::size_t folder = journal.folders.size() - 1;
    if (fields.are("in", 1))
        journal.folders.push_back(field[0]);
    else if (fields.are("name", 2) && !journal.folders.empty())
        journal.steps.push_back({folder, false, {}, field[0], field[1]});
    else if (fields.are("link", 3) && !journal.folders.empty())
        journal.steps.push_back({folder, true, field[0], field[1], field[2]});
    else if (fields.are("back", 1)) {
        std::size_t step = 0;
        const char* end = field[0].data() + field[0].size();
        const auto read = std::from_chars(field[0].data(), end, step);
        if (read.ec != std::errc{} || read.ptr != end || step >= journal.steps.size()) return false;
        journal.steps[step].isUndone = true;
    } else
        return false;
    return true;
}

bool takeLine(std::size_t number, std::string_view line, Journal& journal) {
    const Fields fields(line);
    if (number == 1) return line == kTitle;
    if (number == 2) {
        journal.toWindows = fields.word == "to-windows";
        journal.isText = fields.field[0] == "text";
        return fields.count == 1 && (journal.toWindows || fields.word == "to-mac") &&
               (journal.isText || fields.field[0] == "bytes");
    }
    if (number > 3) return takeStep(fields, journal);
    journal.tree = fields.field[0];
    return fields.are("tree", 1);
}

}  // namespace

bool Journal::isUndone() const {
    return std::all_of(steps.begin(), steps.end(), [](const JournalStep& step) { return step.isUndone; });
}

std::string journalHead(bool toWindows, bool isText, const std::string& tree) {
    return std::string(kTitle) + (toWindows ? "\nto-windows\t" : "\nto-mac\t") + (isText ? "text" : "bytes") +
           "\ntree\t" + escaped(tree) + "\n";
}

std::string folderLine(const std::string& folder) {
    return "in\t" + escaped(folder) + "\n";
}

std::string nameLine(const std::string& from, const std::string& to) {
    return "name\t" + escaped(from) + "\t" + escaped(to) + "\n";
}

std::string linkLine(const std::string& name, const std::string& from, const std::string& to) {
    return "link\t" + escaped(name) + "\t" + escaped(from) + "\t" + escaped(to) + "\n";
}

std::string backLine(std::size_t step) {
    return "back\t" + std::to_string(step) + "\n";
}

bool parseJournal(std::string_view text, Journal& journal, std::size_t& line) {
    line = 0;
    for (std::size_t end; (end = text.find('\n', journal.wholeSize)) != std::string_view::npos;) {
        if (!takeLine(++line, text.substr(journal.wholeSize, end - journal.wholeSize), journal)) return false;
        journal.wholeSize = end + 1;
    }
    journal.isTorn = journal.wholeSize < text.size();
    return ++line > 3;
}

}  // namespace tamrix::client
