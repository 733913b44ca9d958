#include "resource_fixture.h"

#include <standin.h>

#include <string_view>

namespace testing_support {
namespace {

const HMODULE kModule = standin::fakeModule(7);

void add(const char* name, std::string_view bytes) {
    standin::addResource(kModule, "TESTTEXT", name,
                         {reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
}

}  // namespace

ResourceFixture::ResourceFixture() : state_(nullptr) {
    add(MAKEINTRESOURCEA(501), "first");
    add("NAMED", "by name");
    add(MAKEINTRESOURCEA(502), "");
}

ResourceFixture::~ResourceFixture() {
    standin::clearResources();
}

HMODULE ResourceFixture::testModule() const {
    return kModule;
}

int ResourceFixture::outstandingLoads() const {
    return static_cast<int>(standin::lockedResources());
}

}  // namespace testing_support
