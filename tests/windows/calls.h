// The calls that the shipped DLL makes of the platform. All functions that it imports are hooked: their calls are
// counted, what they take is compared with what they give back, one call can be made to fail, functions can be
// replaced, and a test can run code before each call.
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
    std::string failing;  // the import of which one call fails. It does nothing but give back
    int nth = 1;
    std::function<void(const Call&)> before;  // not called for calls that it causes itself
};

/// Hooks the imports until the program ends.
void hook();
/// From now on `answering`, of the same type, is called instead of an import.
void replace(const std::string& name, const void* answering);
/// Watches the module's calls in this thread while `run` runs; must not be nested. Expects that everything taken is
/// given back exactly once, by the function for it. Returns how often each import was called, also those that were not.
std::map<std::string, int> watch(Plan plan, const std::function<void()>& run);

}  // namespace calls
