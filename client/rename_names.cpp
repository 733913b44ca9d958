#include "client/rename_names.h"

#include "client/library_names.h"
#include "client/system/encodings.h"
#include "client/text.h"
#include "client/unicode.h"
#include "client/windows_names.h"

namespace tamrix::client {
namespace {

using Translation = std::string (*)(const std::string&);

bool isComposedFormOf(const std::string& text, const std::string& name) {
    WideString wide;
    std::string form;
    return namesAreText && wideFromUtf8(name, wide) && utf8FromWide(composed(wide), form) && form == text;
}

/// Converts a name; `bytes` receives its bytes on the side `to`.
NewName translated(const std::string& name, Side from, Side to, Translation there, Translation back,
                   std::string& bytes) {
    NewName result;
    std::string old;
    if (!bytesFromText(from, name, old)) return {Verdict::notText, {}, whyNotBytes(from)};
    bytes = there(old);
    if (!textFromBytes(to, bytes, result.text))
        return {Verdict::notText, {}, "the new name cannot be converted to text"};
    result.convertsBack = back(bytes) == old;
    if (result.text == name)
        result.verdict = Verdict::unchanged;
    else
        result.onlyComposed = isComposedFormOf(result.text, name);
    return result;
}

/// Rejects a name that Windows does not accept.
void checkForWindows(const std::string& bytes, NewName& name) {
    const char* reason = whyWindowsRejects(bytes);
    if (name.verdict == Verdict::notText || !reason) return;
    const bool isLong = bytes.size() > kMaxWindowsNameSize;
    name.verdict = isLong ? Verdict::tooLong : Verdict::reserved;
    name.reason = (isLong ? "too long: " : "reserved: ") + std::string(reason);
}

void checkForThisDisk(NewName& name) {
    const char* reason = name.verdict == Verdict::rename ? whyNotOnThisDisk(name.text) : nullptr;
    if (!reason) return;
    name.verdict = Verdict::refused;
    name.reason = reason;
}

}  // namespace

NewName newWindowsName(const std::string& name) {
    std::string bytes;
    NewName result = translated(name, Side::mac, Side::windows, windowsNameOf, macNameOf, bytes);
    checkForWindows(bytes, result);
    checkForThisDisk(result);
    return result;
}

NewName newMacName(const std::string& name) {
    std::string bytes;
    NewName result = translated(name, Side::windows, Side::mac, macNameOf, windowsNameOf, bytes);
    // On a Windows disk the Macintosh name must follow Windows' rules too.
    if (kDiskIgnoresCase && result.verdict == Verdict::rename) checkForWindows(bytes, result);
    checkForThisDisk(result);
    return result;
}

}  // namespace tamrix::client
