#include "client/output.h"

#include <stdio.h>

#include "client/system/streams.h"
#include "client/text.h"

namespace tamrix::client {

void print(std::string_view text) {
    writeText(stdout, text);
}

void printBytes(std::string_view bytes) {
    fwrite(bytes.data(), 1, bytes.size(), stdout);
}

void complain(std::string_view about, std::string_view message) {
    std::string line = "tamrix: ";
    if (!about.empty()) line.append(visible(about)).append(": ");
    line.append(visible(message)).append("\n");
    fflush(stdout);
    writeText(stderr, line);
    fflush(stderr);
}

bool finishOutput() {
    return fflush(stdout) == 0 && !ferror(stdout);
}

}  // namespace tamrix::client
