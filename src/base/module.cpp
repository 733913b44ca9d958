#include "base/module.h"

#include "tamrix32/module.h"

HINSTANCE tamrix::instance;

HINSTANCE TAMRIX_CALL TamrixResourceInstance() {
    return tamrix::instance;
}
