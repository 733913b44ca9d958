#include "resource_fixture.h"

#include "windows/import_hook.h"

namespace testing_support {
namespace {

int loads;
decltype(&LoadResource) load;
decltype(&FreeResource) release;

HGLOBAL WINAPI countingLoad(HMODULE module, HRSRC resource) {
    const HGLOBAL data = load(module, resource);
    if (data) ++loads;
    return data;
}

BOOL WINAPI countingRelease(HGLOBAL data) {
    --loads;
    return release(data);
}

}  // namespace

struct ResourceFixture::State {
    ImportHook loadHook{nullptr, "kernel32.dll", "LoadResource", reinterpret_cast<const void*>(countingLoad)};
    ImportHook releaseHook{nullptr, "kernel32.dll", "FreeResource", reinterpret_cast<const void*>(countingRelease)};
};

ResourceFixture::ResourceFixture() : state_(new State) {
    loads = 0;
    load = state_->loadHook.original<decltype(&LoadResource)>();
    release = state_->releaseHook.original<decltype(&FreeResource)>();
}

ResourceFixture::~ResourceFixture() {
    delete state_;
}

HMODULE ResourceFixture::testModule() const {
    return GetModuleHandleA(nullptr);
}

int ResourceFixture::outstandingLoads() const {
    return loads;
}

}  // namespace testing_support
