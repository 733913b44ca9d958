// Tests one property, TAMRIX_PROPERTY, with the inputs kept in its corpus, and with inputs drawn from a seed. The
// environment variables TAMRIX_SEED and TAMRIX_INPUTS choose another seed and another number of inputs.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>

#include TAMRIX_PROPERTY

namespace {

std::vector<std::string> keptInputs() {
    const std::filesystem::directory_iterator folder(TAMRIX_CORPUS);
    std::vector<std::string> inputs;
    for (const auto& file : std::set<std::filesystem::path>(begin(folder), end(folder))) {
        std::ifstream stream(file, std::ios::binary);
        inputs.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }
    return inputs;
}

unsigned long fromEnvironment(const char* name, unsigned long otherwise) {
    const char* const text = std::getenv(name);
    return text ? std::strtoul(text, nullptr, 10) : otherwise;
}

/// A kept input with a few changes: a byte inserted or replaced, some left out, or the end of another kept input. One
/// in four is random instead.
std::string drawn(const std::vector<std::string>& kept, std::mt19937& random) {
    const auto below = [&](std::size_t limit) { return random() % limit; };
    const auto byte = [&] { return static_cast<char>(below(2) ? random() : ' ' + below(95)); };
    if (below(4) == 0) {
        std::string input(below(65), '\0');
        std::ranges::generate(input, byte);
        return input;
    }
    std::string input = kept[below(kept.size())];
    for (std::size_t changes = 1 + below(4); changes > 0; --changes) {
        const std::size_t at = below(input.size() + 1), kind = below(4);
        const std::string &other = kept[below(kept.size())], end = other.substr(below(other.size() + 1));
        const std::size_t replaced[] = {0, 1, 1 + below(4), input.size()};
        input.replace(at, replaced[kind], kind < 2 ? std::string(1, byte()) : kind == 2 ? "" : end);
    }
    return input;
}

TEST(Property, HoldsForKeptInputs) {
    for (const std::string& input : keptInputs()) properties::hold(input);
}

TEST(Property, HoldsForSeededInputs) {
    const std::vector<std::string> kept = keptInputs();
    std::mt19937 random(fromEnvironment("TAMRIX_SEED", 1));
    for (auto left = fromEnvironment("TAMRIX_INPUTS", TAMRIX_INPUTS); left > 0; --left)
        properties::hold(drawn(kept, random));
}

}  // namespace
