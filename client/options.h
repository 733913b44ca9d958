// What a command takes on its line: options from a declared table, then operands. The reader is our own: getopt_long is
// not in the C library of Windows, and the help, the completion and the complaints come from the same table.
//
// An option is written --name or, with a value, --name=value or --name value; "--" ends the options. Tables are static;
// an Arguments object refers to them and to the program's own argument strings.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::client {

struct Option {
    const char* name;   // with its dashes
    const char* value;  // how the help names the value; null for a flag
    const char* help;
};

class Arguments {
public:
    /// Takes the operands and options of `words` from `first` on. With `stopAtOperand` it stops before the first
    /// operand. Returns the index after the last word taken. False from isGood() when a word was not understood; the
    /// complaint then names it.
    std::size_t parse(std::span<char* const> words, std::size_t first, bool stopAtOperand);
    void allow(std::span<const Option> options) { allowed_.push_back(options); }

    bool isGood() const { return complaint_.empty(); }
    const std::string& complaint() const { return complaint_; }
    bool has(std::string_view option) const { return find(option) != nullptr; }
    /// The option's value as given last; null when the option was not given.
    const char* value(std::string_view option) const;
    const std::vector<std::string>& operands() const { return operands_; }

private:
    struct Given {
        const Option* option;
        const char* value;
    };
    const Given* find(std::string_view name) const;
    const Option* allowed(std::string_view name) const;
    std::size_t take(std::span<char* const> words, std::size_t at);

    std::vector<std::span<const Option>> allowed_;
    std::vector<Given> given_;
    std::vector<std::string> operands_;
    std::string complaint_;
};

}  // namespace tamrix::client
