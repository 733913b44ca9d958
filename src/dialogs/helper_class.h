// The class of the window that opens the help for the browse dialog's Help button. It is registered for the first
// dialog with help, and unregistered when the library is unloaded, because its window procedure is in the library.
#pragma once

namespace tamrix {

inline constexpr char kHelperClass[] = "browseHelper";

extern bool isHelperClassRegistered;

void unregisterHelperClass();

}  // namespace tamrix
