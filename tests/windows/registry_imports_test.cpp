// What RegKey makes of a registry that writes more than it says, seen by replacing the import.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>

#include "tamrix32/registry.h"
#include "windows/import_hook.h"

namespace {

DWORD saidSize;

LONG WINAPI fillWhole(HKEY, LPCSTR, LPDWORD, LPDWORD type, LPBYTE data, LPDWORD size) {
    std::memset(data, 'x', *size);
    *type = REG_SZ;
    *size = saidSize;
    return ERROR_SUCCESS;
}

TEST(RegistryImports, NothingIsReadBehindTheReturnedSize) {
    const testing_support::ImportHook query(nullptr, "advapi32.dll", "RegQueryValueExA",
                                            reinterpret_cast<void*>(fillWhole));
    ASSERT_TRUE(query.installed());
    const struct {
        DWORD said;
        std::size_t kept;
    } rows[] = {{0, 0}, {2, 2}, {128, 128}, {1000, 128}};
    for (const auto& row : rows) {
        saidSize = row.said;
        RegKey key;
        RegValue value;
        ASSERT_EQ(key.ValueByName("n", &value), 1);
        EXPECT_EQ(std::strlen(value.String()), row.kept) << row.said;
        EXPECT_EQ(value.DataLen(), row.kept + 1) << row.said;
    }
}

}  // namespace
