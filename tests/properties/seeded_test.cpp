// Holds one property, TAMRIX_PROPERTY, to the inputs kept in its corpus and to seeded ones: kept inputs with a few
// bytes changed, cut or joined, and random bytes. TAMRIX_SEED in the environment chooses another seed, TAMRIX_INPUTS
// another count.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

#include TAMRIX_PROPERTY

namespace {

std::vector<std::string> keptInputs() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(TAMRIX_CORPUS)) files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    std::vector<std::string> inputs;
    for (const auto& file : files) {
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
        if (kept.empty() || below(4) == 0) return anything();
        std::string input = kept[below(kept.size())];
        for (std::size_t changes = 1 + below(4); changes > 0; --changes) change(input, kept[below(kept.size())]);
        return input;
    }

private:
    std::size_t below(std::size_t limit) { return limit ? random_() % limit : 0; }
    char byte() { return below(2) ? static_cast<char>(random_()) : static_cast<char>(' ' + below(95)); }
    std::string anything() {
        std::string input(below(65), '\0');
        for (char& value : input) value = byte();
        return input;
    }
    void change(std::string& input, const std::string& other) {
        const std::size_t at = below(input.size() + 1);
        switch (below(4)) {
            case 0:
                input.insert(at, 1, byte());
                break;
            case 1:
                input.erase(at, 1 + below(4));
                break;
            case 2:
                input = input.substr(0, at) + other.substr(below(other.size() + 1));
                break;
            default:
                if (at < input.size()) input[at] = byte();
        }
    }

    std::mt19937 random_;
};

void hold(const std::string& input) {
    try {
        properties::Input taken(input);
        properties::property(taken);
    } catch (const properties::Disagreement& found) {
        FAIL() << found.what() << "\n  input " << properties::hexadecimal(input);
    }
}

TEST(Property, HoldsForKeptInputs) {
    for (const std::string& input : keptInputs()) hold(input);
}

TEST(Property, HoldsForSeededInputs) {
    const std::vector<std::string> kept = keptInputs();
    Draw draw(fromEnvironment("TAMRIX_SEED", 1));
    for (auto left = fromEnvironment("TAMRIX_INPUTS", TAMRIX_INPUTS); left > 0 && !HasFailure(); --left)
        hold(draw.changed(kept));
}

}  // namespace
