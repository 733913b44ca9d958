// How the program starts on each system: the options that only one has, the library made ready, and where mappings are
// kept. startup_windows.cpp and startup_native.cpp implement it.
#pragma once

#include <span>
#include <string>

#include "client/options.h"

namespace tamrix::client {

/// Options that exist on this platform only, for every command.
std::span<const Option> platformOptions();

/// Makes the library ready. With `changesMappings`, other runs that change the
/// mappings wait until this one has ended. False with the reason on failure.
bool startLibrary(const Arguments& arguments, bool changesMappings, std::string& reason);

/// Makes changes to the mappings last. False with the reason on failure: nothing has changed then.
bool keepMappings(std::string& reason);

/// The library's counters of attached processes and threads; false when they cannot be read.
bool readCounters(long& processes, long& threads);

}  // namespace tamrix::client
