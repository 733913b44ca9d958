// The code page of a test. Natively a test can choose any code page of the stand-in. On Windows a process has only one
// (under Wine LC_ALL selects it), and tests for the others are left out.
#pragma once

#include <windows.h>

#include <initializer_list>
#include <vector>

namespace testing_support {

/// Those of `wanted` that useCodePage can choose in this process; for the values of a parameterised suite.
std::vector<UINT> codePagesAmong(std::initializer_list<UINT> wanted);

/// Makes `ansi` the active code page, with the OEM code page that goes with it by default, and builds the library's
/// lead-byte table for it. False, with nothing changed, if that is not possible.
bool useCodePage(UINT ansi);

}  // namespace testing_support
