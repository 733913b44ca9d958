// Names under drawn rules: no byte outside the name is looked at, no capacity is overrun, what is measured suffices, a
// cut result is a terminated prefix, and a name without ambiguities comes back.
#include <cstring>
#include <memory>
#include <string>

#include "charset/name_rules.h"
#include "fuzz_input.h"
#include "macnames/name_codec.h"
#include "string_model.h"

namespace {

using fuzzing::require;
using tamrix::NameRules;
using testing_support::Exact;

using Translation = decltype(&tamrix::macToWindows);

/// The bytes written without the last terminator, in a block whose end the sanitizer watches.
std::string whole(Translation translation, const NameRules& rules, const std::string& name, int capacity) {
    const std::unique_ptr<char[]> block(new char[static_cast<std::size_t>(capacity)]);
    const int written = translation(rules, block.get(), Exact(name), static_cast<unsigned>(capacity));
    require(written > 0 && written <= capacity && block[static_cast<std::size_t>(written) - 1] == 0);
    return {block.get(), static_cast<std::size_t>(written) - 1};
}

void cut(Translation translation, const NameRules& rules, const std::string& name, const std::string& result,
         std::size_t size) {
    const std::unique_ptr<char[]> block(new char[size]);
    const int written = translation(rules, block.get(), Exact(name), static_cast<unsigned>(size));
    require(written == (size > result.size() ? static_cast<int>(result.size()) + 1 : tamrix::kDoesNotFit));
    const void* terminator = std::memchr(block.get(), 0, size);
    require(terminator != nullptr);
    require(result.compare(0, std::strlen(block.get()), block.get()) == 0);
}

/// Whether each unquoted byte translates there and back, and the opening bracket stands for nothing but quotes.
bool comesBack(const NameRules& rules, const std::string& name) {
    for (std::size_t i = 0; i < name.size(); ++i) {
        const auto& rule = rules.mac[static_cast<unsigned char>(name[i])];
        if (rule.role() == tamrix::ByteRole::lead) {
            // Trail bytes below the letters occur in no code page; at the end they would be quoted apart.
            if (++i == name.size() || name[i] == ' ' || name[i] == '.') return false;
            continue;
        }
        if (rule.role() != tamrix::ByteRole::plain) continue;
        const auto& back = rules.windows[rule.image()];
        if (back.role() != tamrix::ByteRole::plain || back.image() != static_cast<unsigned char>(name[i])) return false;
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::Input input(data, size);
    const tamrix::LeadByteTable leads = input.leadBytes();
    const std::uint8_t open = input.byte();
    const std::uint8_t close = input.byte();
    if (open == 0 || close == 0 || leads.isLead[open]) return 0;
    std::string set = input.bytes(80);
    const std::uint8_t drawnSize = input.byte();
    const std::string name = input.rest();
    const tamrix::QuoteSettings quotes = {reinterpret_cast<unsigned char*>(set.data()),
                                          static_cast<std::int32_t>(set.size()), open, close};
    const NameRules rules =
        tamrix::makeNameRules(quotes, leads, leads.hasLeadBytes ? nullptr : &tamrix::kCharacterTable);

    const std::string windows =
        whole(tamrix::macToWindows, rules, name, tamrix::macToWindowsCapacity(rules, Exact(name)));
    const int capacity = tamrix::windowsToMacCapacity(rules, Exact(windows));
    const std::string back = whole(tamrix::windowsToMac, rules, windows, capacity);
    require(static_cast<int>(back.size()) + 1 == capacity);
    if (comesBack(rules, name)) require(back == name);

    cut(tamrix::macToWindows, rules, name, windows, 1u + drawnSize % (windows.size() + 2));
    cut(tamrix::windowsToMac, rules, windows, back, 1u + drawnSize % (back.size() + 2));
    whole(tamrix::windowsToMac, rules, name, tamrix::windowsToMacCapacity(rules, Exact(name)));
    return 0;
}
