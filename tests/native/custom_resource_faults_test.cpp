// Resources while platform calls fail by plan.
#include <gmock/gmock.h>
#include <standin.h>

#include "frame/global_memory.h"
#include "resource_fixture.h"
#include "tamrix32/about.h"

namespace {

TEST(CustomResourceFaults, EveryFailedCallLeavesNothingHeld) {
    testing_support::ResourceFixture resources;
    char type[] = "TESTTEXT";
    for (const auto kind : {standin::Kind::resource, standin::Kind::globalMemory}) {
        bool failed = true;
        for (std::size_t nth = 1; failed; ++nth) {
            SCOPED_TRACE(testing::Message() << "kind " << static_cast<int>(kind) << ", call " << nth);
            CCustomResource resource(resources.testModule(), 501, type);
            standin::clearFaults();
            standin::failNth(kind, nth);
            const tamrix::GlobalBlock copy(resource.copyData());
            failed = standin::faultHit();
            standin::clearFaults();
            // Without a size there is nothing to copy: the copy is then the empty resource's.
            EXPECT_TRUE(copy || failed);
            EXPECT_EQ(failed && copy && resource.getSize() != 0, false);
            EXPECT_EQ(resource.isLocked(), 0);
            EXPECT_EQ(standin::lockedResources(), 0u);
            EXPECT_EQ(standin::openGlobalBlocks(), copy ? 1u : 0u);
        }
    }
    EXPECT_EQ(standin::openGlobalBlocks(), 0u);
}

}  // namespace
