// The window class through which the browse dialog's Help button opens the help: registered when a dialog first wants
// help, unregistered when the library is unloaded, since its procedure goes with the library.
#pragma once

namespace tamrix {

inline constexpr char kHelperClass[] = "browseHelper";

extern bool isHelperClassRegistered;

void unregisterHelperClass();

}  // namespace tamrix
