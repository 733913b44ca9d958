// Reads mappings from the command line and prints them. Codes are Macintosh text, the other fields Windows text.
#pragma once

#include <string>

#include "client/json.h"
#include "client/mapping_import.h"

namespace tamrix::client {

/// Converts an argument to an extension with its dot. If it is not valid, reports it and returns false.
bool takeExtension(const std::string& argument, std::string& extension);

/// Converts an argument to a type or creator code. If it does not have 4 bytes, reports it and returns false.
bool takeCode(const std::string& argument, std::string& code);

/// The error message for a failed applyChanges; empty on success.
std::string reasonOf(const Refusal& refusal);

/// All mappings. If other programs kept changing them, reports that and sets `status` to kSomeFailed.
std::vector<Mapping> mappingsToShow(int& status);

/// Prints one line: extension, type, creator and comment, separated by tabs.
void printMapping(const Mapping& mapping);

/// Adds the members of one mapping to the open JSON object.
void writeMapping(Json& json, const Mapping& mapping);

}  // namespace tamrix::client
