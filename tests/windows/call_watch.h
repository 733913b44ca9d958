// Counts a function that this program imports, and makes its nth call fail, for as long as the watch lives.
#pragma once

#include <windows.h>

#include "windows/import_hook.h"

namespace testing_support {

/// One watch for each tag lives at a time. `Function` is the type of a pointer to the imported function. A call that is
/// to fail does nothing and gives a zero.
template <class Tag, class Function>
class CallWatch;

template <class Tag, class Result, class... Arguments>
class CallWatch<Tag, Result(WINAPI*)(Arguments...)> {
public:
    CallWatch(const char* library, const char* function)
        : hook_(nullptr, library, function, reinterpret_cast<const void*>(watched)) {
        original_ = hook_.template original<Original>();
        calls_ = succeeded_ = failAt_ = 0;
        always_ = false;
    }

    bool installed() const { return hook_.installed(); }
    int calls() const { return calls_; }
    int succeeded() const { return succeeded_; }

    /// The nth call from now on, and only that one.
    void failNth(int n) { failAt_ = calls_ + n; }
    void failAlways() { always_ = true; }
    bool failed() const { return always_ || (failAt_ && calls_ >= failAt_); }

private:
    using Original = Result(WINAPI*)(Arguments...);

    static Result WINAPI watched(Arguments... arguments) {
        ++calls_;
        if (always_ || calls_ == failAt_) return Result();
        const Result result = original_(arguments...);
        if (result) ++succeeded_;
        return result;
    }

    ImportHook hook_;
    static inline Original original_;
    static inline int calls_, succeeded_, failAt_;
    static inline bool always_;
};

}  // namespace testing_support

/// A watch on `function`, named for it: TAMRIX_WATCH("gdi32.dll", DeleteDC) declares watchDeleteDC.
#define TAMRIX_WATCH(library, function)                                              \
    struct function##Tag;                                                            \
    testing_support::CallWatch<function##Tag, decltype(&function)> watch##function { \
        library, #function                                                           \
    }
