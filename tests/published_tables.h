// What the suites know of code pages and of the character table by themselves, typed from the published definitions and
// independently of the library's own data.
#pragma once

#include <string>

#include "strings/lead_bytes.h"

namespace testing_support {

inline constexpr int kCodePages[] = {1252, 932, 936, 949, 950};

inline tamrix::LeadByteTable leadBytesOf(int codePage) {
    tamrix::LeadByteTable table{};
    const auto lead = [&table](int first, int last) {
        for (int byte = first; byte <= last; ++byte) table.isLead[byte] = 1;
        table.hasLeadBytes = 1;
    };
    if (codePage == 932) {
        lead(0x81, 0x9F);
        lead(0xE0, 0xFC);
    } else if (codePage > 932 && codePage <= 950) {
        lead(0x81, 0xFE);
    }
    return table;
}

inline std::string bytesOfHex(const std::string& hex) {
    std::string bytes;
    for (std::size_t i = 0; i < hex.size(); i += 2)
        bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    return bytes;
}

/// All 256 images, Macintosh to Windows.
inline std::string imagesInWindows() {
    std::string images;
    for (int byte = 0; byte < 0x7F; ++byte) images += static_cast<char>(byte);
    return images + bytesOfHex(
                        "FE"
                        "C4C5C7C9D1D6DCE1E0E2B2E3E5E7E9E8EAEBEDECEEE4F1F3F2F4F6F5FAF9FBFC"
                        "86B0A2A3A795B6DFAEA999B4A884C6D888B1898AA5B58B9A9B9FA4AABA87E6F8"
                        "BFA1ACB383B7B8ABBB85A0C0C3D58C9CD09793949192F7B9FF7F8081828D8E8F"
                        "90FDEF989D9EA6ADAFBCBDBEC1C2C8CACBCCCDCECFAFD2D3D4D7D9DADBDDDEF0");
}

/// All 256 images, Windows to Macintosh.
inline std::string imagesInMacintosh() {
    std::string images;
    for (int byte = 0; byte < 0x7F; ++byte) images += static_cast<char>(byte);
    return images + bytesOfHex(
                        "D9"
                        "DADBDCC4ADC9A0BDB0B2B3B6CEDDDEDFE0D4D5D2D3A5D0D1E3AAB7B8CFE4E5B9"
                        "CAC1A2A3BAB4E6A4ACA9BBC7C2E7A8E8A1B18AC3ABB5A6C5C6D7BCC8E9EAEBC0"
                        "CBECEDCC8081AE82EE83EFF0F1F2F3F4F584F6F7F8CD85F9AFFAFBFC86FDFEA7"
                        "8887898B958CBE8D8F8E9091939294E2FF969897999B9AD6BF9D9C9E9FE17FD8");
}

}  // namespace testing_support
