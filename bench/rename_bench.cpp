// The command renaming a folder of 200,000 files, journal and all, beside bare calls that rename as many. Growth is the
// time an entry over that of a folder with a hundredth of them, beyond what the disk's own calls grow. Runs the command
// that lies next to this program.
#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "table.h"

namespace {

constexpr int kFew = 2000;
constexpr int kMany = 200000;

namespace fs = std::filesystem;

std::string nameOf(int number, const char* ending) {
    return "tree/File " + std::to_string(number) + ending;
}

/// Files whose names hold what Windows does not take, in an empty working folder.
void makeFiles(int count) {
    fs::remove_all("tree");
    fs::remove("journal");
    fs::create_directory("tree");
    for (int i = 0; i < count; ++i) close(open(nameOf(i, ":").c_str(), O_CREAT | O_WRONLY, 0666));
}

/// Nanoseconds an entry.
template <typename Work>
double timed(int count, Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count() / count;
}

/// Gives the files the names back that they had before the command renamed them.
void renameBare(int count) {
    for (int i = 0; i < count; ++i) std::rename(nameOf(i, "[058]").c_str(), nameOf(i, ":").c_str());
}

}  // namespace

int main(int, char** argv) {
    const std::string command = fs::canonical(argv[0]).replace_filename("tamrix").string();
    const std::string apply = command + " rename --to-windows --apply --journal journal tree >/dev/null 2>&1";
    char folder[] = "/tmp/rename_bench.XXXXXX";
    if (!mkdtemp(folder) || chdir(folder) != 0) return 1;
    bool isDone = true;
    const auto run = [&] { isDone = std::system(apply.c_str()) == 0 && isDone; };
    makeFiles(kFew);
    const double few = timed(kFew, run), bareFew = timed(kFew, [] { renameBare(kFew); });
    makeFiles(kMany);
    const double many = timed(kMany, run), bare = timed(kMany, [] { renameBare(kMany); });
    const double growth = many / few / (bare / bareFew);
    fs::current_path("/");
    fs::remove_all(folder);
    return isDone && printRow({"rename, an entry", many, growth, "rename() alone", bare, kNoLimit}) ? 0 : 1;
}
