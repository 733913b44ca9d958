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
// Text is in the active ANSI code page; backslash and quotation mark are escaped by a backslash, which is no escape
// when it is a trail byte. REG_SZ goes out as quoted text when that reads back to the same bytes and as hex(1)
// otherwise, REG_DWORD of four bytes as dword, REG_BINARY as hex, anything else as hex(type); bytes go on in the next
// line after a comma and a backslash. Lines end in CR LF; the reader takes LF too. Comments (;) are skipped. Deletions
// are refused: a file here is a whole store, not a change.
#ifndef TAMRIX_PLATFORM_REGEDIT4_H
#define TAMRIX_PLATFORM_REGEDIT4_H

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

/// Reads a whole file's text. `result` says whether it was well formed, and if not where and why.
std::vector<FileKey> readRegedit4(std::string_view text, FileResult& result);

/// The whole registry's text; none, with `message` saying why, when a name can't be written so that it reads back.
std::optional<std::string> writeRegedit4(std::string& message);

/// Takes quoted text, from behind the opening quotation mark to behind the closing one, off `text`; none when it
/// doesn't end or escapes something else than a backslash or a quotation mark.
std::optional<std::string> takeQuoted(std::string_view& text);

/// How many bytes the first character takes. A byte under 0x40 is a trail byte in no code page, so that a lone lead
/// byte before a closing quotation mark doesn't swallow it.
std::size_t fileCharacterSize(std::string_view text);

}  // namespace standin

#endif
