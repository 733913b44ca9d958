#include <unicode/unorm2.h>

#include "client/system/encodings.h"

namespace tamrix::client {

WideString composed(const WideString& text) {
    UErrorCode error = U_ZERO_ERROR;
    const UNormalizer2* normalizer = unorm2_getNFCInstance(&error);
    // No composed text is longer than three times its source.
    WideString result(text.size() * 3 + 1, 0);
    const int32_t size = unorm2_normalize(normalizer, text.data(), static_cast<int32_t>(text.size()), result.data(),
                                          static_cast<int32_t>(result.size()), &error);
    if (U_FAILURE(error)) return text;
    result.resize(static_cast<std::size_t>(size));
    return result;
}

std::vector<std::string> commandLine(int argc, char** argv) {
    return {argv, argv + argc};
}

bool wordsToBytes(std::vector<std::string>&, std::string&) {
    return true;
}

}  // namespace tamrix::client
