// Running a test under a code page. Natively any of the stand-in's can be chosen; elsewhere the platform has one for
// the whole process, which LC_ALL decides under Wine, and tests for the others are not there.
#pragma once

#include <windows.h>

#include <initializer_list>
#include <vector>

namespace testing_support {

/// Those of `wanted` that useCodePage can choose in this process; for the values of a parameterised suite.
std::vector<UINT> codePagesAmong(std::initializer_list<UINT> wanted);

/// Makes `ansi` the active code page, with the OEM code page that goes with it by default, and builds the library's
/// lead-byte table for it; false, with nothing changed, where another one can't be chosen.
bool useCodePage(UINT ansi);

}  // namespace testing_support
