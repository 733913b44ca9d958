// Mac Roman text and arguments as text, where systems differ. encodings_windows.cpp and encodings_native.cpp implement
// it.
#pragma once

#include <string>

#include "client/text.h"

namespace tamrix::client {

/// Mac Roman by the platform's published table.
bool wideFromMac(const std::string& bytes, WideString& wide);
bool macFromWide(const WideString& wide, std::string& bytes);

/// An argument of the command line in the form of --text: Windows gives arguments in the ANSI code page whatever the
/// terminal shows.
std::string argumentText(const std::string& argument);

}  // namespace tamrix::client
