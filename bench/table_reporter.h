// Prints the medians of repeated runs and, behind them, how the ones that belong together compare, against a stated
// limit.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// `subject` took at most `limit` times as long as `reference`. A limit below 1 asks for a subject that is faster.
struct Comparison {
    std::string subject;
    std::string reference;
    double limit;
};

class RatioReporter : public benchmark::ConsoleReporter {
public:
    explicit RatioReporter(std::vector<Comparison> wanted) : comparisons(std::move(wanted)) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        std::vector<Run> shown;
        for (const Run& run : runs) {
            if (run.aggregate_name != "median") continue;
            medians[run.run_name.function_name] = run.GetAdjustedCPUTime();
            shown.push_back(run);
        }
        ConsoleReporter::ReportRuns(shown);
    }

    /// The table of medians' ratios; whether all are within their limits.
    bool printRatios() {
        std::printf("\n%-28s %-28s %8s %8s\n", "subject", "reference", "ratio", "limit");
        bool within = true;
        for (const Comparison& comparison : comparisons) {
            const double ratio = medians[comparison.subject] / medians[comparison.reference];
            const bool fits = ratio <= comparison.limit;
            within = within && fits;
            std::printf("%-28s %-28s %8.3f %8.3f%s\n", comparison.subject.c_str(), comparison.reference.c_str(), ratio,
                        comparison.limit, fits ? "" : "  OVER");
        }
        return within;
    }

private:
    std::vector<Comparison> comparisons;
    std::map<std::string, double> medians;
};
