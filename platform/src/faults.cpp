// The fault plan, the call counters, and the nothrow operator new that fails by the plan.
//
// The operators are in this file because every program that uses the stand-in links it. So they replace those of the
// sanitizer even if its library is earlier on the linker's command line.
#include "faults.h"

#include <array>
#include <atomic>
#include <new>

namespace standin {
namespace {

struct Plan {
    std::atomic<std::size_t> calls{0};
    std::atomic<std::size_t> failAt{0};  // the number of the call that fails; 0: none
};

constexpr std::size_t kKinds = 5;
constinit std::array<Plan, kKinds> plans{};
constinit std::atomic<bool> hit{false};

Plan& planOf(Kind kind) {
    return plans[static_cast<std::size_t>(kind)];
}

}  // namespace

bool faultDue(Kind kind) {
    Plan& plan = planOf(kind);
    if (plan.calls.fetch_add(1) + 1 != plan.failAt.load()) return false;
    hit = true;
    return true;
}

void failNth(Kind kind, std::size_t n) {
    Plan& plan = planOf(kind);
    plan.failAt = plan.calls + n;
}

void clearFaults() {
    for (Plan& plan : plans) {
        plan.calls = 0;
        plan.failAt = 0;
    }
    hit = false;
}

bool faultHit() {
    return hit;
}

std::size_t calls(Kind kind) {
    return planOf(kind).calls;
}

}  // namespace standin

// These call the throwing operators, so that blocks are freed by the matching delete and a sanitizer recognises the
// pairs. If memory really runs out, the program ends; in tests, only the plan should make an allocation fail.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return standin::faultDue(standin::Kind::allocation) ? nullptr : ::operator new(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return standin::faultDue(standin::Kind::allocation) ? nullptr : ::operator new[](size);
}
