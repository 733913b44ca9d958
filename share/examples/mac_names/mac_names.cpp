// mac_names NAME...: prints each Macintosh name as Windows would store it.
#include <tamrix32/macnames.h>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const int size = AFPtoOSLen(argv[i]);
        char* windows = static_cast<char*>(std::malloc(static_cast<unsigned>(size)));
        if (!windows || AFPtoOSCopy(windows, argv[i], static_cast<unsigned>(size)) < 0) return 1;
        std::puts(windows);
        std::free(windows);
    }
    return 0;
}
