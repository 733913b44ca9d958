// Compares reading and rewriting dialog templates with copying their bytes, and the credits functions with loops that
// ignore double-byte characters.
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "about/credits_text.h"
#include "dialogs/dialog_template.h"
#include "entry/entry.h"
#include "measure.h"
#include "tamrix32/version.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

/// A string in the form used in templates.
Bytes unitsOf(std::u16string_view text) {
    Bytes bytes;
    for (const char16_t unit : text)
        bytes.insert(bytes.end(), {static_cast<std::uint8_t>(unit), std::uint8_t(unit >> 8)});
    bytes.insert(bytes.end(), {0, 0});
    return bytes;
}

void append(Bytes& bytes, const Bytes& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

/// A dialog with this number of controls, with typical classes and texts.
Bytes dialogOf(bool extended, unsigned controls) {
    Bytes names(4);  // no menu, the default class
    append(names, unitsOf(u"File Type Mappings"));
    Bytes items;
    for (unsigned i = 0; i < controls; ++i) {
        items.resize((items.size() + 3) / 4 * 4 + (extended ? 24 : 18));
        append(items, {0xFF, 0xFF, static_cast<std::uint8_t>(0x80 + i % 6), 0});
        append(items, unitsOf(i % 2 ? u"&Extension:" : u""));
        append(items, {0, 0});
    }
    const Bytes face = unitsOf(u"MS Sans Serif");
    tamrix::DialogTemplate dialog;
    dialog.extended = extended;
    dialog.itemCount = static_cast<std::uint16_t>(controls);
    dialog.names = names;
    dialog.face = face;
    dialog.items = items;
    Bytes bytes(tamrix::writeTemplate(dialog, {}));
    tamrix::writeTemplate(dialog, bytes);
    return bytes;
}

Inputs<Bytes> dialogs(bool extended) {
    constexpr unsigned kControls = 5;
    return {{dialogOf(extended, kControls)}, {dialogOf(extended, 1000 * kControls)}};
}

tamrix::DialogTemplate read(const Bytes& bytes) {
    const auto dialog = tamrix::parseTemplate(bytes);
    return dialog ? *dialog : (std::abort(), tamrix::DialogTemplate());
}

void registerFormat(const std::string& name, const Inputs<Bytes>& inputs) {
    const auto copyBytes = [](char* dst, const Bytes& bytes) {
        std::memcpy(dst, bytes.data(), bytes.size());
        return dst[0];
    };
    compare(
        name + " read", inputs, [](char*, const Bytes& bytes) { return int{read(bytes).itemCount}; }, "memcpy, " + name,
        copyBytes);
    compare(
        name + " rewrite", inputs,
        [](char* dst, const Bytes& bytes) {
            static const Bytes face = unitsOf(u"Tahoma");
            tamrix::DialogTemplate dialog = read(bytes);
            dialog.face = face;
            dialog.pointSize = 9;
            const std::span room(reinterpret_cast<std::uint8_t*>(dst), kRoom);
            return static_cast<int>(tamrix::writeTemplate(dialog, room));
        },
        "memcpy, " + name, copyBytes);
}

/// The text of the credits. For each plain line there is one with a marker and one with a placeholder.
std::string creditsOf(unsigned groups) {
    std::string text;
    for (unsigned i = 0; i < groups; ++i) text += "*Orvedi v%v\r\nDana Example\r\n\r\n/Example Partner, %y\r\n";
    return text;
}

std::span<char> fresh(char* dst, const std::string& text) {
    std::memcpy(dst, text.c_str(), text.size() + 1);
    return {dst, text.size() + 1};
}

std::vector<AboutLine>& lineTable() {
    static std::vector<AboutLine> lines(1 << 14);
    return lines;
}

int parseByLibrary(char* dst, const std::string& text) {
    const auto bytes = fresh(dst, text);
    const std::int32_t count = tamrix::compactCredits(bytes, tamrix::leadByteTable);
    tamrix::splitCredits(bytes, tamrix::leadByteTable, std::span(lineTable()).first(static_cast<std::size_t>(count)));
    return count;
}

int parseBare(char* dst, const std::string& text) {
    fresh(dst, text);
    AboutLine* line = lineTable().data();
    char* to = dst;
    char* start = dst;
    for (const char* from = dst; *from; ++from) {
        if (*from == '\n') continue;
        if (*from != '\r') {
            *to++ = *from;
            continue;
        }
        *line++ = {static_cast<std::uint32_t>(start - dst), static_cast<std::int32_t>(to - start)};
        *to++ = 0;
        start = to;
    }
    *to = 0;
    *line++ = {static_cast<std::uint32_t>(start - dst), static_cast<std::int32_t>(to - start)};
    return static_cast<int>(line - lineTable().data());
}

int expandByLibrary(char* dst, const std::string& line) {
    const tamrix::MarkedLine marked = tamrix::takeMarker(line, {true, true, true});
    const std::span<char, tamrix::kExpandedCapacity> buffer(dst, tamrix::kExpandedCapacity);
    return static_cast<int>(tamrix::expandPlaceholders(marked.text, tamrix::leadByteTable, buffer).size());
}

int expandBare(char* dst, const std::string& line) {
    char* to = dst;
    for (const char* from = line.c_str() + (std::strchr("*/_", line[0]) != nullptr); *from; ++from) {
        if (*from != '%')
            *to++ = *from;
        else
            to = stpcpy(to, *++from == 'v' ? TAMRIX32_VERSION : "1995-97");
    }
    return static_cast<int>(to - dst);
}

}  // namespace

int main(int argc, char** argv) {
    DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr);
    static const Inputs<Bytes> standard = dialogs(false), extended = dialogs(true);
    registerFormat("StandardTemplate", standard);
    registerFormat("ExtendedTemplate", extended);
    static const Inputs<std::string> credits{{creditsOf(2)}, {creditsOf(2000)}};
    if (parseByLibrary(std::string(kRoom, 0).data(), credits.joined[0]) !=
        parseBare(std::string(kRoom, 0).data(), credits.joined[0]))
        std::abort();
    compare("credits, lines found", credits, parseByLibrary, "loop that finds lines", parseBare);
    static const Inputs<std::string> lines{{"*Orvedi v%v", "Dana Example", "", "/Example Partner, %y"}, {}};
    compare("credits, a line expanded", lines, expandByLibrary, "loop that expands", expandBare);
    return runAndPrint(argc, argv, rows());
}
