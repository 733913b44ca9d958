// The REGEDIT4 text format, read and written in memory:
//
//     REGEDIT4
//
//     [HKEY_CLASSES_ROOT\.txt]
//     @="txtfile"
//     "Mac Type"="TEXT"
//     "Flags"=dword:0000002a
//     "Blob"=hex:01,02,03
//     "Path"=hex(2):25,00
//
// Text is in the active ANSI code page. Backslashes and quotation marks are escaped with a backslash; a trail byte with
// the value of a backslash is not an escape. The writer writes REG_SZ as quoted text if reading it would return the
// same bytes, otherwise as hex(1); REG_DWORD of four bytes as dword; REG_BINARY as hex; and all others as hex(type).
// Bytes continue on the next line after a comma and a backslash. Lines end in CR LF; the reader also accepts LF.
// Comments (;) are skipped. Deletions are errors, because a file here is a complete registry, not a set of changes.
#pragma once

#include <standin.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "registry_tree.h"

namespace standin {

struct FileValue {
    std::string name;
    DWORD type = REG_NONE;
    std::vector<BYTE> data;
};

struct FileKey {
    std::shared_ptr<Key> root;
    std::string path;
    std::vector<FileValue> values;
};

/// Parses a text. `error` receives its first error, or nothing; with an error no key is returned.
std::vector<FileKey> readRegedit4(std::string_view text, std::optional<TextError>& error);

/// Parses quoted text. `text` begins after the opening quotation mark, and after the call it begins after the closing
/// one. None if the closing mark is missing or another character than a backslash or quotation mark is escaped.
std::optional<std::string> takeQuoted(std::string_view& text);

/// Size of the first character in bytes. A byte below 0x40 is never a trail byte, so a lone lead byte before a closing
/// quotation mark does not include the mark.
std::size_t fileCharacterSize(std::string_view text);

}  // namespace standin
