#include "base/library.h"

#include "tamrix32/frame.h"

HINSTANCE tamrix::instance;

HINSTANCE TAMRIX_CALL TamrixResourceInstance() {
    return tamrix::instance;
}
