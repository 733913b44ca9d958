#include "client/mapping_store.h"

#include <string.h>

#include <algorithm>
#include <utility>

#include "tamrix32/extmap.h"

namespace tamrix::client {
namespace {

constexpr unsigned kCommentSize = 32768;

/// The record for the library's calls and its buffers. A stored string may lack its terminator, so each buffer has one
/// zero byte more than the size that the library is given.
class Record {
public:
    Record() {
        map_.extension = extension_;
        map_.type = type_;
        map_.creator = creator_;
        map_.comment = comment_.data();
        map_.extensionSize = sizeof extension_;
        map_.commentSize = kCommentSize;
    }

    bool next() {
        memset(comment_.data(), 0, comment_.size());
        return EnumExtMap(&map_) != 0;
    }
    bool get(const std::string& extension) {
        std::string name = extension;
        map_.extension = name.data();
        const bool found = GetExtMap(&map_) != 0;
        map_.extension = extension_;
        return found;
    }
    void getDefault() { GetDefaultExtMap(&map_); }

    Mapping mapping(const std::string& extension) const {
        Mapping result{extension, type_, creator_, std::nullopt};
        if (comment_[0]) result.comment = comment_.c_str();
        return result;
    }
    std::string extension() const { return std::string(".") + extension_; }

private:
    SExtensionMap map_;
    char extension_[17] = {};
    char type_[6] = {};
    char creator_[6] = {};
    std::string comment_ = std::string(kCommentSize + 1, '\0');
};

constexpr int kMaxPasses = 6;

bool isSameExtension(const Mapping& a, const Mapping& b) {
    return a.extension == b.extension;
}

}  // namespace

std::vector<Mapping> mappingsOfOnePass() {
    std::vector<Mapping> mappings;
    Record record;
    // A key named "." maps no extension.
    while (record.next())
        if (record.extension() != ".") mappings.push_back(record.mapping(record.extension()));
    std::sort(mappings.begin(), mappings.end(),
              [](const Mapping& a, const Mapping& b) { return a.extension < b.extension; });
    return mappings;
}

bool allMappings(std::vector<Mapping>& mappings, std::vector<Mapping> (*onePass)()) {
    mappings = onePass();
    for (int pass = 1; pass < kMaxPasses; ++pass) {
        const std::vector<Mapping> before = std::exchange(mappings, onePass());
        const bool repeats = std::adjacent_find(mappings.begin(), mappings.end(), isSameExtension) != mappings.end();
        if (mappings == before && !repeats) return true;
    }
    mappings.erase(std::unique(mappings.begin(), mappings.end(), isSameExtension), mappings.end());
    return false;
}

bool findMapping(const std::string& extension, Mapping& mapping) {
    Record record;
    if (!record.get(extension)) return false;
    mapping = record.mapping(extension);
    return true;
}

bool putMapping(const Mapping& mapping) {
    Mapping copy = mapping;
    CExtensionMap cursor;
    cursor.SetExtension(copy.extension.data());
    cursor.SetType(copy.type.data());
    cursor.SetCreator(copy.creator.data());
    if (copy.comment) cursor.SetComment(copy.comment->data());
    // The library does not report whether the comment was written.
    Mapping stored;
    return cursor.Create() && findMapping(mapping.extension, stored) && stored == mapping;
}

void removeMapping(const std::string& extension) {
    std::string name = extension;
    RemoveExtMap(name.data());
}

Mapping defaultMapping() {
    Record record;
    record.getDefault();
    return record.mapping("");
}

}  // namespace tamrix::client
