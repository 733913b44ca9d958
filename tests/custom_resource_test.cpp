#include <gmock/gmock.h>

#include <cstring>
#include <memory>
#include <string>

#include "frame/global_memory.h"
#include "resource_fixture.h"
#include "tamrix32/about.h"

namespace {

using tamrix::GlobalBlock;
using tamrix::GlobalBlockLock;

class CustomResource : public testing::Test {
protected:
    std::string bytesOf(CCustomResource& resource) {
        return {reinterpret_cast<const char*>(resource.getAddress()), static_cast<std::size_t>(resource.getSize())};
    }

    testing_support::ResourceFixture resources;
    HMODULE module = resources.testModule();
    char type[9] = "TESTTEXT";
    char unknownType[8] = "UNKNOWN";
    char named[6] = "NAMED";
};

TEST_F(CustomResource, LoadsWithTheFirstLockAndReleasesWithTheLast) {
    CCustomResource resource(module, 0x10000 + 501, type);  // the low half counts
    EXPECT_EQ(resource.getSize(), 0);
    EXPECT_EQ(resource.getAddress(), nullptr);
    EXPECT_EQ(resource.unlock(), 0) << "nothing is locked yet";
    EXPECT_EQ(resources.outstandingLoads(), 0);

    EXPECT_EQ(resource.lock(), 1);
    EXPECT_EQ(bytesOf(resource), "first");
    unsigned char* const address = resource.getAddress();
    EXPECT_EQ(resource.lock(), 1);
    EXPECT_EQ(resource.unlock(), 1);
    EXPECT_EQ(resource.getAddress(), address);
    EXPECT_EQ(resources.outstandingLoads(), 1);

    EXPECT_EQ(resource.unlock(), 0);
    EXPECT_EQ(resource.getAddress(), nullptr);
    EXPECT_EQ(resource.getSize(), 5) << "the size outlives the last lock";
    EXPECT_EQ(resource.isLocked(), 0);
    EXPECT_EQ(resources.outstandingLoads(), 0);

    {
        CCustomResource byName(module, named, type);
        for (int i = 0; i < 3; ++i) EXPECT_EQ(byName.lock(), 1);
        EXPECT_EQ(bytesOf(byName), "by name");
        EXPECT_EQ(resource.lock(), 1) << "and it can be loaded anew";
        EXPECT_EQ(bytesOf(resource), "first");
        EXPECT_EQ(resources.outstandingLoads(), 2);
    }
    EXPECT_EQ(resources.outstandingLoads(), 1) << "destruction releases once however often it was locked";
}

TEST_F(CustomResource, StaysUnlockedWhereNothingIsFound) {
    struct {
        const char* reason;
        CCustomResource resource;
    } rows[] = {
        {"no module", CCustomResource(nullptr, 501, type)},
        {"no type", CCustomResource(module, 501, nullptr)},
        {"no name", CCustomResource(module, static_cast<char*>(nullptr), type)},
        {"an id whose low half is 0", CCustomResource(module, 0x10000, type)},
        {"another type", CCustomResource(module, 501, unknownType)},
        {"another id", CCustomResource(module, 599, type)},
    };
    for (auto& row : rows) {
        SCOPED_TRACE(row.reason);
        EXPECT_EQ(row.resource.lock(), 0);
        EXPECT_EQ(row.resource.isLocked(), 0);
        EXPECT_EQ(row.resource.getSize(), 0);
        EXPECT_EQ(row.resource.getAddress(), nullptr);
        EXPECT_EQ(row.resource.copyData(), nullptr);
    }
    EXPECT_EQ(resources.outstandingLoads(), 0);
}

TEST_F(CustomResource, CopyIsTheCallersAndLeavesTheLockCountAsItWas) {
    CCustomResource resource(module, 501, type);
    for (int locksBefore : {0, 2}) {
        SCOPED_TRACE(locksBefore);
        for (int i = 0; i < locksBefore; ++i) resource.lock();
        const GlobalBlock copy(resource.copyData());
        ASSERT_TRUE(copy);
        EXPECT_EQ(resource.isLocked(), locksBefore > 0);
        EXPECT_EQ(resources.outstandingLoads(), locksBefore > 0);
        const GlobalBlockLock bytes(copy.get());
        EXPECT_EQ(std::memcmp(bytes.bytes(), "first", 5), 0);
        bytes.bytes()[0] = 'F';
        for (int i = locksBefore; i > 0; --i) EXPECT_EQ(resource.unlock(), i > 1);
    }
}

TEST_F(CustomResource, CopyOfNoBytesIsOneZeroByte) {
    CCustomResource empty(module, 502, type);
    const GlobalBlock copy(empty.copyData());
    ASSERT_TRUE(copy);
    ASSERT_GE(GlobalSize(copy.get()), 1u);
    EXPECT_EQ(*GlobalBlockLock(copy.get()).bytes(), '\0');
}

/// A client's class: keeps a diary of the virtual calls, and can refuse to lock.
class DiaryResource : public CCustomResource {
public:
    DiaryResource(void* from, char* name, char* type) { initCustomResource(from, name, type); }
    int lock() override {
        diary += "lock ";
        return refuse ? 0 : CCustomResource::lock();
    }
    int unlock() override {
        diary += "unlock ";
        return CCustomResource::unlock();
    }
    std::string diary;
    bool refuse = false;
};

TEST_F(CustomResource, GuardAndCopyCallWhatADerivedClassOverrides) {
    DiaryResource resource(module, named, type);
    {
        const AutoCustomResource guard(resource);
        EXPECT_EQ(resource.isLocked(), 1);
    }
    EXPECT_EQ(resource.diary, "lock unlock ");
    EXPECT_TRUE(GlobalBlock(resource.copyData()));
    EXPECT_EQ(resource.diary, "lock unlock lock unlock ");
    resource.refuse = true;
    EXPECT_EQ(resource.copyData(), nullptr);
    EXPECT_EQ(resource.diary, "lock unlock lock unlock lock unlock ");
    EXPECT_EQ(resources.outstandingLoads(), 0);
}

TEST_F(CustomResource, AssigningAGuardMovesItsReferenceOnly) {
    DiaryResource one(module, named, type);
    DiaryResource other(module, named, type);
    one.CCustomResource::lock();
    {
        AutoCustomResource guard(one);
        const AutoCustomResource otherGuard(other);
        guard = otherGuard;
    }
    EXPECT_EQ(one.diary, "lock ") << "its guard went over to the other";
    EXPECT_EQ(other.diary, "lock unlock unlock ");
}

}  // namespace
