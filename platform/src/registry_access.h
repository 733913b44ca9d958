// The beginning of every registry call: lock, fault plan, and conversion of a handle to a key.
#pragma once

#include "faults.h"
#include "registry_tree.h"

namespace standin {

/// One registry call. Locks the registry until it is destroyed. If the fault plan makes the call fail, `result` is an
/// error from the start.
class RegistryCall {
public:
    RegistryCall() : lock_(registry().guard), result_(faultDue(Kind::registry) ? ERROR_NOT_ENOUGH_MEMORY : 0) {}

    /// The key of a handle. Null, with the reason in `result`, if the call has already failed, the handle is invalid,
    /// the key was deleted, or the handle was opened without the required rights.
    std::shared_ptr<Key> key(HKEY handle, REGSAM wanted);

    LONG result() const { return result_; }
    LONG fail(LONG code) { return result_ = code; }

private:
    std::scoped_lock<std::mutex> lock_;
    LONG result_;
};

}  // namespace standin
