#include "registry_names.h"

#include "code_page.h"

namespace standin {
namespace {

/// Iterates over a name in upper case.
class FoldedUnits {
public:
    explicit FoldedUnits(std::string_view name) : rest_(name) {}

    /// The next 16-bit unit; -1 at the end.
    int next() {
        if (pending_ != 0) {
            const int unit = pending_;
            pending_ = 0;
            return unit;
        }
        if (rest_.empty()) return -1;
        const auto byte = static_cast<BYTE>(rest_[0]);
        if (byte >= 0x80) return wide();
        rest_.remove_prefix(1);
        return byte >= 'a' && byte <= 'z' ? byte - ('a' - 'A') : byte;
    }

private:
    int wide() {
        const CodePage& page = ansiCodePage();
        const WORD character = page.take(rest_);
        if (const auto unit = page.toUnicode(character)) return upperUnit(*unit);
        // Characters without a Unicode value are represented by a surrogate pair, so that they remain distinct.
        pending_ = 0xDC00 + LOBYTE(character);
        return 0xD800 + HIBYTE(character);
    }

    std::string_view rest_;
    int pending_ = 0;
};

}  // namespace

int compareNames(std::string_view left, std::string_view right) {
    FoldedUnits leftUnits(left);
    FoldedUnits rightUnits(right);
    for (;;) {
        const int unit = leftUnits.next();
        const int difference = unit - rightUnits.next();
        if (difference != 0 || unit < 0) return difference;
    }
}

std::vector<std::string_view> pathComponents(std::string_view path) {
    std::vector<std::string_view> components;
    const CodePage& page = ansiCodePage();
    const char* start = path.data();
    const auto finish = [&](const char* end) {
        if (end != start) components.emplace_back(start, static_cast<std::size_t>(end - start));
    };
    while (!path.empty()) {
        const char* at = path.data();
        if (page.take(path) != '\\') continue;
        finish(at);
        start = path.data();
    }
    finish(path.data());
    return components;
}

}  // namespace standin
