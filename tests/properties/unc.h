// UNC paths of AppleTalk servers and printers under each code page, joined from parts into blocks of every size and
// split into those parts that are wanted, held to their grammar.
#pragma once

#include <algorithm>
#include <optional>

#include "code_pages.h"
#include "properties/property.h"
#include "tamrix32/macnames.h"

namespace properties {

inline void holdJoin(int kind, const char* zoneText, const char* nameText, const char* shareText) {
    const auto text = [](const char* part) { return std::string(part ? part : ""); };
    const bool named = zoneText && std::string_view(zoneText) != "*";
    const std::string zone = named ? text(zoneText) : "", name = text(nameText), share = text(shareText);
    std::string path = "\\\\" + zone;
    std::size_t length = 3 + zone.size() + name.size() + share.size();
    bool complete = true;
    if (kind == 1) {
        length += (named ? 1u : 0u) + (shareText ? 1u : 0u);
        path += (zone.empty() ? "" : "@") + name + (share.empty() ? "" : "\\" + share);
    } else if (kind == 2 && nameText && shareText) {
        length += 2;
        complete = !name.empty() && !share.empty();
        path += (name.empty() ? "" : "`" + name) + (complete ? "\\" + share : "");
    } else {
        length = 0;
    }
    require(UNCLength(kind, zoneText, nameText, shareText) == static_cast<int>(length), "UNCLength");
    require(StringsToUNC(kind, nullptr, 99, zoneText, nameText, shareText) == 0, "StringsToUNC into null");
    for (std::size_t size = 0; size <= length + 1; ++size) {
        const bool fits = length > 0 && size >= length;
        const Block block(size);
        const int result = StringsToUNC(kind, block, static_cast<unsigned short>(size), zoneText, nameText, shareText);
        require(result == (fits && complete), "result of StringsToUNC");
        require(block.bytes().starts_with(fits ? path + '\0' : std::string(size, '?')), "bytes of StringsToUNC");
    }
}

/// The kind of a path and its zone, name, share and rest; a part that is left alone has none.
struct Split {
    int kind;
    std::optional<std::string> zone, name, share;
    std::string rest = "";
    bool hasRest = false;  // one that is empty is copied, too
};

inline Split statedSplit(const tamrix::LeadByteTable& leads, const std::string& path, bool sharesWanted) {
    if (!path.starts_with("\\\\")) return {0, "", "", ""};
    const auto find = [&](char delimiter, std::size_t from) {
        for (; from < path.size() && path[from] != delimiter;) from += leads.leads(path[from]) ? 2 : 1;
        return std::min(from, path.size());
    };
    const std::size_t none = path.size(), printer = find('`', 0), server = find('@', 0), separator = find('\\', 2);
    std::vector<std::size_t> cuts = {separator, none};
    /// The text from a position that was found, or after one, to where the path is cut next.
    const auto part = [&](std::size_t from) {
        std::size_t to = none;
        for (const std::size_t cut : cuts)
            if (cut >= from) to = std::min(to, cut);
        return from < none ? path.substr(from, to - from) : "";
    };
    if (printer != none) {
        if (server != none || separator == none) return {0, {}, {}, {}};
        cuts.push_back(printer);
        const std::string zone = part(2), name = part(printer + 1), share = part(separator + 1);
        return {name.empty() || share.empty() ? 0 : 2, zone.empty() ? "*" : zone, name, share};
    }
    cuts.push_back(server);
    const std::string zone = server == none ? "" : part(2), name = part(server == none ? 2 : server + 1);
    // A separator is looked for up to the delimiter, where the volume ends already when the delimiter is behind it.
    const std::size_t end = separator + 1 + part(separator + 1).size();
    const std::size_t next = separator == none ? none : find('\\', separator + 1);
    const bool hasRest = sharesWanted && next < none && next <= end;
    if (next < none) cuts.push_back(next);
    return {1, zone, name, part(separator + 1), hasRest ? part(next + 1) : "", hasRest};
}

/// Only the parts whose bits `wanted` holds are asked for: zone, name, share, rest.
inline void holdSplit(const tamrix::LeadByteTable& leads, const std::string& path, unsigned wanted, unsigned restSize) {
    const Exact source(path);
    const Block blocks[] = {Block(path.size() + 1), Block(path.size() + 1), Block(path.size() + 1), Block(restSize)};
    const auto output = [&](unsigned i) { return wanted >> i & 1 ? static_cast<char*>(blocks[i]) : nullptr; };
    const Split stated = statedSplit(leads, path, (wanted & 4) != 0);
    const int kind = UNCToStrings(source, output(0), output(1), output(2), output(3), restSize);
    require(kind == stated.kind, "result of UNCToStrings");
    const std::optional<std::string> parts[] = {stated.zone, stated.name, stated.share};
    for (unsigned i = 0; i < 3; ++i) {
        const bool written = output(i) && parts[i];
        const std::string bytes = written ? *parts[i] + '\0' : std::string(path.size() + 1, '?');
        require(blocks[i].bytes().starts_with(bytes), "a part of UNCToStrings");
    }
    std::string rest(restSize, '?');
    if (output(3) && restSize > 0) {
        std::string fitting;
        for (const std::string& character : charactersOf(leads, stated.rest)) {
            if (fitting.size() + character.size() >= restSize) break;
            fitting += character;
        }
        // Where there is no rest one byte is written, not zeros to the end of a buffer that may be large.
        rest = fitting + std::string(stated.hasRest ? restSize - fitting.size() : 1, '\0');
        rest.resize(restSize, '?');
    }
    require(blocks[3].bytes() == rest, "rest of UNCToStrings");
}

inline void property(Input& input) {
    static const std::vector<UINT> pages = testing_support::codePagesAmong({1252, 932, 936, 949, 950, 1251});
    static unsigned active = 0;
    const unsigned page = pages[input.byte() % pages.size()];
    if (page != active) require(testing_support::useCodePage(active = page), "useCodePage");
    const tamrix::LeadByteTable leads = leadBytesOf(page);
    const int kind = input.byte() % 4;
    const unsigned choice = input.byte(), restSize = input.byte();
    const Exact zone(input.text(20)), name(input.text(20)), share(input.text(20));
    const auto given = [choice](unsigned bit, const char* part) { return choice & bit ? part : nullptr; };
    holdJoin(kind, given(1, zone), given(2, name), given(4, share));
    const std::string path = input.rest();
    for (const char* prefix : {"", "\\\\"}) holdSplit(leads, prefix + path, choice >> 3 & 15, restSize);
}

}  // namespace properties
