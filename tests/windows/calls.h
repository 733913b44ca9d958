// The calls that the shipped DLL makes of the platform. All functions that it imports by name are hooked: their calls
// are counted, what they take is held against what they give back, one of them can be made to fail, another function
// can answer in their stead, and a test can look on, or act, before each.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <string>

namespace calls {

/// A call that is about to be made.
struct Call {
    std::string name;
    const ULONG_PTR* arguments;
};

struct Plan {
    std::string failing;  // the import of which one call fails: it does nothing, or gives back and says that it failed
    int nth = 1;
    std::function<void(const Call&)> before;  // its own calls into the module are not shown to it
};

/// Hooks the imports until the program ends.
void hook();
/// From now on `answering`, of the same type, is called in an import's stead.
void replace(const std::string& name, const void* answering);
/// Watches what this thread calls through the module while `run` runs, which is not nested. Expects that all that was
/// taken is given back, each by its own function and once; says how often each import was called.
std::map<std::string, int> watch(Plan plan, const std::function<void()>& run);

}  // namespace calls
