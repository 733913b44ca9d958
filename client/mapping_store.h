// Reads and writes this machine's extension mappings with the library's functions. Comments are never empty strings.
#pragma once

#include <string>
#include <vector>

#include "client/mapping.h"

namespace tamrix::client {

/// Enumerates every complete mapping whose extension has 1 to 15 bytes, sorted by the extension's bytes. The registry
/// is enumerated by index, so a mapping can be missed or repeated while another program adds or removes keys.
std::vector<Mapping> mappingsOfOnePass();

/// Lists the mappings once each. Repeats the enumeration until two in a row agree. Returns false if none do; some
/// mappings may then be missing.
bool allMappings(std::vector<Mapping>& mappings, std::vector<Mapping> (*onePass)() = mappingsOfOnePass);

/// Finds the mapping of an extension, which must include its dot; false if it has none.
bool findMapping(const std::string& extension, Mapping& mapping);

/// Writes the whole mapping; without a comment, a stored comment is removed. On failure returns false, and part of the
/// mapping may be written.
bool putMapping(const Mapping& mapping);

void removeMapping(const std::string& extension);

Mapping defaultMapping();

}  // namespace tamrix::client
