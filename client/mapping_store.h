// The extension mappings of this machine as values, over the library's functions. No comment is empty.
#pragma once

#include <string>
#include <vector>

#include "client/mapping_file.h"

namespace tamrix::client {

/// Every complete mapping whose extension has 1 to 15 bytes, each once, in the order of their extensions' bytes. A pass
/// over the registry goes by position, so it can miss or repeat a mapping while another program adds or removes keys:
/// passes are made until two in a row agree. False when none did; some mappings may be missing then.
bool allMappings(std::vector<Mapping>& mappings);

/// The mapping of an extension, which is given with its dot; false when it has none.
bool findMapping(const std::string& extension, Mapping& mapping);

/// Writes the whole mapping: a comment that it does not have goes away. False when the registry refuses;
/// part of it may be written then.
bool putMapping(const Mapping& mapping);

void removeMapping(const std::string& extension);

Mapping defaultMapping();

}  // namespace tamrix::client
