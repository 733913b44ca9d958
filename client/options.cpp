#include "client/options.h"

namespace tamrix::client {

const Option* Arguments::allowed(std::string_view name) const {
    for (const auto& options : allowed_)
        for (const Option& option : options)
            if (name == option.name) return &option;
    return nullptr;
}

const Arguments::Given* Arguments::find(std::string_view name) const {
    const Given* last = nullptr;
    for (const Given& given : given_)
        if (name == given.option->name) last = &given;
    return last;
}

const char* Arguments::value(std::string_view option) const {
    const Given* given = find(option);
    return given ? given->value : nullptr;
}

/// Parses the option at `at` and its value, if it takes one. Returns the index of the last word parsed.
std::size_t Arguments::take(std::span<char* const> words, std::size_t at) {
    const std::string_view word = words[at];
    const std::size_t equals = word.find('=');
    const std::string_view name = word.substr(0, equals);
    const Option* option = allowed(name);
    if (!option) {
        complaint_ = "no such option: " + std::string(word);
    } else if (!option->value) {
        if (equals == std::string_view::npos)
            given_.push_back({option, ""});
        else
            complaint_ = std::string(name) + " takes no value: " + std::string(word);
    } else if (equals != std::string_view::npos) {
        given_.push_back({option, words[at] + equals + 1});
    } else if (at + 1 < words.size()) {
        given_.push_back({option, words[++at]});
    } else {
        complaint_ = std::string(name) + " needs a value: " + option->value;
    }
    return at;
}

std::size_t Arguments::parse(std::span<char* const> words, std::size_t first, bool stopAtOperand) {
    bool optionsOver = false;
    std::size_t at = first;
    for (; at < words.size() && isGood(); ++at) {
        const std::string_view word = words[at];
        const bool isOption = !optionsOver && word.size() > 1 && word[0] == '-';
        if (isOption && word == "--" && !stopAtOperand)
            optionsOver = true;
        else if (isOption)
            at = take(words, at);
        else if (stopAtOperand)
            break;
        else
            operands_.emplace_back(word);
    }
    return at;
}

}  // namespace tamrix::client
