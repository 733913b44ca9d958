#include "registry_text.h"

#include <cstdio>
#include <cstdlib>

namespace {

/// Redirects the predefined keys to keys below the current user, in this process and in those that it starts.
struct OwnRoots {
    static constexpr char kVariable[] = "TAMRIX_TEST_ROOTS";
    const char* const starters = std::getenv(kVariable);
    const std::string home =
        starters ? starters : "Software\\Tamrix Test roots " + std::to_string(GetCurrentProcessId());
    const HKEY predefined[3] = {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE};
    HKEY keys[3] = {};

    OwnRoots() {
        bool own = true;
        for (std::size_t i = 0; i < 3; ++i)  // all before the first override, since one of them moves the current user
            own = own && RegCreateKeyA(HKEY_CURRENT_USER, (home + '\\' + std::to_string(i)).c_str(), &keys[i]) ==
                             ERROR_SUCCESS;
        for (std::size_t i = 0; i < 3; ++i) own = own && RegOverridePredefKey(predefined[i], keys[i]) == ERROR_SUCCESS;
        SetEnvironmentVariableA(kVariable, home.c_str());
        if (own) return;
        std::fputs("no registry of the test's own\n", stderr);
        std::exit(1);  // rather than clear the real one
    }
    ~OwnRoots() {
        if (starters) return;
        for (const HKEY key : predefined) RegOverridePredefKey(key, nullptr);
        for (const HKEY key : keys) RegCloseKey(key);
        RegDeleteTreeA(HKEY_CURRENT_USER, home.c_str());
    }
};

}  // namespace

void testing_support::emptyRegistry() {
    static const OwnRoots roots;
    for (const HKEY key : roots.keys)
        if (!roots.starters) RegDeleteTreeA(key, nullptr);
}
