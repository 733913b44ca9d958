#include "client/output.h"

#include <stdio.h>

namespace tamrix::client {
namespace {

constexpr char kDigits[] = "0123456789ABCDEF";

}  // namespace

void print(std::string_view bytes) {
    fwrite(bytes.data(), 1, bytes.size(), stdout);
}

void complain(std::string_view about, std::string_view message) {
    std::string line = "tamrix: ";
    if (!about.empty()) line.append(about).append(": ");
    line.append(message).append("\n");
    fflush(stdout);
    fwrite(line.data(), 1, line.size(), stderr);
    fflush(stderr);
}

bool finishOutput() {
    return fflush(stdout) == 0 && !ferror(stdout);
}

std::string decimal(long number) {
    char digits[24];
    return {digits, static_cast<std::size_t>(sprintf(digits, "%ld", number))};
}

std::string hex(std::string_view bytes) {
    std::string digits;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        digits += kDigits[byte >> 4];
        digits += kDigits[byte & 15];
    }
    return digits;
}

}  // namespace tamrix::client
