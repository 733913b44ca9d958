// The Windows or Macintosh form of a name on the disk.
#pragma once

#include "client/rename_plan.h"

namespace tamrix::client {

NewName newWindowsName(const std::string& name);
NewName newMacName(const std::string& name);

}  // namespace tamrix::client
