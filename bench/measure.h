// Benchmarks of ways of doing the same, on the same inputs: each way on every input in turn, and an operation of the
// library also on one input that is a thousand times the work, for its growth.
#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "table_reporter.h"

/// Bytes of the buffer that each piece of work gets.
constexpr unsigned kRoom = 1 << 18;

/// Inputs one by one, and one of a thousand times their average work; none of these where that makes no sense. Texts
/// have the same shape.
template <typename Input>
struct Inputs {
    std::vector<Input> each;
    std::vector<Input> joined;
};

/// The rows to print, in the order in which they were asked for.
inline std::vector<Comparison>& rows() {
    static std::vector<Comparison> asked;
    return asked;
}

/// Times `work` on each input in turn; the work gets a buffer and the input and gives a number that depends on what it
/// did. The inputs are there until the end.
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

/// A row: an operation beside another way of doing the same.
template <typename Collection, typename Work, typename Other>
void compare(const std::string& operation, const Collection& inputs, Work work, const std::string& reference,
             Other other, double limit = kNoLimit) {
    measure(operation, inputs, work);
    measureEach(reference, inputs.each, other);
    rows().push_back({operation, reference, limit});
}

/// Kept from the compiler, so that the library's functions and C's are called alike and none is inlined.
template <typename Function>
Function* called(Function* function) {
    Function* volatile kept = function;
    return kept;
}
