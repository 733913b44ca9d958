// REGEDIT4 text: any bytes are read or refused with a line of theirs, and a registry that was read comes back from what
// is written of it.
#include <standin.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>

#include "fuzz_input.h"
#include "regedit4.h"

namespace {

using fuzzing::require;

/// Merges text into the registry by way of a file in memory.
standin::FileResult loaded(std::string_view text) {
    static const int file = memfd_create("regedit4", 0);
    static const std::string path = "/proc/self/fd/" + std::to_string(file);
    require(ftruncate(file, 0) == 0 && pwrite(file, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()));
    return standin::loadRegistry(path);
}

/// Reads the text, and what is written of it again.
void readAndWrite(std::string_view text) {
    const standin::FileResult result = loaded(text);
    if (!result.ok) {
        const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
        require(!result.message.empty() && result.line <= lines);
        return;
    }
    std::string why;
    const auto written = standin::writeRegedit4(why);
    if (!written) return require(!why.empty());
    standin::clearRegistry();
    require(loaded(*written).ok && standin::writeRegedit4(why) == written);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const unsigned page = data[0] % 2 ? 932 : 1252;
    require(standin::setCodePages(page, page == 932 ? 932 : 437));
    readAndWrite({reinterpret_cast<const char*>(data) + 1, size - 1});
    // Key names fold by the code page under which they were made; and what stays would be taken for a leak, whose
    // search takes longer than the run.
    standin::clearRegistry();
    return 0;
}
