// Converts a name on the disk to its Windows or Macintosh form.
#pragma once

#include "client/rename_plan.h"

namespace tamrix::client {

NewName newWindowsName(const std::string& name);
NewName newMacName(const std::string& name);

}  // namespace tamrix::client
