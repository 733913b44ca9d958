// libFuzzer's entry point for the property TAMRIX_PROPERTY. An exception ends the run and prints the failure.
#include TAMRIX_PROPERTY

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
    properties::hold(std::string(data, size));
    return 0;
}
