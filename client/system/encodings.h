// Text conversions that the system provides: Unicode composition and the command line's encoding.
// encodings_windows.cpp and encodings_native.cpp implement it.
#pragma once

#include <string>
#include <vector>

#include "client/unicode.h"

namespace tamrix::client {

/// The text in Unicode normalization form C: letters and their combining marks become single characters. Unchanged if
/// the system cannot do that.
WideString composed(const WideString& text);

/// The words of the command line as text.
std::vector<std::string> commandLine(int argc, char** argv);

/// Converts the words of the command line to bytes for --bytes; false with the first word that cannot be converted.
bool wordsToBytes(std::vector<std::string>& words, std::string& refused);

}  // namespace tamrix::client
