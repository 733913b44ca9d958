#include "client/windows_names.h"

#include <algorithm>
#include <string_view>

#include "tamrix32/strings.h"

namespace tamrix::client {
namespace {

bool hasForbiddenCharacter(const std::string& name) {
    for (std::size_t at = 0; at < name.size(); ++at) {
        const auto byte = static_cast<unsigned char>(name[at]);
        if (isdbchar(name[at]))
            ++at;
        else if (byte < ' ' || std::string_view("\"*/:<>?\\|").find(name[at]) != std::string_view::npos)
            return true;
    }
    return false;
}

/// Windows treats a device name as the device in any folder, in any letter case and with any extension.
bool isDevice(const std::string& name) {
    std::string base = name.substr(0, name.find('.'));
    base.resize(base.find_last_not_of(' ') + 1);
    std::transform(base.begin(), base.end(), base.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    for (const char* device : {"CON", "PRN", "AUX", "NUL", "CLOCK$", "CONIN$", "CONOUT$"})
        if (base == device) return true;
    return base.size() == 4 && (base.starts_with("COM") || base.starts_with("LPT")) && base[3] >= '1' && base[3] <= '9';
}

}  // namespace

const char* whyWindowsRejects(const std::string& name) {
    if (name.empty()) return "empty name";
    if (hasForbiddenCharacter(name)) return "contains a reserved character";
    if (isDevice(name)) return "device name";
    if (name.back() == ' ') return "Windows drops a final space";
    if (name.back() == '.') return "Windows drops a final period";
    return name.size() > kMaxWindowsNameSize ? "more than 255 bytes" : nullptr;
}

}  // namespace tamrix::client
