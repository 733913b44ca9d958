// A whole pass over the extension mappings against a bare loop of the same registry calls, and its time a key in a
// small and a large class root, on the stand-in's registry.
#include <benchmark/benchmark.h>
#include <standin.h>

#include <cstdlib>
#include <vector>

#include "class_keys.h"
#include "frame/entry.h"
#include "ratio_reporter.h"
#include "tamrix32/extmap.h"

namespace {

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

/// Visits the last few of the mappings, which follow the extensions with long names.
void warmCode(int keys) {
    SExtensionMap map;
    map.index = static_cast<unsigned>(keys / 5 - 10);
    for (int i = 0; i < 10; ++i) benchmark::DoNotOptimize(EnumExtMap(&map));
}

/// Writes over more memory than a processor's caches hold.
void emptyCaches() {
    static std::vector<char> other(64U << 20);
    for (std::size_t i = 0; i < other.size(); i += 64) ++other[i];
    benchmark::ClobberMemory();
}

enum class Caches { warm, empty };

/// Times as many passes as visit 20,000 keys in a class root of `count`.
void measure(const char* label, Caches caches, int count, int expected, int (*pass)()) {
    const auto run = [=](benchmark::State& state) {
        givenClassKeys(count);
        for (auto _ : state) {
            for (int visited = 0; visited < kLarge; visited += count) {
                if (caches == Caches::empty) {
                    state.PauseTiming();
                    emptyCaches();
                    // What is to be read from memory is the registry, not the code.
                    warmCode(count);
                    state.ResumeTiming();
                }
                if (pass() != expected) std::abort();
            }
        }
        state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * kLarge);
    };
    benchmark::internal::Benchmark* registered = benchmark::RegisterBenchmark(label, run);
    // Emptying them takes longer than a pass.
    if (caches == Caches::empty) registered->Iterations(2);
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
    std::vector<char*> arguments(argv, argv + argc);
    std::string defaults[] = {"--benchmark_repetitions=9", "--benchmark_enable_random_interleaving=true",
                              "--benchmark_min_time=0.1", "--benchmark_display_aggregates_only=true"};
    for (std::string& option : defaults) arguments.insert(arguments.begin() + 1, option.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    measure("EnumExtMap_of_20000", Caches::warm, kLarge, kLarge / 10, enumerateAll);
    measure("bare_calls_of_20000", Caches::warm, kLarge, kLarge / 5, class_keys::barePass);
    measure("cursor_of_20000", Caches::warm, kLarge, kLarge / 10, walkAll);
    // A small root stays in the processor's caches between passes, a large one doesn't: from memory both cost the same.
    measure("first_pass_of_20000", Caches::empty, kLarge, kLarge / 10, enumerateAll);
    measure("first_pass_of_1000", Caches::empty, kSmall, kSmall / 10, enumerateAll);
    RatioReporter reporter(
        {{"EnumExtMap_of_20000", "bare_calls_of_20000", 1.15}, {"first_pass_of_20000", "first_pass_of_1000", 1.2}});
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return reporter.printRatios() ? 0 : 1;
}
