#include "registry_text.h"

#include <standin.h>

std::string testing_support::storable(std::string bytes) {
    return bytes;
}

void testing_support::emptyRegistry() {
    standin::clearRegistry();
}
