// The text form of extension mappings, for people to edit and compare:
//
//   # A line that begins with a number sign is a comment; empty lines say nothing.
//   .txt<TAB>TEXT<TAB>ttxt<TAB>"Plain text"
//   .hqx<TAB>TEXT<TAB>"BnH "
//
// One mapping a line: extension, type code, creator code and, where there is one, a comment, separated by tabs. A field
// may stand in double quotes, and then says with a backslash what a line cannot hold: \\, \", \t, \n, \r, \xHH. Outside
// quotes every byte is itself; after a UTF-8 byte order mark, which editors put in front, only ASCII is. The writer
// quotes whatever holds a space, a quote, or a byte that is not printable ASCII.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::client {

/// A mapping as the store can hold it: no string has a zero byte.
struct Mapping {
    std::string extension;  // with its dot, at most 16 bytes, no backslash
    std::string type;       // 4 bytes
    std::string creator;    // 4 bytes
    std::optional<std::string> comment;

    bool operator==(const Mapping&) const = default;
};

/// What is wrong with a mapping file, as a phrase without a final period, and in which line, counted from 1.
struct MappingFileError {
    std::size_t line;
    std::string message;
};

/// A mapping file's content: all of its mappings in their order, or its first error and no mapping.
struct MappingFile {
    std::vector<Mapping> mappings;
    std::optional<MappingFileError> error;
};

/// Reads a mapping file. Extensions get their dot where it is missing. Lines may end in LF or CR LF. What could not be
/// stored and found again is an error: codes that are not 4 bytes, extensions that are empty, over 15 bytes without the
/// dot, hold a backslash (one that is no trail byte), or stand there twice in any letter case.
MappingFile parseMappings(std::string_view text);

/// Writes one line a mapping; parseMappings gives back what was written.
std::string writeMappings(std::span<const Mapping> mappings);

}  // namespace tamrix::client
