// Compares `tamrix rename` with a journal, in a folder of 200,000 files, with the same number of rename() calls alone.
//
// Growth is the time per file in this folder divided by the time per file in a folder of 2,000, and then divided by the
// same quotient for rename() alone. The start-up time of the command is measured in an empty folder and subtracted,
// because it is a larger part of the time in the small folder and would hide growth. Each time is the shortest of
// several runs, because other load on the disk can only increase it. The command must be in the folder of this program.
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <string>

#include "table.h"

namespace {

constexpr int kFew = 2000;
constexpr int kMany = 200000;
constexpr int kRunsOfFew = 7;
constexpr int kRunsOfMany = 2;

/// The maximum memory per entry among many files divided by that among few; lists that grow may be half empty.
constexpr double kMemoryGrowthLimit = 2;

namespace fs = std::filesystem;

std::string nameOf(int number, const char* ending) {
    return "tree/File " + std::to_string(number) + ending;
}

/// Creates files with names that Windows does not accept, in an empty working folder.
void makeFiles(int count) {
    fs::remove_all("tree");
    fs::remove("journal");
    fs::create_directory("tree");
    for (int i = 0; i < count; ++i) close(open(nameOf(i, ":").c_str(), O_CREAT | O_WRONLY, 0666));
}

/// Nanoseconds.
template <typename Work>
double timed(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count();
}

/// Nanoseconds per file; in an empty folder, nanoseconds of the whole run.
struct Times {
    double command;
    double bare;
};

/// Restores the names that the files had before the command renamed them.
void renameBare(int count) {
    for (int i = 0; i < count; ++i) std::rename(nameOf(i, "[058]").c_str(), nameOf(i, ":").c_str());
}

/// The shortest times of several runs in a folder of `count` files. `run` runs the command; `start` is its start-up
/// time in nanoseconds.
template <typename Run>
Times best(int runs, int count, double start, Run run) {
    Times times{HUGE_VAL, HUGE_VAL};
    for (int i = 0; i < runs; ++i) {
        makeFiles(count);
        times.command = std::min(times.command, (timed(run) - start) / std::max(count, 1));
        times.bare = std::min(times.bare, timed([&] { renameBare(count); }) / std::max(count, 1));
    }
    return times;
}

/// The most memory that a run of the command has used until now, in bytes.
double peakMemory() {
    rusage usage = {};
    getrusage(RUSAGE_CHILDREN, &usage);
    return 1024.0 * static_cast<double>(usage.ru_maxrss);
}

}  // namespace

int main(int, char** argv) {
    const std::string command = fs::canonical(argv[0]).replace_filename("tamrix").string();
    const std::string apply = command + " rename --to-windows --apply --journal journal tree >/dev/null 2>&1";
    char folder[] = "/tmp/rename_bench.XXXXXX";
    if (!mkdtemp(folder) || chdir(folder) != 0) return 1;
    bool isDone = true;
    const auto run = [&] { isDone = std::system(apply.c_str()) == 0 && isDone; };
    const double start = best(kRunsOfFew, 0, 0, run).command, startMemory = peakMemory();
    const Times few = best(kRunsOfFew, kFew, start, run);
    const double fewMemory = (peakMemory() - startMemory) / kFew;
    const Times many = best(kRunsOfMany, kMany, start, run);
    const double manyMemory = (peakMemory() - startMemory) / kMany;
    const double growth = many.command / few.command / (many.bare / few.bare);
    fs::current_path("/");
    fs::remove_all(folder);
    isDone = printRow({"rename, an entry", many.command, growth, "rename() alone", many.bare, kNoLimit}) && isDone;
    const double memoryGrowth = manyMemory / fewMemory;
    std::printf("%-26s %7.0f bytes %7.2f\n", "rename, memory of an entry", manyMemory, memoryGrowth);
    return isDone && memoryGrowth <= kMemoryGrowthLimit ? 0 : 1;
}
