// RegKey and RegValue where the registry refuses or memory runs out: what the outputs hold then, and that nothing is
// left open. The leak detector watches the memory.
#include <gtest/gtest.h>
#include <standin.h>

#include <functional>
#include <string>

#include "tamrix32/registry.h"

namespace {

constexpr char kHome[] = "Software\\Tamrix Test faults";

/// A key with a value and two subkeys, and the objects that operations work on.
struct Scene {
    RegKey key{HKEY_CURRENT_USER, kHome};
    RegKey other;
    RegValue value;
    char name[128] = "kept";

    Scene() {
        key.SetString("text", "stored");
        key.SetDword("number", 7);
        RegKey(&key, "first");
        RegKey(&key, "second");
        value.SetName("before");
        value.SetDataLength(3);
        value.SetData(RegValBinary, reinterpret_cast<unsigned char*>(name));
        key.FirstSubKey(&other);
        key.Open();
    }
    ~Scene() { standin::clearRegistry(); }

    bool valueKept() {
        return value.Name() && std::string(value.Name()) == "before" && value.Type() == RegValBinary &&
               value.DataLen() == 3 && std::string(value.String(), 3) == "kep";
    }
    bool otherClosed() { return !other.Opened() && !other.Handle(); }
};

struct Operation {
    const char* name;
    std::function<bool(Scene&)> run;         // whether it succeeded
    std::function<bool(Scene&)> afterwards;  // whether its outputs are as stated after a failure
};

const Operation kOperations[] = {
    {"Open", [](Scene& s) { return s.key.Open() == 1; }, [](Scene& s) { return !s.key.Opened() && !s.key.Handle(); }},
    {"Open at a path", [](Scene& s) { return s.other.Open(HKEY_CURRENT_USER, kHome) == 1; }, &Scene::otherClosed},
    {"Create at a path", [](Scene& s) { return s.other.Create(HKEY_CURRENT_USER, "Software\\Tamrix Test more") == 1; },
     &Scene::otherClosed},
    {"Exists", [](Scene& s) { return s.other.Exists(HKEY_CURRENT_USER, kHome) == 1; }, &Scene::otherClosed},
    {"SetRelPath",
     [](Scene& s) { return s.other.SetAncestor(s.key.Handle()), s.other.SetRelPath("second"), s.other.Exists() == 1; },
     &Scene::otherClosed},
    {"Create", [](Scene& s) { return s.key.Create() == 1; },
     [](Scene& s) { return !s.key.Opened() && !s.key.Handle(); }},
    {"Construction", [](Scene& s) { return RegKey(&s.key, "third").Opened() == 1; }, [](Scene&) { return true; }},
    {"FirstValue", [](Scene& s) { return s.key.FirstValue(&s.value) == 1; },
     [](Scene& s) { return s.valueKept() && s.key.NextValue(&s.value) == 1; }},
    {"ValueByName", [](Scene& s) { return s.key.ValueByName("text", &s.value) == 1; }, &Scene::valueKept},
    {"ValueByName of a number", [](Scene& s) { return s.key.ValueByName("number", &s.value) == 1; }, &Scene::valueKept},
    {"SetString", [](Scene& s) { return s.key.SetString("text", "new") == 1; },
     [](Scene& s) { return s.key.ValueByName("text", &s.value) && std::string(s.value.String()) == "stored"; }},
    {"SetDword", [](Scene& s) { return s.key.SetDword("n", 1) == 1; },
     [](Scene& s) { return !s.key.ValueByName("n", &s.value); }},
    {"RemoveValue", [](Scene& s) { return s.key.RemoveValue("text") == 1; },
     [](Scene& s) { return s.key.ValueByName("text", &s.value) == 1; }},
    {"FirstSubKey by name", [](Scene& s) { return s.key.FirstSubKey(s.name) == 1; },
     [](Scene& s) { return std::string(s.name) == "kept" && s.key.NextSubKey(s.name) == 1; }},
    {"FirstSubKey as a key", [](Scene& s) { return s.key.FirstSubKey(&s.other) && s.other.Opened(); },
     [](Scene& s) {
         // Nothing fetched leaves the child as it was and the walk where it was.
         const bool fetched = !s.other.Opened();
         return std::string(s.key.NextSubKey(&s.other)) == (fetched ? "second" : "first");
     }},
    {"SetName", [](Scene& s) { return s.value.SetName("new"), s.value.Name(); },
     [](Scene& s) { return s.value.NameLen() == 0 && s.value.DataLen() == 3; }},
    {"SetData", [](Scene& s) { return s.value.SetData(RegValString, nullptr), s.value.String(); },
     [](Scene& s) { return s.value.DataLen() == 0 && !s.value.BoolValue() && !s.value.Value(); }},
};

class RegistryFaults : public testing::Test {
protected:
    ~RegistryFaults() override { standin::clearFaults(); }
};

TEST_F(RegistryFaults, FailAsStatedAndLeaveNothingOpen) {
    for (const standin::Kind kind : {standin::Kind::registry, standin::Kind::allocation}) {
        for (const Operation& operation : kOperations) {
            for (std::size_t n = 1;; ++n) {
                SCOPED_TRACE(operation.name + (" with failing call " + std::to_string(n)));
                Scene scene;
                standin::clearFaults();
                standin::failNth(kind, n);
                const bool succeeded = operation.run(scene), failed = standin::faultHit();
                standin::clearFaults();
                EXPECT_NE(succeeded, failed);
                if (!failed) break;
                EXPECT_TRUE(operation.afterwards(scene));
                ASSERT_LT(n, 20u);
            }
            EXPECT_EQ(standin::openKeys(), 0u) << operation.name;
        }
    }
}

TEST_F(RegistryFaults, WalkOnBehindASubkeyThatCannotBeOpened) {
    Scene scene;
    ASSERT_TRUE(standin::denyAccess(HKEY_CURRENT_USER, "Software\\Tamrix Test faults\\first"));
    EXPECT_STREQ(scene.key.FirstSubKey(&scene.other), "first");
    EXPECT_TRUE(scene.otherClosed());
    EXPECT_STREQ(scene.key.NextSubKey(&scene.other), "second");
    EXPECT_EQ(scene.other.Opened(), 1);
    EXPECT_EQ(scene.other.Exists(scene.key.Handle(), "first"), 0) << "it may not be opened, so it does not exist";
}

TEST_F(RegistryFaults, DescribeAKeyThatCouldNotBeCreated) {
    Scene scene;
    standin::clearFaults();
    standin::failNth(standin::Kind::registry, 1);
    RegKey third(&scene.key, "third");
    EXPECT_EQ(third.Opened(), 0);
    EXPECT_EQ(third.Open(), 0) << "the call that failed created nothing";
    EXPECT_EQ(third.Create(), 1);
    EXPECT_EQ(RegKey().Exists(scene.key.Handle(), "third"), 1);
}

}  // namespace
