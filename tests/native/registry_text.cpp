#include "registry_text.h"

#include <standin.h>

void testing_support::emptyRegistry() {
    standin::clearRegistry();
}
