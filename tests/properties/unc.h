// UNC paths of AppleTalk servers and printers under each code page, compared with their grammar: joined from parts into
// blocks of every size, and split into all parts or only some.
#pragma once

#include <algorithm>
#include <optional>

#include "code_pages.h"
#include "properties/property.h"
#include "tamrix32/macnames.h"

namespace properties {

using Part = std::optional<std::string>;

inline void holdJoin(int kind, const Part& zone, const Part& name, const Part& share) {
    const bool named = zone && *zone != "*", hasName = name && !name->empty(), hasShare = share && !share->empty();
    std::string path = "\\\\" + (named ? *zone : "");
    std::size_t length = 3 + (named ? zone->size() : 0) + name.value_or("").size() + share.value_or("").size();
    bool complete = true;
    if (kind == 1) {
        length += (named ? 1u : 0u) + (share ? 1u : 0u);
        path += (named && !zone->empty() ? "@" : "") + name.value_or("") + (hasShare ? "\\" + *share : "");
    } else if (kind == 2 && name && share) {
        length += 2;
        complete = hasName && hasShare;
        path += (hasName ? "`" + *name : "") + (complete ? "\\" + *share : "");
    } else {
        length = 0;
    }
    if (length > 0x7FFF) length = 0;  // such a path is refused
    const auto given = [](const Part& part) { return part ? part->c_str() : nullptr; };
    const auto join = [&](char* target, std::size_t size) {
        return StringsToUNC(kind, target, static_cast<unsigned short>(size), given(zone), given(name), given(share));
    };
    require(UNCLength(kind, given(zone), given(name), given(share)) == static_cast<int>(length), "UNCLength");
    require(join(nullptr, 99) == 0, "StringsToUNC into null");
    for (std::size_t size = length < 100 ? 0 : length - 1; size <= length + 1; ++size) {
        const bool fits = length > 0 && size >= length;
        const Block block(size);
        require(join(block, size) == (fits && complete), "result of StringsToUNC");
        require(block.bytes().starts_with(fits ? path + '\0' : std::string(size, '?')), "bytes of StringsToUNC");
    }
}

/// The kind of a path and its zone, name, share and rest. A part without a value is not written. For a rest without a
/// value only one zero byte is written, since its buffer may be large.
struct Split {
    int kind;
    Part zone, name, share, rest;
};

inline Split statedSplit(const tamrix::LeadByteTable& leads, const std::string& path, bool sharesWanted) {
    if (!path.starts_with("\\\\")) return {0, "", "", "", {}};
    const std::string plain = withoutDoubles(leads, path);
    const std::size_t printer = plain.find('`'), server = plain.find('@'), separator = plain.find('\\', 2);
    const std::size_t next = plain.find('\\', std::min(separator, plain.size()) + 1);
    const auto none = std::string::npos;
    /// The text from a delimiter to the first of the others after it; empty without the delimiter.
    const auto after = [&path](std::size_t delimiter, std::initializer_list<std::size_t> cuts) {
        std::size_t end = path.size();
        for (const std::size_t cut : cuts)
            if (cut > delimiter) end = std::min(end, cut);
        return delimiter == none ? "" : path.substr(delimiter + 1, end - delimiter - 1);
    };
    if (printer != none) {
        if (server != none || separator == none) return {0, {}, {}, {}, {}};
        const std::string zone = after(1, {printer, separator}), name = after(printer, {separator});
        const std::string share = after(separator, {printer});
        return {name.empty() || share.empty() ? 0 : 2, zone.empty() ? "*" : zone, name, share, {}};
    }
    const std::string zone = server == none ? "" : after(1, {server, separator});
    const std::string name = after(server == none ? 1 : server, {separator});
    // The next separator is searched for only up to a delimiter that is after the first separator.
    const bool hasRest = sharesWanted && next != none && (server < separator || next < server);
    return {1, zone, name, after(separator, {server, next}), hasRest ? Part(after(next, {server})) : Part()};
}

/// Splits into the parts whose bits are set in `wanted`, from the lowest: zone, name, share, rest.
inline void holdSplit(const tamrix::LeadByteTable& leads, const std::string& path, unsigned wanted, unsigned restSize) {
    const Exact source(path);
    const Block blocks[] = {Block(path.size() + 1), Block(path.size() + 1), Block(path.size() + 1), Block(restSize)};
    const auto output = [&](unsigned i) { return wanted >> i & 1 ? static_cast<char*>(blocks[i]) : nullptr; };
    const Split stated = statedSplit(leads, path, (wanted & 4) != 0);
    const int kind = UNCToStrings(source, output(0), output(1), output(2), output(3), restSize);
    require(kind == stated.kind, "result of UNCToStrings");
    const Part parts[] = {stated.zone, stated.name, stated.share};
    for (unsigned i = 0; i < 3; ++i) {
        const bool written = output(i) && parts[i];
        const std::string bytes = written ? *parts[i] + '\0' : std::string(path.size() + 1, '?');
        require(blocks[i].bytes().starts_with(bytes), "a part of UNCToStrings");
    }
    std::string rest = stated.rest ? fitting(charactersOf(leads, *stated.rest), restSize - 1) : "";
    rest.resize(stated.rest ? restSize : 1);
    if (!output(3)) rest.clear();
    rest.resize(restSize, '?');
    require(blocks[3].bytes() == rest, "rest of UNCToStrings");
}

inline const std::vector<UINT> kUncPages = testing_support::codePagesAmong({1252, 932, 936, 949, 950, 1251});

inline void property(Input& input) {
    const UINT page = kUncPages[input.byte() % kUncPages.size()];
    if (GetACP() != page) require(testing_support::useCodePage(page), "useCodePage");
    const tamrix::LeadByteTable leads = leadBytesOf(page);
    const int kind = input.byte() % 4;
    const unsigned choice = input.byte(), restSize = input.byte();
    // With one, two or three parts of such a size, a path has about the maximum length, or more than 16 bits can count.
    const std::size_t sizes[] = {32755, 16370, 10910, 22000, 65533, 65536};
    const std::string more(choice & 0x80 && restSize % 16 == 1 ? input.oneOf(sizes) : 0, 'n');
    const auto part = [&](unsigned bit) {
        const std::string text = input.text(20) + more;
        return choice & bit ? Part(text) : Part();
    };
    const Part zone = part(1), name = part(2), share = part(4);
    holdJoin(kind, zone, name, share);
    require(ZoneSrvDelimiter() + std::string(ZonePrnDelimiter()) == "@`", "the delimiters");
    const Exact cleared("?");
    require(UNCToStrings(nullptr, cleared, nullptr, nullptr, nullptr, 0) == 0 && !*cleared, "a missing path");
    const std::string path = input.rest();
    for (const unsigned wanted : {15u, choice >> 3 & 15})
        for (const char* prefix : {"", "\\\\"}) holdSplit(leads, prefix + path, wanted, restSize);
}

/// Under a single-byte and a double-byte code page all paths of up to seven bytes that matter; all short parts.
inline std::vector<Inputs> exhaustive() {
    std::vector<Inputs> all;
    for (char page = 0; page < 2; ++page) {
        all.push_back({{page, 0, '\x18', 4, 0, 0, 0}, "a@`\\\x83", 7});
        for (const char kind : {'\1', '\2'}) all.push_back({{page, kind, 7, 0}, {'\0', '\1', '\2', '*', '\x83'}, 6});
    }
    return all;
}

}  // namespace properties
