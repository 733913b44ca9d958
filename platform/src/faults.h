// The fault plan as the stand-in's own calls ask it.
#ifndef TAMRIX_PLATFORM_FAULTS_H
#define TAMRIX_PLATFORM_FAULTS_H

#include <standin.h>

namespace standin {

/// Counts one call and says whether the plan wants it to fail.
bool faultDue(Kind kind);

/// Counts `steps` calls at once; gives how many of them succeed before the planned failure, `steps` when all do.
std::size_t stepsBeforeFault(Kind kind, std::size_t steps);

}  // namespace standin

#endif
