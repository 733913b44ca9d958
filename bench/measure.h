// Benchmarks of several implementations with the same inputs. Each implementation processes every input in turn; an
// operation of the library also processes one input of 1,000 times the work, to measure its growth.
#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "table_reporter.h"

/// Size in bytes of the buffer that each call gets.
constexpr unsigned kRoom = 1 << 18;

/// The inputs, and in `joined` one input with 1,000 times their average work, or none if growth is not measured. Texts
/// has the same members.
template <typename Input>
struct Inputs {
    std::vector<Input> each;
    std::vector<Input> joined;
};

/// The rows to print, in the order in which they were added.
inline std::vector<Comparison>& rows() {
    static std::vector<Comparison> asked;
    return asked;
}

/// Measures `work` with each input in turn. The function gets a buffer and the input, and returns a number that depends
/// on its result. The inputs must exist until the end of the program.
template <typename Input, typename Work>
void measureEach(const std::string& label, const std::vector<Input>& inputs, Work work) {
    benchmark::RegisterBenchmark(label.c_str(), [&inputs, work](benchmark::State& state) {
        std::vector<char> buffer(kRoom);
        for (auto _ : state) {
            for (const Input& input : inputs) {
                benchmark::DoNotOptimize(work(buffer.data(), input));
                benchmark::ClobberMemory();
            }
        }
        state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * inputs.size()));
    });
}

template <typename Collection, typename Work>
void measure(const std::string& label, const Collection& inputs, Work work) {
    measureEach(label, inputs.each, work);
    if (!inputs.joined.empty()) measureEach(thousandTimesTheWork(label), inputs.joined, work);
}

/// Adds a row that compares an operation with another implementation.
template <typename Collection, typename Work, typename Other>
void compare(const std::string& operation, const Collection& inputs, Work work, const std::string& reference,
             Other other, double limit = kNoLimit) {
    measure(operation, inputs, work);
    measureEach(reference, inputs.each, other);
    rows().push_back({operation, reference, limit});
}

/// Hides a function from the compiler, so that functions of the library and of C are called in the same way and none is
/// inlined.
template <typename Function>
Function* opaque(Function* function) {
    Function* volatile hidden = function;
    return hidden;
}
