// libFuzzer's way into one property, TAMRIX_PROPERTY. What it throws ends the run with the finding's text.
#include TAMRIX_PROPERTY

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
    properties::Input input(std::string(data, size));
    properties::property(input);
    return 0;
}
