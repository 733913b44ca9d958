// Runs the registered benchmarks alternately and prints their shortest times as rows of the common table. Other load on
// the machine can only increase a time, so the shortest of several is the most accurate.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "table.h"

/// A row to print, with the times of the benchmarks that have these names.
struct Comparison {
    std::string operation;
    std::string reference;
    double limit;
};

/// The name of the benchmark for an operation's growth, derived from the operation; an item is 1,000 times the
/// operation's work.
inline std::string thousandTimesTheWork(const std::string& operation) {
    return operation + " x1000";
}

class TableReporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }

    /// Stores the shortest time per item.
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration) continue;
            const double time = 1e9 / run.counters.at("items_per_second");
            const auto [shortest, first] = times.emplace(run.run_name.function_name, time);
            if (!first) shortest->second = std::min(shortest->second, time);
        }
    }

    /// Whether all rows are within their limits.
    bool print(const std::vector<Comparison>& comparisons) {
        bool within = true;
        for (const auto& [operation, reference, limit] : comparisons) {
            const double time = times[operation];
            const double growth = times[thousandTimesTheWork(operation)] / (1000 * time);
            const Row row{operation.c_str(), time, growth, reference.c_str(), times[reference], limit};
            within = printRow(row) && within;
        }
        return within;
    }

private:
    std::map<std::string, double> times;
};

/// Runs the benchmarks alternately, so that other load on the machine affects all of them equally. Returns the exit
/// status.
inline int runAndPrint(int argc, char** argv, const std::vector<Comparison>& comparisons) {
    std::string options[] = {"--benchmark_repetitions=25", "--benchmark_enable_random_interleaving=true",
                             "--benchmark_min_time=0.01"};
    std::vector<char*> arguments(argv, argv + argc);
    for (std::string& option : options) arguments.insert(arguments.begin() + 1, option.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    TableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return reporter.print(comparisons) ? 0 : 1;
}
