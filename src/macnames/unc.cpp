#include "macnames/unc.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstring>

#include "strings/scan.h"

namespace tamrix {
namespace {

constexpr int kPrefixLength = 2;
constexpr char kSeparator = '\\';
constexpr char kServerDelimiter = '@';
constexpr char kPrinterDelimiter = '`';
constexpr char kOwnZone[] = "*";

const char* namedZone(const char* zone) {
    return zone && std::strcmp(zone, kOwnZone) != 0 ? zone : nullptr;
}

bool isNonEmpty(const char* text) {
    return text && *text;
}

/// Appends to a path and keeps it terminated.
class PathWriter {
public:
    explicit PathWriter(char* path) : end_(path) {}
    void append(char delimiter) {
        *end_++ = delimiter;
        *end_ = 0;
    }
    void append(const char* text) {
        const std::size_t bytes = std::strlen(text);
        std::memcpy(end_, text, bytes + 1);
        end_ += bytes;
    }

private:
    char* end_;
};

char* find(const LeadByteTable& leads, char* text, char delimiter) {
    return leads.hasLeadBytes ? const_cast<char*>(scan::findFirst(text, delimiter, leads))
                              : std::strchr(text, delimiter);
}

void copyPart(char* part, const char* text) {
    if (part) std::strcpy(part, text);
}

/// If `text` is null, there is no rest. Then only a terminator is written, because filling a large buffer takes time.
void copyRest(const LeadByteTable& leads, const UncParts& parts, const char* text) {
    if (!parts.wantsRest()) return;
    *parts.rest = 0;
    if (!text) return;
    const unsigned capacity = std::min(parts.restSize - 1, static_cast<unsigned>(INT_MAX));
    scan::copyPadded(parts.rest, text, static_cast<int>(capacity), leads);
    parts.rest[capacity] = 0;
}

bool splitPrinter(const LeadByteTable& leads, char* zone, char* delimiter, const UncParts& parts) {
    char* const separator = find(leads, zone, kSeparator);
    if (!separator) return false;
    *delimiter = *separator = 0;
    const char* const name = delimiter + 1;
    const char* const share = separator + 1;
    copyPart(parts.zone, *zone ? zone : kOwnZone);
    copyPart(parts.name, name);
    copyPart(parts.share, share);
    return isNonEmpty(name) && isNonEmpty(share);
}

/// A null `delimiter` means that the path has no zone. The separator is found before the path is cut at the delimiter.
/// So if the delimiter comes after it, as in \\a\b@c, the zone is a, the volume b and the name c.
void splitServer(const LeadByteTable& leads, char* zone, char* delimiter, const UncParts& parts) {
    char* const separator = find(leads, zone, kSeparator);
    if (delimiter) *delimiter = 0;
    if (separator) *separator = 0;
    copyPart(parts.zone, delimiter ? zone : "");
    copyPart(parts.name, delimiter ? delimiter + 1 : zone);
    const char* rest = nullptr;
    if (parts.share) {
        char* const next = separator ? find(leads, separator + 1, kSeparator) : nullptr;
        if (next) {
            *next = 0;
            rest = next + 1;
        }
        copyPart(parts.share, separator ? separator + 1 : "");
    }
    copyRest(leads, parts, rest);
}

}  // namespace

int uncLength(int kind, const char* zone, const char* name, const char* share) {
    // Each length is limited so that the sum of three cannot overflow.
    const auto lengthOf = [](const char* text) {
        return static_cast<int>(std::min(std::strlen(text), std::size_t{kMaxUncSize}));
    };
    zone = namedZone(zone);
    int length = kPrefixLength + 1;
    if (kind == kServerPath) {
        if (zone) length += lengthOf(zone) + 1;
        if (name) length += lengthOf(name);
        if (share) length += lengthOf(share) + 1;
    } else if (kind == kPrinterPath) {
        if (!name || !share) return 0;
        if (zone) length += lengthOf(zone);
        length += lengthOf(name) + 1 + lengthOf(share) + 1;
    } else {
        return 0;
    }
    return length <= kMaxUncSize ? length : 0;
}

int joinUnc(int kind, char* unc, unsigned short size, const char* zone, const char* name, const char* share) {
    if (!unc) return 0;
    const int length = uncLength(kind, zone, name, share);
    if (length == 0 || length > size) return 0;
    zone = namedZone(zone);
    PathWriter path(unc);
    path.append(kSeparator);
    path.append(kSeparator);
    if (isNonEmpty(zone)) path.append(zone);
    if (kind == kServerPath) {
        if (isNonEmpty(zone)) path.append(kServerDelimiter);
        if (isNonEmpty(name)) path.append(name);
        if (!isNonEmpty(share)) return 1;
    } else {
        if (!isNonEmpty(name)) return 0;
        path.append(kPrinterDelimiter);
        path.append(name);
        if (!isNonEmpty(share)) return 0;
    }
    path.append(kSeparator);
    path.append(share);
    return 1;
}

bool hasUncPrefix(const char* path) {
    return path && path[0] == kSeparator && path[1] == kSeparator;
}

void clearParts(const UncParts& parts) {
    for (char* part : {parts.zone, parts.name, parts.share, parts.wantsRest() ? parts.rest : nullptr})
        if (part) *part = 0;
}

int splitUnc(const LeadByteTable& leads, char* path, const UncParts& parts) {
    char* const printerDelimiter = find(leads, path, kPrinterDelimiter);
    char* const serverDelimiter = find(leads, path, kServerDelimiter);
    char* const zone = path + kPrefixLength;
    if (!printerDelimiter) {
        splitServer(leads, zone, serverDelimiter, parts);
        return kServerPath;
    }
    if (parts.wantsRest()) *parts.rest = 0;
    const bool split = !serverDelimiter && splitPrinter(leads, zone, printerDelimiter, parts);
    return split ? kPrinterPath : 0;
}

}  // namespace tamrix
