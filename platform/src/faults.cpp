// The fault plan, the call counters, and the nothrow operator new that obeys the plan.
//
// The operators stand in this file, which every program that uses the stand-in links, so that they take the place of
// the sanitizer's even when that comes earlier on the linker's line.
#include "faults.h"

#include <array>
#include <atomic>
#include <new>

namespace standin {
namespace {

struct Plan {
    std::atomic<std::size_t> calls{0};
    std::atomic<std::size_t> failAt{0};  // the count at which a call fails; 0: none
};

constexpr std::size_t kKinds = 6;
constinit std::array<Plan, kKinds> plans{};
constinit std::atomic<bool> hit{false};
constinit std::atomic<std::size_t> injected{0};

Plan& planOf(Kind kind) {
    return plans[static_cast<std::size_t>(kind)];
}

}  // namespace

std::size_t stepsBeforeFault(Kind kind, std::size_t steps) {
    Plan& plan = planOf(kind);
    const std::size_t before = plan.calls.fetch_add(steps);
    const std::size_t failAt = plan.failAt.load();
    if (failAt <= before || failAt > before + steps) return steps;
    hit = true;
    ++injected;
    plan.calls = failAt;
    return failAt - before - 1;
}

bool faultDue(Kind kind) {
    return stepsBeforeFault(kind, 1) == 0;
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

std::size_t faultsInjected() {
    return injected;
}

std::size_t calls(Kind kind) {
    return planOf(kind).calls;
}

}  // namespace standin

// The throwing operators do the work, so the blocks go back to the matching delete and a sanitizer sees the pairs.
// When memory really runs out the program ends; in tests that only a plan can make it fail is intended.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return standin::faultDue(standin::Kind::allocation) ? nullptr : ::operator new(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return standin::faultDue(standin::Kind::allocation) ? nullptr : ::operator new[](size);
}
