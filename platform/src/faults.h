// The fault plan, for the stand-in's own calls.
#pragma once

#include <standin.h>

namespace standin {

/// Counts one call. True if the plan makes it fail.
bool faultDue(Kind kind);

}  // namespace standin
