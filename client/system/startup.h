// The parts of starting and saving that differ between systems: options, how the library is started, and where mappings
// are stored. startup_windows.cpp and startup_native.cpp implement it.
#pragma once

#include <span>
#include <string>

#include "client/options.h"

namespace tamrix::client {

/// Options of every command that exist only on this system.
std::span<const Option> platformOptions();

/// Starts the library. With `changesMappings`, waits for other runs that change the mappings, and makes later ones wait
/// until this process ends. False with the reason on failure.
bool startLibrary(const Arguments& arguments, bool changesMappings, std::string& reason);

/// Saves the changed mappings. False with the reason on failure; nothing has then changed.
bool saveMappings(std::string& reason);

/// Reads the library's counters of attached processes and threads; false on failure.
bool readCounters(long& processes, long& threads);

}  // namespace tamrix::client
