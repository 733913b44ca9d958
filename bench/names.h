// Realistic names: 8 to 40 bytes, 15 % of the bytes above 0x7F and 3 % quoted.
#pragma once

#include <random>
#include <string>
#include <vector>

/// Generates names with a fixed seed. `high` contains the bytes above 0x7F to use.
inline std::vector<std::string> sampleNames(std::size_t count, const std::string& high) {
    static const std::string plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 -_.";
    static const std::string quoted = "/:?*\"<>|\\\r";
    std::mt19937 random(1995);
    const auto pick = [&random](std::size_t below) { return static_cast<std::size_t>(random() % below); };
    std::vector<std::string> names(count);
    for (std::string& name : names) {
        const std::size_t length = 8 + pick(33);
        while (name.size() < length) {
            const std::size_t kind = pick(100);
            const std::string& from = kind < 15 ? high : kind < 18 ? quoted : plain;
            name += from[pick(from.size())];
        }
    }
    return names;
}

struct Text {
    std::string name;
    std::string same;       // at another address
    std::string otherCase;  // every other letter in the other case
};

/// The single names, and all of them joined to one.
struct Texts {
    std::vector<Text> each;
    std::vector<Text> joined = std::vector<Text>(1);

    void add(const std::string& name) {
        std::string otherCase = name;
        for (std::size_t i = 0; i < name.size(); i += 2)
            if ((name[i] | 0x20) >= 'a' && (name[i] | 0x20) <= 'z') otherCase[i] = static_cast<char>(name[i] ^ 0x20);
        each.push_back({name, name, otherCase});
        joined[0].name += name;
        joined[0].same += name;
        joined[0].otherCase += otherCase;
    }
};
