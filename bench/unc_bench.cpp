// Compares splitting, joining and measuring UNC paths with loops that assume that all parts are present. Uses realistic
// names, and one name of 1,000 times their length.
#include <cstdlib>
#include <cstring>
#include <string>

#include "entry/entry.h"
#include "measure.h"
#include "names.h"
#include "tamrix32/macnames.h"

namespace {

constexpr char kZone[] = "Second Floor";
constexpr char kShare[] = "Projects";
constexpr std::size_t kNames = 1000;
constexpr unsigned short kPathRoom = 32767;

struct Path {
    std::string name;
    std::string whole;
};

struct Kind {
    int number;
    char delimiter;
    const char* label;
    Inputs<Path> paths{};
};

Path pathOf(const Kind& kind, const std::string& name) {
    return {name, std::string("\\\\") + kZone + kind.delimiter + name + '\\' + kShare};
}

/// The parts of a path are stored one after the other in a buffer.
constexpr std::size_t kPartRoom = kRoom / 4;

int splitByLibrary(char* dst, const Path& path) {
    return UNCToStrings(path.whole.c_str(), dst, dst + kPartRoom, dst + 2 * kPartRoom, dst + 3 * kPartRoom, 260);
}

const char* copyUntil(char* dst, const char* src, char delimiter) {
    while (*src != delimiter) *dst++ = *src++;
    *dst = 0;
    return src + 1;
}

int splitBare(const Kind& kind, char* dst, const Path& path) {
    const char* rest = copyUntil(dst, path.whole.c_str() + 2, kind.delimiter);
    rest = copyUntil(dst + kPartRoom, rest, '\\');
    copyUntil(dst + 2 * kPartRoom, rest, 0);
    dst[3 * kPartRoom] = 0;
    return kind.number;
}

int joinBare(const Kind& kind, char* dst, const Path& path) {
    char* end = stpcpy(stpcpy(dst, "\\\\"), kZone);
    *end++ = kind.delimiter;
    end = stpcpy(end, path.name.c_str());
    *end++ = '\\';
    stpcpy(end, kShare);
    return 1;
}

/// Hides a value from the compiler, which could otherwise compute its length at compile time.
const char* volatile zone = kZone;
const char* volatile share = kShare;

int lengthBare(char*, const Path& path) {
    return static_cast<int>(std::strlen(zone) + std::strlen(path.name.c_str()) + std::strlen(share)) + 5;
}

int lengthByLibrary(int kind, const Path& path) {
    return UNCLength(kind, zone, path.name.c_str(), share);
}

int joinByLibrary(int kind, char* dst, const Path& path) {
    return StringsToUNC(kind, dst, kPathRoom, zone, path.name.c_str(), share);
}

/// Aborts on failure, because measuring failing calls would be meaningless.
void requireWork(const Kind& kind, const Path& path) {
    std::string buffer(kRoom, 0);
    if (splitByLibrary(buffer.data(), path) != kind.number || path.name != buffer.data() + kPartRoom) std::abort();
    if (joinByLibrary(kind.number, buffer.data(), path) != 1 || path.whole != buffer.data()) std::abort();
}

void registerKind(const Kind& kind) {
    requireWork(kind, kind.paths.each[0]);
    requireWork(kind, kind.paths.joined[0]);
    const std::string of = std::string(", ") + kind.label;
    compare("UNCToStrings" + of, kind.paths, splitByLibrary, "loop that splits" + of,
            [&kind](char* dst, const Path& path) { return splitBare(kind, dst, path); });
    compare(
        "StringsToUNC" + of, kind.paths,
        [&kind](char* dst, const Path& path) { return joinByLibrary(kind.number, dst, path); }, "stpcpy of parts" + of,
        [&kind](char* dst, const Path& path) { return joinBare(kind, dst, path); });
    compare(
        "UNCLength" + of, kind.paths, [&kind](char*, const Path& path) { return lengthByLibrary(kind.number, path); },
        "strlen of parts" + of, lengthBare);
}

}  // namespace

int main(int argc, char** argv) {
    DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr);
    static Kind kinds[] = {{1, '@', "server"}, {2, '`', "printer"}};
    const std::string high = "\xC4\xD6\xDC\xE9";
    for (Kind& kind : kinds) {
        std::string joined;
        for (std::string name : sampleNames(kNames, high)) {
            for (char& byte : name)
                if (byte == '\\') byte = '-';
            joined += name;
            kind.paths.each.push_back(pathOf(kind, name));
        }
        kind.paths.joined.push_back(pathOf(kind, joined));
        registerKind(kind);
    }
    return runAndPrint(argc, argv, rows());
}
