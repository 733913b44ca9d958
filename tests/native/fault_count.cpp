#include <gtest/gtest.h>
#include <standin.h>

#include <cstdio>

namespace {

/// Says at the end of a suite how many faults it injected and survived.
class FaultCount : public testing::Environment {
    void TearDown() override {
        if (standin::faultsInjected()) std::printf("%zu faults injected\n", standin::faultsInjected());
    }
};
[[maybe_unused]] testing::Environment* const kFaultCount = testing::AddGlobalTestEnvironment(new FaultCount);

}  // namespace
