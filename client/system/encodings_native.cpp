#include <iconv.h>

#include "client/system/encodings.h"

namespace tamrix::client {
namespace {

bool convert(const char* to, const char* from, const char* bytes, std::size_t size, char* result, std::size_t& room) {
    const iconv_t converter = iconv_open(to, from);
    if (converter == reinterpret_cast<iconv_t>(-1)) return false;
    char* input = const_cast<char*>(bytes);
    const std::size_t failed = iconv(converter, &input, &size, &result, &room);
    iconv_close(converter);
    return failed == 0 && size == 0;
}

}  // namespace

bool wideFromMac(const std::string& bytes, WideString& wide) {
    wide.resize(bytes.size() * 2);
    std::size_t room = wide.size() * sizeof(WCHAR);
    const bool done =
        convert("UTF-16LE", "MACINTOSH", bytes.data(), bytes.size(), reinterpret_cast<char*>(wide.data()), room);
    wide.resize(wide.size() - room / sizeof(WCHAR));
    return done;
}

bool macFromWide(const WideString& wide, std::string& bytes) {
    bytes.resize(wide.size());
    std::size_t room = bytes.size();
    const bool done = convert("MACINTOSH", "UTF-16LE", reinterpret_cast<const char*>(wide.data()),
                              wide.size() * sizeof(WCHAR), bytes.data(), room);
    bytes.resize(bytes.size() - room);
    return done;
}

std::string argumentText(const std::string& argument) {
    return argument;
}

}  // namespace tamrix::client
