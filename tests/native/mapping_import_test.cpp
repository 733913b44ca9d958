// Changing many mappings where the registry refuses one step: all are there afterwards, or the store is as it was.
#include "client/mapping_import.h"

#include <gmock/gmock.h>
#include <standin.h>

#include "../extmap_store.h"
#include "client/mapping_store.h"

namespace {

using namespace tamrix::client;
using MappingImport = extmap_store::StoreTest;

TEST_F(MappingImport, IsAllOrNothingWhicheverCallFails) {
    const std::vector<Mapping> wanted = {{".tmx-a", "TEXT", "MOSS", std::nullopt},
                                         {".tmx-new", "BnHq", "SITx", "new"},
                                         {".tmx-b", "PICT", "ogle", "with a comment"}};
    std::size_t refusals = 0;
    for (std::size_t n = 1;; ++n) {
        SCOPED_TRACE("failing registry call " + std::to_string(n));
        extmap_store::removeOurKeys();
        extmap_store::givenMapping(".tmx-a", "TEXT", "ttxt", "old");
        extmap_store::givenMapping(".tmx-b", "PICT", "ogle");
        const std::vector<Mapping> before = allMappings();
        const std::vector<Change> changes = changesFor(wanted);
        ASSERT_EQ(changes.size(), 3U);
        standin::clearFaults();
        standin::failNth(standin::Kind::registry, n);
        const Change* refused = applyChanges(changes);
        const bool failed = standin::faultHit();
        standin::clearFaults();
        EXPECT_EQ(standin::openKeys(), 0U);
        if (refused) {
            ++refusals;
            EXPECT_EQ(allMappings(), before);
        } else {
            EXPECT_TRUE(changesFor(wanted).empty());
        }
        if (!failed) break;
        ASSERT_LT(n, 200U);
    }
    EXPECT_GT(refusals, 10U);
}

TEST_F(MappingImport, ChangesOnlyWhatDiffers) {
    extmap_store::givenMapping(".tmx-a", "TEXT", "ttxt", "old");
    EXPECT_TRUE(changesFor({{".tmx-a", "TEXT", "ttxt", "old"}}).empty());
    const std::vector<Change> changes = changesFor({{".tmx-a", "TEXT", "ttxt", ""}, {".tmx-b", "TEXT", "ttxt", ""}});
    ASSERT_EQ(changes.size(), 2U);
    EXPECT_FALSE(changes[0].isNew);
    EXPECT_EQ(changes[0].wanted.comment, std::nullopt) << "an empty comment is none";
    EXPECT_TRUE(changes[1].isNew);
}

}  // namespace
