// The calls that a loaded module makes of the platform. All functions that it imports by name are hooked: their calls
// are counted, what they take is held against what they give back, one of them can be made to fail, another function
// can answer in their stead, and a test can look on, or act, before each.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <set>
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

/// Hooks a module's imports until the program ends.
void hook(HMODULE module);
/// From now on `answering`, of the same type, is called in an import's stead.
void replace(const std::string& name, const void* answering);
/// What the module itself calls under this name, hook included.
void* imported(const std::string& name);
/// Functions of the import table that have no way to fail, or, such as memory's, none that the module would see.
bool canFail(const std::string& name);

/// Watches what the thread that made it calls through the module. One lives at a time.
class Watch {
public:
    explicit Watch(Plan plan = {});
    ~Watch();
    /// How often each import was called.
    const std::map<std::string, int>& counts() const;
    bool hasFailed() const;
    /// What was taken and not given back, or given back without having been taken, one word for each; empty when even.
    std::string uneven() const;
};

}  // namespace calls
