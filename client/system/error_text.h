// The system's error message for the last failed call. error_text_windows.cpp and error_text_native.cpp implement it.
#pragma once

#include <string>

namespace tamrix::client {

std::string errorText();

}  // namespace tamrix::client
