// Inside the program text is UTF-8. A console uses UTF-16 on Windows NT and its own code page on Windows 95; pipes and
// files use the ANSI code page, or UTF-8 with --text utf-8.
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <algorithm>

#include "client/system/paths_windows.h"
#include "client/system/streams.h"
#include "client/text.h"
#include "client/unicode.h"

namespace tamrix::client {
namespace {

HANDLE handleOf(FILE* stream) {
    return GetStdHandle(stream == stdin ? STD_INPUT_HANDLE : stream == stdout ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
}

bool isConsole(FILE* stream) {
    DWORD mode;
    return GetConsoleMode(handleOf(stream), &mode) != 0;
}

/// Calls `act` with each character's value and its UTF-16 units.
template <typename Act>
void forEachCharacter(const WideString& wide, Act act) {
    for (std::size_t at = 0, size; at < wide.size(); at += size) {
        const bool isPair = wide[at] >= 0xD800 && wide[at] < 0xDC00 && at + 1 < wide.size();
        size = isPair ? 2 : 1;
        const unsigned low = isPair ? wide[at + 1] & 0x3FFu : 0;
        act(isPair ? 0x10000 + ((wide[at] & 0x3FFu) << 10) + low : wide[at], wide.substr(at, size));
    }
}

std::string inCodePage(unsigned codePage, const WideString& wide) {
    std::string bytes;
    if (bytesFromWide(codePage, wide, bytes)) return bytes;
    bytes.clear();
    forEachCharacter(wide, [&](unsigned value, const WideString& character) {
        std::string one;
        if (!bytesFromWide(codePage, character, one)) {
            char number[16];
            one.assign(number, static_cast<std::size_t>(sprintf(number, "\\u{%X}", value)));
        }
        bytes += one;
    });
    return bytes;
}

void writeToConsole(HANDLE console, const WideString& wide) {
    constexpr std::size_t kMaxUnits = 8192;  // older consoles reject more at once
    DWORD written;
    if (!systemIsWide()) {
        const std::string bytes = inCodePage(GetConsoleOutputCP(), wide);
        WriteFile(console, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
        return;
    }
    for (std::size_t at = 0; at < wide.size(); at += kMaxUnits)
        WriteConsoleW(console, wide.data() + at, static_cast<DWORD>(std::min(kMaxUnits, wide.size() - at)), &written,
                      nullptr);
}

/// Reads a line from the console; false at the end of input, which is Ctrl-Z at the start of a line.
bool readFromConsole(std::string& line) {
    constexpr WCHAR kEnd = 0x1A;
    WCHAR units[512];
    WideString wide;
    DWORD size = 0;
    if (systemIsWide()) {
        do {
            if (!ReadConsoleW(handleOf(stdin), units, 512, &size, nullptr)) return false;
            wide.append(units, size);
        } while (size == 512 && wide.back() != '\n');
    } else {
        char bytes[512];
        if (!ReadFile(handleOf(stdin), bytes, sizeof bytes, &size, nullptr)) return false;
        wideFromBytes(GetConsoleCP(), {bytes, size}, wide);
    }
    if (wide.empty() || wide[0] == kEnd || !utf8FromWide(wide, line)) return false;
    if (line.ends_with("\r\n")) line.replace(line.size() - 2, 2, "\n");
    return true;
}

}  // namespace

void makeStreamsBinary() {
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

void writeText(FILE* stream, std::string_view text) {
    WideString wide;
    std::string bytes;
    const bool isText = namesAreText && wideFromUtf8(text, wide);
    if (isText && isConsole(stream)) return writeToConsole(handleOf(stream), wide);
    if (isText && !pipesAreUtf8) text = bytes = inCodePage(CP_ACP, wide);
    fwrite(text.data(), 1, text.size(), stream);
}

bool outputCanEncode(std::string_view text) {
    WideString wide;
    std::string bytes;
    return !namesAreText || pipesAreUtf8 || isConsole(stdout) ||
           (wideFromUtf8(text, wide) && bytesFromWide(CP_ACP, wide, bytes));
}

int readByte() {
    static const bool asText = namesAreText && isConsole(stdin);
    static std::string line;
    static std::size_t at;
    if (!asText) return getc(stdin);
    if (at == line.size()) {
        at = 0;
        line.clear();
        if (!readFromConsole(line)) return EOF;
    }
    return static_cast<unsigned char>(line[at++]);
}

bool textOfInput(std::string& bytes, bool isUtf8) {
    WideString wide;
    if (!namesAreText || pipesAreUtf8 || isUtf8 || isConsole(stdin)) return true;
    std::string text;
    if (!wideFromBytes(CP_ACP, bytes, wide) || !utf8FromWide(wide, text)) return false;
    bytes = text;
    return true;
}

bool errorIsTerminal() {
    return isConsole(stderr);
}

}  // namespace tamrix::client
