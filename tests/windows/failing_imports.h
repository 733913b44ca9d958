// The calls that the shipped DLL makes of the platform, each counted and each to be failed: an entry of the DLL's
// import table is replaced for every function that can fail, and for those by which it gives back what it took.
#pragma once

#include <windows.h>

#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "windows/import_hook.h"

namespace failing_imports {

/// What the DLL takes from the platform and has to give back.
enum class Thing { none, key, object, context, screen, block, lock, memory, window };

struct Import {
    const char* library;
    const char* name;
    LONG_PTR failure;  // what a call gives that fails
    Thing thing;
    int change;  // +1: a call takes one such thing, -1: gives one back
    const void* replacement;
    void (*setOriginal)(void*);  // what the replacement calls
};

/// All of them, of the libraries that the DLL imports.
const std::vector<Import>& all();

/// Functions that the DLL imports and that have no way to fail.
bool isInfallible(const std::string& name);

/// The import of which a call fails now, or "none".
std::string failure();

/// Replaces the entries of a module's import table for as long as it lives. One lives at a time. Stand-ins, by the
/// names of the functions in whose stead they answer, are counted and failed like the functions themselves.
class Watch {
public:
    Watch(HMODULE module, const std::map<std::string, void*>& standIns);

    /// From now on counts anew; the nth call of an import fails, where there is one. A call that gives something back
    /// does so and says that it failed.
    void start(const Import* failing = nullptr, int nth = 0);
    /// Whether the call that was to fail was made.
    bool hasFailed() const;
    /// How many more were taken of each thing than given back, without those that are even.
    std::map<Thing, int> kept() const;

private:
    std::deque<testing_support::ImportHook> hooks_;
};

}  // namespace failing_imports
