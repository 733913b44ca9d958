// A row of the table that the benchmarks print: the time of an operation, its growth with the amount of work, and the
// implementation that it is compared with.
#pragma once

#include <cstdio>

/// No limit: the comparison is for information.
constexpr double kNoLimit = 0;

/// The maximum time for 1,000 times the work, divided by 1,000 times the time for the work once.
constexpr double kGrowthLimit = 1.2;

struct Row {
    const char* operation;
    double nanoseconds;
    double growth;  // time for 1,000 times the work, divided by 1,000 times the time for the work once; 0: not measured
    const char* reference;
    double referenceNanoseconds;
    double limit;  // limit of the ratio of both times; less than 1 if the operation must be faster
};

/// A time in a suitable unit, 13 characters wide.
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

/// Prints a row. Returns whether it is within its limits.
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
