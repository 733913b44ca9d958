#include <errno.h>
#include <string.h>

#include "client/system/error_text.h"

namespace tamrix::client {

std::string errorText() {
    return strerror(errno);
}

}  // namespace tamrix::client
