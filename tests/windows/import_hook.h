// Observes calls that leave a module, by replacing an entry of its import table for as long as the object lives. Works
// on this program (null) and on any loaded library; nothing in the library knows of it.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace testing_support {

/// The functions that a loaded module imports by name.
std::vector<std::string> importedBy(HMODULE module);

/// What a loaded module calls for a function that it imports from `library` (any case); null when it does not.
void* imported(HMODULE module, const char* library, const char* function);

class ImportHook {
public:
    /// Replaces `function` as imported from `library` (any case) by `module`; ask installed() whether it was imported.
    ImportHook(HMODULE module, const char* library, const char* function, const void* replacement);
    ~ImportHook();
    ImportHook(const ImportHook&) = delete;
    ImportHook& operator=(const ImportHook&) = delete;

    bool installed() const { return slot_ != nullptr; }

    /// What the module imported, to be called through.
    template <typename Function>
    Function original() const {
        return reinterpret_cast<Function>(original_);
    }

private:
    void write(ULONG_PTR value);

    ULONG_PTR* slot_ = nullptr;
    ULONG_PTR original_ = 0;
};

}  // namespace testing_support
