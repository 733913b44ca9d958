// Text that the system converts: composed characters and the words of the command line. encodings_windows.cpp and
// encodings_native.cpp implement it.
#pragma once

#include <string>
#include <vector>

#include "client/text.h"

namespace tamrix::client {

/// The text with each letter and the marks after it as one character where there is one (normalization form C); as it
/// is where the system has no way to do that.
WideString composed(const WideString& text);

/// The words of the command line as text.
std::vector<std::string> commandLine(int argc, char** argv);

/// Makes bytes, as --bytes wants them, of words of the command line; false with a word that has none.
bool wordsToBytes(std::vector<std::string>& words, std::string& refused);

}  // namespace tamrix::client
