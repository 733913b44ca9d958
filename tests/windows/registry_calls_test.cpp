// How RegKey calls the registry: rights, class, options and buffer sizes, and what it makes of a registry that writes
// more than it says. Observed at this program's imports.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <utility>

#include "tamrix32/registry.h"
#include "windows/import_hook.h"

namespace {

using testing_support::ImportHook;

/// The key that the fakes hand out and expect back.
const HKEY kFake = reinterpret_cast<HKEY>(0x5150);

std::string call;  // the last one, with its arguments

std::string number(unsigned long value) {
    char text[16];
    std::snprintf(text, sizeof text, " %lX", value);
    return text;
}

LSTATUS WINAPI open(HKEY, const char* path, DWORD options, REGSAM access, HKEY* key) {
    call = std::string("open ") + path + number(options) + number(access);
    *key = kFake;
    return ERROR_SUCCESS;
}

LSTATUS WINAPI refuseToOpen(HKEY, const char*, DWORD, REGSAM, HKEY*) {
    return ERROR_ACCESS_DENIED;
}

LSTATUS WINAPI create(HKEY, const char* path, DWORD reserved, char* keyClass, DWORD options, REGSAM access,
                      SECURITY_ATTRIBUTES* security, HKEY* key, DWORD* disposition) {
    call = std::string("create ") + path + number(reserved) + " " + keyClass + number(options) + number(access) +
           (security ? " secured" : "") + (disposition ? "" : " no disposition");
    *key = kFake;
    return ERROR_SUCCESS;
}

DWORD saidSize = 4;

/// Fills the whole of a buffer and says that it holds `saidSize` bytes.
void overfill(BYTE* buffer, DWORD* size) {
    std::memset(buffer, 'x', *size);
    *size = saidSize;
}

LSTATUS WINAPI query(HKEY, const char* name, DWORD*, DWORD* type, BYTE* data, DWORD* size) {
    call = std::string("query ") + name + number(*size);
    *type = REG_SZ;
    overfill(data, size);
    return ERROR_SUCCESS;
}

LSTATUS WINAPI enumerateValue(HKEY, DWORD index, char* name, DWORD* nameSize, DWORD*, DWORD* type, BYTE* data,
                              DWORD* size) {
    call = "value" + number(index) + number(*nameSize) + number(*size);
    *type = REG_BINARY;
    std::strcpy(name, "n");
    *nameSize = 1;
    overfill(data, size);
    return ERROR_SUCCESS;
}

LSTATUS WINAPI enumerateKey(HKEY, DWORD index, char* name, DWORD* size, DWORD*, char* keyClass, DWORD* classSize,
                            FILETIME* written) {
    call = "key" + number(index) + number(*size) + (keyClass || classSize || !written ? " class" : "");
    std::strcpy(name, "sub");
    return ERROR_SUCCESS;
}

LSTATUS WINAPI enumerateKeyName(HKEY, DWORD index, char* name, DWORD size) {
    call = "name" + number(index) + number(size);
    std::strcpy(name, "sub");
    return ERROR_SUCCESS;
}

LSTATUS WINAPI close(HKEY key) {
    return key == kFake ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
}

template <typename Function>
const void* addressOf(Function* function) {
    return reinterpret_cast<const void*>(function);
}

class RegistryCalls : public testing::Test {
protected:
    void SetUp() override {
        for (const ImportHook& hook : hooks) ASSERT_TRUE(hook.installed());
    }
    ImportHook hooks[7] = {{nullptr, "advapi32.dll", "RegOpenKeyExA", addressOf(open)},
                           {nullptr, "advapi32.dll", "RegCreateKeyExA", addressOf(create)},
                           {nullptr, "advapi32.dll", "RegQueryValueExA", addressOf(query)},
                           {nullptr, "advapi32.dll", "RegEnumValueA", addressOf(enumerateValue)},
                           {nullptr, "advapi32.dll", "RegEnumKeyExA", addressOf(enumerateKey)},
                           {nullptr, "advapi32.dll", "RegEnumKeyA", addressOf(enumerateKeyName)},
                           {nullptr, "advapi32.dll", "RegCloseKey", addressOf(close)}};
};

TEST_F(RegistryCalls, AskForTheSameRightsEverywhere) {
    RegKey key, child;
    EXPECT_EQ(key.Open(HKEY_CURRENT_USER, "a"), 1);
    EXPECT_EQ(call, "open a 0 1001F");
    EXPECT_EQ(key.Exists(), 1);
    EXPECT_EQ(call, "open a 0 1001F");
    EXPECT_EQ(key.Create(), 1);
    EXPECT_EQ(call, "create a 0 key 0 1001F");
    EXPECT_STREQ(key.FirstSubKey(&child), "sub");
    EXPECT_EQ(call, "open sub 0 1001F");
}

TEST_F(RegistryCalls, OfferBuffersOf128BytesAndReadWhatCameBack) {
    char name[128];
    RegKey key(HKEY_CURRENT_USER, "a");
    RegValue value;
    const std::pair<DWORD, std::size_t> sizes[] = {{0, 0}, {4, 4}, {128, 128}, {1000, 128}, {4, 4}};
    for (const auto& [said, kept] : sizes) {
        saidSize = said;
        EXPECT_EQ(key.ValueByName("v", &value), 1);
        EXPECT_EQ(call, "query v 80");
        EXPECT_EQ(value.DataLen(), kept + 1) << "the bytes and a terminator, of " << said;
        EXPECT_EQ(std::strlen(value.String()), kept) << said;
    }
    EXPECT_EQ(key.FirstValue(&value), 1);
    EXPECT_EQ(key.NextValue(&value), 1);
    EXPECT_EQ(call, "value 1 80 80");
    EXPECT_EQ(value.DataLen(), 4u);
    EXPECT_EQ(key.FirstSubKey(name), 1);
    EXPECT_EQ(key.NextSubKey(name), 1);
    EXPECT_EQ(call, "name 1 80");
    RegKey child;
    ImportHook refusing(nullptr, "advapi32.dll", "RegOpenKeyExA", addressOf(refuseToOpen));
    EXPECT_STREQ(key.NextSubKey(&child), "sub");
    EXPECT_EQ(call, "key 2 80") << "the walk's third, in both forms";
}

}  // namespace
