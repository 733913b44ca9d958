#include <unistd.h>

#include "client/system/streams.h"

namespace tamrix::client {

void makeStreamsBinary() {}

void writeText(FILE* stream, std::string_view text) {
    fwrite(text.data(), 1, text.size(), stream);
}

bool outputCanEncode(std::string_view) {
    return true;
}

int readByte() {
    return getc(stdin);
}

bool textOfInput(std::string&, bool) {
    return true;
}

bool errorIsTerminal() {
    return isatty(STDERR_FILENO) == 1;
}

}  // namespace tamrix::client
