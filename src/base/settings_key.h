// The registry key of the settings, for the library and the command.
#pragma once

namespace tamrix {

/// The path below HKEY_LOCAL_MACHINE.
inline constexpr char kSettingsPath[] = "Software\\Quillon Systems, Inc.\\File Client";

}  // namespace tamrix
