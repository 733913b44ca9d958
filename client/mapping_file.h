// The text format of extension mappings, for editing and comparing:
//
//   # A line that begins with a number sign is a comment; empty lines are ignored.
//   .txt<TAB>TEXT<TAB>ttxt<TAB>"Plain text"
//   .hqx<TAB>TEXT<TAB>"BnH "
//
// One mapping per line: extension, type code, creator code and an optional comment, separated by tabs. A field may be
// enclosed in double quotes and then use the escapes \\, \", \t, \n, \r and \xHH; outside quotes, backslashes have no
// special meaning. If the file begins with a UTF-8 byte order mark, as editors write it, all bytes must be ASCII. The
// writer quotes a field that is empty, begins with # or contains a space, a quote or a byte that is not printable
// ASCII.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "client/mapping.h"

namespace tamrix::client {

/// An error in a mapping file: the line, counted from 1, and a message without a final period.
struct MappingFileError {
    std::size_t line;
    std::string message;
};

/// A mapping file's content: all mappings in file order, or the first error and no mappings.
struct MappingFile {
    std::vector<Mapping> mappings;
    std::optional<MappingFileError> error;
};

/// Parses a mapping file. Missing dots of extensions are added. Lines may end in LF or CR LF. A mapping that could not
/// be stored and found again is an error: a code that does not have 4 bytes; an extension that is empty, longer than 15
/// bytes without the dot, contains a backslash (that is not a trail byte), or occurs twice, ignoring case.
MappingFile parseMappings(std::string_view text);

/// Writes one line per mapping; parseMappings reads the same mappings back.
std::string writeMappings(std::span<const Mapping> mappings);

}  // namespace tamrix::client
