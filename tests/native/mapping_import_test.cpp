// Changing many mappings where the registry refuses one call: all are stored afterwards, or the store is byte for byte
// what it was.
#include "client/mapping_import.h"

#include <gtest/gtest.h>
#include <standin.h>

#include "client/mapping_store.h"
#include "registry_text.h"

namespace {

using namespace tamrix::client;
using testing_support::givenValue;

void given(const char* extension, const char* name, DWORD type, std::string_view bytes) {
    ASSERT_TRUE(givenValue(HKEY_CLASSES_ROOT, extension, name, type, bytes));
}

TEST(MappingImport, IsAllOrNothingWhicheverCallFails) {
    const std::vector<Mapping> wanted = {{".a", "TEXT", "MOSS", std::nullopt},
                                         {".b", "BnHq", "SITx", "new"},
                                         {".c", "PICT", "ogle", "with a comment"},
                                         {".new", "TEXT", "ttxt", "new"}};
    std::size_t refusals = 0;
    for (std::size_t n = 1, failed = 1; failed; ++n) {
        SCOPED_TRACE("failing registry call " + std::to_string(n));
        testing_support::emptyRegistry();
        given(".a", "Mac Type", REG_SZ, {"TEXT", 5});
        given(".a", "Mac Creator", REG_SZ, {"ttxt", 5});
        given(".a", "Mac Comment", REG_SZ, "not terminated");
        given(".b", "Mac Type", REG_BINARY, {"\0\1", 2});
        given(".b", "another's", REG_SZ, {"", 1});
        given(".c", "Mac Comment", REG_DWORD, "1234");
        const testing_support::RegistryText before = testing_support::registryText();
        const std::vector<Change> changes = changesFor(wanted);
        ASSERT_EQ(changes.size(), wanted.size());
        standin::clearFaults();
        standin::failNth(standin::Kind::registry, n);
        const Refusal refusal = applyChanges(changes);
        failed = standin::faultHit();
        standin::clearFaults();
        EXPECT_EQ(standin::openKeys(), 0U);
        EXPECT_EQ(refusal.notUndone, std::vector<std::string>());
        refusals += !refusal.extension.empty();
        if (refusal.extension.empty())
            EXPECT_TRUE(changesFor(wanted).empty());
        else
            EXPECT_EQ(testing_support::registryText(), before);
    }
    EXPECT_GT(refusals, 20U);
}

}  // namespace
