// One row of the table that the benchmarks print together: what an operation takes, how that grows with its work, and
// beside which other way of doing it.
#pragma once

#include <cstdio>

/// No limit: the other way is there to be seen.
constexpr double kNoLimit = 0;

/// What a thousand times the work may take at most, in thousands of once the work.
constexpr double kGrowthLimit = 1.2;

struct Row {
    const char* operation;
    double nanoseconds;
    double growth;  // the time of a thousand times the work, in thousands of the time of once; 0: not measured
    const char* reference;
    double referenceNanoseconds;
    double limit;  // of the ratio of both times; below 1 the operation has to be faster
};

/// A time in the unit that suits it, 13 characters wide.
struct TimeText {
    char text[32];

    explicit TimeText(double nanoseconds) {
        const bool milli = nanoseconds >= 1e6;
        const bool micro = nanoseconds >= 1e4 && !milli;
        std::snprintf(text, sizeof text, "%10.1f %s",
                      nanoseconds / (milli   ? 1e6
                                     : micro ? 1e3
                                             : 1),
                      milli   ? "ms"
                      : micro ? "us"
                              : "ns");
    }
};

/// Prints a row; whether it is within its limits.
inline bool printRow(const Row& row) {
    const double ratio = row.nanoseconds / row.referenceNanoseconds;
    const bool fits = (row.limit == kNoLimit || ratio <= row.limit) && row.growth <= kGrowthLimit;
    char growth[16] = "";
    char limit[16] = "";
    if (row.growth > 0) std::snprintf(growth, sizeof growth, "%.2f", row.growth);
    if (row.limit != kNoLimit) std::snprintf(limit, sizeof limit, "%.2f", row.limit);
    std::printf("%-26s %s %7s  %-26s %s %7.3f %6s%s\n", row.operation, TimeText(row.nanoseconds).text, growth,
                row.reference, TimeText(row.referenceNanoseconds).text, ratio, limit, fits ? "" : "  OVER");
    return fits;
}
