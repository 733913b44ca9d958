// The command-line parser: options from declared tables, and operands. getopt_long is not used because Windows' C
// library lacks it, and because help, completion and error messages come from the same tables.
//
// An option is written --name or, with a value, --name=value or --name value; "--" ends the options. An Arguments
// object keeps pointers to the option tables, which are static, and to the words of the command line.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::client {

struct Option {
    const char* name;             // including the dashes
    const char* value = nullptr;  // the value's name in the help; null for a flag
    const char* help;
};

class Arguments {
public:
    /// Parses the options and operands in `words` from index `first`; with `stopAtOperand` it stops before the first
    /// operand. Returns the index after the last parsed word. After an error isGood() is false and complaint() is the
    /// error message.
    std::size_t parse(std::span<char* const> words, std::size_t first, bool stopAtOperand);
    void allow(std::span<const Option> options) { allowed_.push_back(options); }

    bool isGood() const { return complaint_.empty(); }
    const std::string& complaint() const { return complaint_; }
    bool has(std::string_view option) const { return find(option) != nullptr; }
    /// The value of the option's last occurrence; null if the option was not given.
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
