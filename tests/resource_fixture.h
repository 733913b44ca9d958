// Resources for suites that run natively and under Wine, and what became of them.
//
// testModule() holds, of type "TESTTEXT": resource 501 "first", resource "NAMED" "by name", resource 502 without bytes.
#pragma once

#include <windows.h>

namespace testing_support {

/// Counts loads and releases of resources from its construction on.
class ResourceFixture {
public:
    ResourceFixture();
    ~ResourceFixture();
    ResourceFixture(const ResourceFixture&) = delete;
    ResourceFixture& operator=(const ResourceFixture&) = delete;

    HMODULE testModule() const;
    int outstandingLoads() const;

private:
    struct State;
    State* state_;
};

}  // namespace testing_support
