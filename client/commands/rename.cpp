// tamrix rename: gives everything in a folder its Windows or Macintosh name.
#include <algorithm>

#include "client/command.h"
#include "client/json.h"
#include "client/library_names.h"
#include "client/rename_plan.h"

namespace tamrix::client {
namespace {

constexpr Option kOptions[] = {{"--to-windows", nullptr, "the folder holds Macintosh names"},
                               {"--to-mac", nullptr, "the folder holds Windows names"},
                               {"--apply", nullptr, "rename; without it, only say what would be renamed"},
                               kJsonOption};

constexpr char kDetails[] =
    "Goes through DIR and the folders in it, the deepest first; links are not followed and DIR keeps its name. "
    "Nothing\n"
    "is overwritten: a name that is taken, or that the disk does not accept, is reported and left (status 1).\n"
    "Apply it once: names that were translated already would be translated again.\n";

bool fromDisk(Side side, const std::string& name, std::string& bytes) {
    bytes = name;
    return !kDiskNamesAreText || bytesFromText(side, name, bytes);
}

bool toDisk(Side side, const std::string& bytes, std::string& name) {
    name = bytes;
    return !kDiskNamesAreText || textFromBytes(side, bytes, name);
}

bool newWindowsName(const std::string& name, std::string& newName, std::string& obstacle) {
    std::string bytes;
    if (!fromDisk(Side::mac, name, bytes))
        obstacle = "not a name in Mac Roman";
    else if (!toDisk(Side::windows, windowsNameOf(bytes), newName))
        obstacle = "the Windows name has no text";
    return obstacle.empty();
}

bool newMacName(const std::string& name, std::string& newName, std::string& obstacle) {
    std::string bytes;
    if (!fromDisk(Side::windows, name, bytes))
        obstacle = "not a name in this code page";
    else if (!toDisk(Side::mac, macNameOf(bytes), newName))
        obstacle = "the Macintosh name has no text";
    return obstacle.empty();
}

/// A path on the disk as it is printed.
std::string pathShown(const std::string& path) {
    return kDiskNamesAreText ? path : shown(Side::windows, path);
}

std::string joined(const std::string& folder, const std::string& name) {
    const bool ends = folder.ends_with(kPathSeparator) || folder.ends_with('/');
    return ends ? folder + name : folder + kPathSeparator + name;
}

class Walk {
public:
    Walk(NewName newName, bool applies, bool asJson) : newName_(newName), applies_(applies), asJson_(asJson) {
        if (asJson_) json_.beginArray();
    }

    void folder(const std::string& path) {
        std::vector<FolderEntry> entries;
        std::string reason;
        if (!listFolder(path, entries, reason)) {
            ++failed_;
            return complain(pathShown(path), reason);
        }
        for (const FolderEntry& entry : entries)
            if (entry.isFolder) folder(joined(path, entry.name));
        for (Renaming& renaming : planRenames(entries, newName_)) {
            const std::string from = joined(path, renaming.from);
            if (applies_ && renaming.obstacle.empty())
                renameWithoutOverwriting(from, joined(path, renaming.to), renaming.obstacle);
            renaming.obstacle.empty() ? ++renamed_ : ++failed_;
            report(path, renaming);
        }
    }

    int finish() {
        if (asJson_) {
            json_.endArray();
            json_.finish();
        } else {
            complain("", decimal(renamed_) + (applies_ ? " renamed, " : " to rename (--apply does it), ") +
                             decimal(failed_) + " left with a reason");
        }
        return failed_ ? kSomeFailed : kDone;
    }

private:
    void report(const std::string& path, const Renaming& renaming) {
        const std::string from = joined(path, renaming.from);
        if (asJson_) return write(path, renaming);
        if (renaming.obstacle.empty()) return print(pathShown(from) + " -> " + pathShown(renaming.to) + "\n");
        complain(pathShown(from),
                 renaming.to.empty() ? renaming.obstacle : renaming.obstacle + ": " + pathShown(renaming.to));
    }

    void write(const std::string& path, const Renaming& renaming) {
        json_.beginObject();
        // Bytes of the disk; where they are text already, the hexadecimal form is of that text.
        diskName("folder", path);
        diskName("from", renaming.from);
        diskName("to", renaming.to);
        json_.ascii("status", !renaming.obstacle.empty() ? "left" : applies_ ? "renamed" : "would rename");
        json_.ascii("reason", renaming.obstacle);
        json_.endObject();
    }

    void diskName(const char* name, const std::string& value) {
        if (kDiskNamesAreText)
            json_.text(name, value);
        else
            json_.bytes(name, Side::windows, value);
    }

    NewName newName_;
    bool applies_;
    bool asJson_;
    Json json_;
    long renamed_ = 0;
    long failed_ = 0;
};

int run(const Arguments& arguments) {
    const std::string& folder = arguments.operands()[0];
    if (arguments.has("--to-mac") == arguments.has("--to-windows")) {
        complain("rename", "give one of --to-windows and --to-mac");
        return kUsageError;
    }
    std::vector<FolderEntry> entries;
    std::string reason;
    if (!listFolder(folder, entries, reason)) {
        complain(folder, reason);
        return kUsageError;
    }
    Walk walk(arguments.has("--to-mac") ? newMacName : newWindowsName, arguments.has("--apply"),
              arguments.has("--json"));
    walk.folder(folder);
    return walk.finish();
}

constexpr Command kCommands[] = {{"rename", "DIR", "give everything in a folder its Windows or Macintosh name",
                                  kDetails, kOptions, 1, 1, run, false, "rename --to-windows Copies"}};

}  // namespace

std::span<const Command> renameCommands() {
    return kCommands;
}

}  // namespace tamrix::client
