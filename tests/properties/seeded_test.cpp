// Holds one property, TAMRIX_PROPERTY, to the inputs kept in its corpus and to seeded ones: kept inputs with a few
// bytes changed, cut or joined, and random bytes. TAMRIX_SEED in the environment chooses another seed, TAMRIX_INPUTS
// another count.
#include <gtest/gtest.h>

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

class Draw {
public:
    explicit Draw(unsigned long seed) : random_(seed) {}

    std::string changed(const std::vector<std::string>& kept) {
        if (below(4) == 0) return anything();
        std::string input = kept[below(kept.size())];
        for (std::size_t changes = 1 + below(4); changes > 0; --changes) change(input, kept[below(kept.size())]);
        return input;
    }

private:
    std::size_t below(std::size_t limit) { return random_() % limit; }
    char byte() { return static_cast<char>(below(2) ? random_() : ' ' + below(95)); }
    std::string anything() {
        std::string input(below(65), '\0');
        for (char& value : input) value = byte();
        return input;
    }
    /// Inserts a byte, replaces one, leaves some out, or goes on with the end of another input.
    void change(std::string& input, const std::string& other) {
        const std::size_t at = below(input.size() + 1), kind = below(4);
        const std::size_t replaced[] = {0, 1, 1 + below(4), input.size()};
        const std::string end = other.substr(below(other.size() + 1));
        input.replace(at, replaced[kind], kind < 2 ? std::string(1, byte()) : kind == 2 ? "" : end);
    }

    std::mt19937 random_;
};

TEST(Property, HoldsForKeptInputs) {
    for (const std::string& input : keptInputs()) properties::hold(input);
}

TEST(Property, HoldsForSeededInputs) {
    const std::vector<std::string> kept = keptInputs();
    Draw draw(fromEnvironment("TAMRIX_SEED", 1));
    for (auto left = fromEnvironment("TAMRIX_INPUTS", TAMRIX_INPUTS); left > 0; --left)
        properties::hold(draw.changed(kept));
}

}  // namespace
