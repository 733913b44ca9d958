#include "dialog_template_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::rewriteTwice<tamrix::CDialogTemplate>(data, size, false);
    fuzzing::rewriteTwice<tamrix::CDialogTemplate>(data, size, true);
    return 0;
}
