// What every registry call begins with: the lock, the fault plan, and a handle turned into a key.
#ifndef TAMRIX_PLATFORM_REGISTRY_ACCESS_H
#define TAMRIX_PLATFORM_REGISTRY_ACCESS_H

#include "faults.h"
#include "registry_tree.h"

namespace standin {

/// One registry call: holds the registry's lock, and has failed from the start when the plan says so.
class RegistryCall {
public:
    RegistryCall() : lock_(registry().guard), result_(faultDue(Kind::registry) ? ERROR_NOT_ENOUGH_MEMORY : 0) {}

    /// The key behind a handle; null, with `result` saying why, when the call has failed already, the handle is none,
    /// the key was deleted, or the handle was opened without the wanted rights.
    std::shared_ptr<Key> key(HKEY handle, REGSAM wanted);

    LONG result() const { return result_; }
    LONG fail(LONG code) { return result_ = code; }

private:
    std::scoped_lock<std::mutex> lock_;
    LONG result_;
};

}  // namespace standin

#endif
