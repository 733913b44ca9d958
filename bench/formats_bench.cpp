// Dialog templates read and rewritten beside a copy of their bytes, and the credits beside loops that know no
// double-byte characters.
#include <cstdlib>
#include <cstring>
#include <string>

#include "about/credits_text.h"
#include "dialogs/dialog_template.h"
#include "frame/entry.h"
#include "measure.h"
#include "tamrix32/version.h"
#include "template_builder.h"

namespace {

using testing_support::Bytes;

/// A dialog of so many controls, of the classes and texts that dialogs have.
Bytes dialogOf(bool extended, unsigned controls) {
    testing_support::BuiltTemplate dialog{.extended = extended, .title = u"File Type Mappings"};
    dialog.font = testing_support::BuiltFont{.face = u"MS Sans Serif"};
    for (unsigned i = 0; i < controls; ++i)
        dialog.items.push_back({{u'\xFFFF', static_cast<char16_t>(0x80 + i % 6)}, i % 2 ? u"&Extension:" : u""});
    return dialog.bytes();
}

Inputs<Bytes> dialogs(bool extended) {
    constexpr unsigned kControls = 5;
    return {{dialogOf(extended, kControls)}, {dialogOf(extended, 1000 * kControls)}};
}

template <typename Template>
int read(Template& dialog, const Bytes& bytes) {
    dialog.dataSize = static_cast<std::uint32_t>(bytes.size());
    if (!dialog.parse(bytes.data())) std::abort();
    return dialog.itemCount;
}

template <typename Template>
void registerFormat(const std::string& name, const Inputs<Bytes>& inputs) {
    const auto copyBytes = [](char* dst, const Bytes& bytes) {
        std::memcpy(dst, bytes.data(), bytes.size());
        return dst[0];
    };
    compare(
        name + " read", inputs,
        [](char*, const Bytes& bytes) {
            Template dialog;
            return read(dialog, bytes);
        },
        "memcpy, " + name.substr(1), copyBytes);
    compare(
        name + " rewrite", inputs,
        [](char* dst, const Bytes& bytes) {
            Template dialog;
            read(dialog, bytes);
            dialog.setFaceName("Tahoma");
            dialog.setPointSize(9);
            const int size = dialog.write(dst, kRoom);
            return size ? size : (std::abort(), 0);
        },
        "memcpy, " + name.substr(1), copyBytes);
}

/// The credits' text, one line of it marked and one with a placeholder for each that is plain.
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
    registerFormat<tamrix::CDialogTemplate>("CDialogTemplate", standard);
    registerFormat<tamrix::CDialogTemplateEx>("CDialogTemplateEx", extended);
    static const Inputs<std::string> credits{{creditsOf(2)}, {creditsOf(2000)}};
    if (parseByLibrary(std::string(kRoom, 0).data(), credits.joined[0]) !=
        parseBare(std::string(kRoom, 0).data(), credits.joined[0]))
        std::abort();
    compare("credits, lines found", credits, parseByLibrary, "loop that finds lines", parseBare);
    static const Inputs<std::string> lines{{"*Orvedi v%v", "Dana Example", "", "/Example Partner, %y"}, {}};
    compare("credits, a line expanded", lines, expandByLibrary, "loop that expands", expandBare);
    return runAndPrint(argc, argv, rows());
}
