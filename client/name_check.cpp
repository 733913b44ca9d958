#include "client/name_check.h"

#include <string_view>

#include "client/windows_names.h"

namespace tamrix::client {
namespace {

const char* whyQuoted(unsigned char byte) {
    if (byte < 0x20 || byte == 0x7F) return "control character";
    if (byte >= 0x80) return "in the quote set";
    if (std::string_view("\"*/:<>?\\|").find(static_cast<char>(byte)) != std::string_view::npos)
        return "reserved by Windows";
    if (byte == '@' || byte == '`') return "delimiter in paths of servers and printers";
    return "in the configured quote set";
}

const char* whyQuotedLast(unsigned char byte) {
    return byte == ' ' ? "Windows drops a final space" : "Windows drops a final period";
}

/// The value of the bracketed number at `at`, as it is read when the name is converted back; -1 if there is none.
int numberAt(const std::string& name, std::size_t at, const ByteRules& rules) {
    if (name.size() - at < 5) return -1;
    int value = 0;
    for (std::size_t i = 0; i < 5; ++i) {
        const auto byte = static_cast<unsigned char>(name[at + i]);
        if (rules.isQuoted[byte] || rules.isLead[byte]) return -1;
        const unsigned char windows = rules.windows[byte];
        if (i == 0 || i == 4) {
            if (windows != (i == 0 ? rules.open : rules.close)) return -1;
        } else {
            if (windows < '0' || windows > '9') return -1;
            value = value * 10 + windows - '0';
        }
    }
    return value < 256 && rules.decodes[value] ? value : -1;
}

bool endsIn(const std::string& name, const std::string& ending) {
    return name.size() >= ending.size() && name.compare(name.size() - ending.size(), ending.size(), ending) == 0;
}

}  // namespace

NameReport checkName(const std::string& macName, const ByteRules& rules) {
    NameReport report;
    report.windowsName = windowsNameOf(macName);
    for (std::size_t at = 0; at < macName.size(); ++at) {
        const auto byte = static_cast<unsigned char>(macName[at]);
        if (rules.isLead[byte]) {
            ++at;
            continue;
        }
        const bool isLast = at + 1 == macName.size();
        if (rules.isQuoted[byte])
            report.quoted.push_back({at, byte, whyQuoted(byte)});
        else if (isLast && (byte == ' ' || byte == '.') && endsIn(report.windowsName, bracketed(rules, byte)))
            report.quoted.push_back({at, byte, whyQuotedLast(byte)});
        if (const int value = numberAt(macName, at, rules); value >= 0) report.looksQuoted.push_back({at, value});
    }
    report.convertsBack = macNameOf(report.windowsName) == macName;
    report.tooLong = report.windowsName.size() > kMaxWindowsNameSize;
    if (!macName.empty()) report.notAccepted = whyWindowsRejects(report.windowsName);
    return report;
}

}  // namespace tamrix::client
