#include "dialogs/helper_class.h"

#include <windows.h>

#include <utility>

#include "base/module.h"

namespace tamrix {

bool isHelperClassRegistered;

void unregisterHelperClass() {
    if (std::exchange(isHelperClassRegistered, false)) UnregisterClassA(kHelperClass, instance);
}

}  // namespace tamrix
