#include <windows.h>

#include "client/system/encodings.h"

namespace tamrix::client {
namespace {

constexpr UINT kMacRoman = 10000;

}  // namespace

bool wideFromMac(const std::string& bytes, WideString& wide) {
    const int size = static_cast<int>(bytes.size());
    wide.resize(bytes.size());
    if (bytes.empty()) return true;
    const int written = MultiByteToWideChar(kMacRoman, 0, bytes.data(), size, wide.data(), size);
    wide.resize(static_cast<std::size_t>(written));
    return written > 0;
}

bool macFromWide(const WideString& wide, std::string& bytes) {
    const int size = static_cast<int>(wide.size());
    bytes.resize(wide.size());
    if (wide.empty()) return true;
    const int written = WideCharToMultiByte(kMacRoman, 0, wide.data(), size, bytes.data(), size, nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(written));
    return written > 0;
}

std::string argumentText(const std::string& argument) {
    std::string text;
    return textFromBytes(Side::windows, argument, text) ? text : argument;
}

}  // namespace tamrix::client
