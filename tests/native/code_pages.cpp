#include "code_pages.h"

#include <gtest/gtest.h>
#include <standin.h>

#include <cstdio>

#include "frame/entry.h"

namespace {

/// Says at the end of a suite how many faults it injected and survived.
class FaultCount : public testing::Environment {
    void TearDown() override {
        if (standin::faultsInjected()) std::printf("%zu faults injected\n", standin::faultsInjected());
    }
};
[[maybe_unused]] testing::Environment* const kFaultCount = testing::AddGlobalTestEnvironment(new FaultCount);

}  // namespace

std::vector<UINT> testing_support::codePagesAmong(std::initializer_list<UINT> wanted) {
    return wanted;
}

bool testing_support::useCodePage(UINT ansi) {
    if (!standin::setCodePages(ansi, ansi == 1252 ? 437 : ansi)) return false;
    tamrix::constructStatics();
    return true;
}
