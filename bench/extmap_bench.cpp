// Compares a complete enumeration of the extension mappings with its registry calls alone, and its time per key in a
// large class root with that in a small one. Uses the stand-in's registry.
#include <benchmark/benchmark.h>
#include <standin.h>

#include <cstdlib>
#include <string>

#include "class_keys.h"
#include "entry/entry.h"
#include "table_reporter.h"
#include "tamrix32/extmap.h"

namespace {

constexpr int kSmallest = 20;
constexpr int kSmall = 1000;
constexpr int kLarge = 20000;

void givenClassKeys(int count) {
    static int present = 0;
    if (present == count) return;
    standin::clearRegistry();
    class_keys::fill(count);
    present = count;
}

int enumerateAll() {
    return class_keys::mappingPass<SExtensionMap>(EnumExtMap);
}

/// Measures enumerations of a class root with `count` keys, as many as read 20,000 keys in total. The reported time is
/// that of `keys` of these keys.
void measure(const std::string& label, int keys, int count, int expected, int (*pass)()) {
    benchmark::RegisterBenchmark(label.c_str(), [=](benchmark::State& state) {
        givenClassKeys(count);
        pass();
        for (auto _ : state) {
            for (int visited = 0; visited < kLarge; visited += count)
                if (pass() != expected) std::abort();
        }
        state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * kLarge / keys);
    });
}

int walkAll() {
    CExtensionMap cursor;
    int count = 0;
    for (int more = cursor.First(); more; more = cursor.Next()) ++count;
    return count;
}

}  // namespace

int main(int argc, char** argv) {
    DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr);
    const std::string smallest = "EnumExtMap of 20 keys";
    measure(smallest, kSmallest, kSmallest, kSmallest / 10, enumerateAll);
    measure(thousandTimesTheWork(smallest), kLarge, kLarge, kLarge / 10, enumerateAll);
    measure("bare calls of 20 keys", kSmallest, kSmallest, kSmallest / 5, class_keys::barePass);
    measure("EnumExtMap, 20000 keys", kLarge, kLarge, kLarge / 10, enumerateAll);
    measure("bare calls, 20000 keys", kLarge, kLarge, kLarge / 5, class_keys::barePass);
    measure("CExtensionMap, 20000 keys", kLarge, kLarge, kLarge / 10, walkAll);
    measure("EnumExtMap, 1 of 20000", 1, kLarge, kLarge / 10, enumerateAll);
    measure("EnumExtMap, 1 of 1000", 1, kSmall, kSmall / 10, enumerateAll);
    return runAndPrint(argc, argv,
                       {{smallest, "bare calls of 20 keys", kNoLimit},
                        {"EnumExtMap, 20000 keys", "bare calls, 20000 keys", 1.15},
                        {"EnumExtMap, 1 of 20000", "EnumExtMap, 1 of 1000", 1.2},
                        {"CExtensionMap, 20000 keys", "bare calls, 20000 keys", kNoLimit}});
}
