// Records and cursors as the suites of the extension store use them.
#pragma once

#include "extmap_store.h"
#include "tamrix32/extmap.h"

namespace extmap_store {

inline char* text(const char* constant) {
    return const_cast<char*>(constant);
}

/// A record with buffers of its own, each followed by bytes that nobody may touch.
struct Record : SExtensionMap {
    char bytes[305];

    /// The extension is the caller's; without one it has a buffer, too.
    explicit Record(const char* of = nullptr) {
        std::fill_n(bytes, sizeof bytes, '~');
        bytes[304] = 0;
        type = bytes;
        creator = bytes + 8;
        comment = bytes + 16;
        extension = of ? text(of) : bytes + 280;
    }
    ~Record() {
        for (const int behindCode : {5, 13}) EXPECT_EQ(std::string(bytes + behindCode, 3), "~~~");
        for (const int behindBuffer : {272, 296}) EXPECT_EQ(std::string(bytes + behindBuffer, 8), "~~~~~~~~");
    }
    std::string codes() const { return std::string(type) + ' ' + creator; }
};

inline int add(const char* extension, const char* type, const char* creator, const char* comment = nullptr) {
    SExtensionMap map;
    map.extension = text(extension);
    map.type = text(type);
    map.creator = text(creator);
    map.comment = text(comment);
    return AddExtMap(&map);
}

/// "type creator comment" of a complete mapping, else "none".
inline std::string got(const std::string& extension) {
    Record record(extension.c_str());
    return GetExtMap(&record) ? record.codes() + ' ' + record.comment : "none";
}

/// What a cursor holds: extension, type, creator, comment.
inline std::string held(CExtensionMap& cursor) {
    std::string all;
    for (const char* string : {cursor.Extension(), cursor.Type(), cursor.Creator(), cursor.Comment()})
        all += (all.empty() ? "" : " ") + std::string(string ? string : "(none)");
    return all;
}

inline void setHeld(CExtensionMap& cursor, const char* extension, const char* type, const char* creator,
                    const char* comment) {
    cursor.SetExtension(text(extension));
    cursor.SetType(text(type));
    cursor.SetCreator(text(creator));
    cursor.SetComment(text(comment));
}

/// Our mappings as an enumeration hands them out: "extension type creator comment", the codes being the wanted ones
/// where there are any. Each is heard of while the enumeration stands at it.
inline std::vector<std::string> enumerated(
    int (*next)(SExtensionMap*), std::string type = "", std::string creator = "",
    void (*hear)(const Record&) = [](const Record&) {}) {
    Record record;
    if (next == EnumExtMapCT) {
        record.type = type.data();
        record.creator = creator.data();
    }
    const SExtensionMap given = record;
    std::vector<std::string> mappings;
    while (next(&record)) {
        // A name that lost a letter for its dot would be ours, too.
        if (!isOurs(record.extension) && !isOurs(std::string("t") + record.extension)) continue;
        mappings.push_back(record.extension + std::string(" ") + record.codes() + ' ' + record.comment);
        hear(record);
    }
    EXPECT_TRUE(record.extension == given.extension && record.type == given.type && record.creator == given.creator);
    return mappings;
}

inline const char kHoldsNothing[] = "(none) (none) (none) (none)";

}  // namespace extmap_store
