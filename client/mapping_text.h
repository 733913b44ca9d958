// How mappings are taken from the command line and printed: codes are Macintosh text, the rest is Windows text.
#pragma once

#include <string>

#include "client/json.h"
#include "client/mapping_import.h"

namespace tamrix::client {

/// An extension as the registry names it, with its dot. False, after a complaint, for what is no extension.
bool takeExtension(const std::string& argument, std::string& extension);

/// A type or creator code. False, after a complaint that names the argument, unless it has 4 bytes.
bool takeCode(const std::string& argument, std::string& code);

/// Why applyChanges could not do all, for a complaint; empty when it did.
std::string reasonOf(const Refusal& refusal);

/// All mappings, to be shown or written. Where other programs kept changing them, it says so and `status` becomes
/// kSomeFailed.
std::vector<Mapping> mappingsToShow(int& status);

/// One line: extension, type, creator and comment, separated by tabs.
void printMapping(const Mapping& mapping);

/// The members of one mapping in an open object.
void writeMapping(Json& json, const Mapping& mapping);

}  // namespace tamrix::client
