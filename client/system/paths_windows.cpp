#include "client/system/paths_windows.h"

#include "client/text.h"

namespace tamrix::client {
namespace {

constexpr WCHAR kNoName[] = L"?";

/// Names on a disk may contain halves of surrogate pairs. Each becomes a byte that is invalid in UTF-8, which messages
/// escape.
std::string withoutHalves(const WideString& wide) {
    std::string text, part;
    for (const WCHAR unit : wide) text += utf8FromWide({unit}, part) ? part : "\xFF";
    return text;
}

}  // namespace

bool systemIsWide() {
    return GetVersion() < 0x80000000;
}

WideString widePath(const std::string& path) {
    WideString wide;
    const bool isKnown = namesAreText ? wideFromUtf8(path, wide) : wideFromBytes(CP_ACP, path, wide);
    return isKnown ? wide : kNoName;
}

bool pathFromWide(const WideString& wide, std::string& path) {
    // If characters cannot be represented, the result contains the system's replacements.
    if (!namesAreText) return bytesFromWide(CP_ACP, wide, path);
    if (utf8FromWide(wide, path)) return true;
    path = withoutHalves(wide);
    return false;
}

std::string ansiPath(const std::string& path) {
    std::string bytes;
    if (!namesAreText) return path;
    return bytesFromWide(CP_ACP, widePath(path), bytes) ? bytes : "?";
}

bool pathFromAnsi(const std::string& bytes, std::string& path) {
    WideString wide;
    path = bytes;
    // Windows 95 shows a question mark for a character that the code page lacks.
    const bool isKnown = bytes.find('?') == std::string::npos;
    if (!namesAreText) return isKnown;
    return wideFromBytes(CP_ACP, bytes, wide) && utf8FromWide(wide, path) && isKnown;
}

}  // namespace tamrix::client
