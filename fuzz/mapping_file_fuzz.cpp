// The text form of mappings: any bytes are read or refused with a line of theirs, and what was read comes back from
// what the writer makes of it.
#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "client/mapping_file.h"

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const tamrix::client::MappingFile file = tamrix::client::parseMappings(text);
    if (file.error) {
        const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
        require(file.mappings.empty() && file.error->line >= 1 && file.error->line <= lines);
        return 0;
    }
    const std::string written = tamrix::client::writeMappings(file.mappings);
    for (const char byte : written) require(byte == '\t' || byte == '\n' || (byte >= ' ' && byte <= '~'));
    const tamrix::client::MappingFile again = tamrix::client::parseMappings(written);
    require(!again.error && again.mappings == file.mappings);
    return 0;
}
