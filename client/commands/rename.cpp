// tamrix rename: gives everything in a folder its Windows or Macintosh name, and puts it back.
#include "client/command.h"
#include "client/output.h"
#include "client/rename_names.h"
#include "client/rename_report.h"
#include "client/rename_run.h"

namespace tamrix::client {
namespace {

constexpr Option kOptions[] = {
    {"--to-windows", nullptr, "the folder holds Macintosh names"},
    {"--to-mac", nullptr, "the folder holds Windows names"},
    {"--apply", nullptr, "rename; without it, only say what would be renamed"},
    {"--journal", "FILE", "where each step is written down; without it, a new file next to DIR"},
    {"--undo", "FILE", "put everything back that this journal tells of"},
    {"--force", nullptr, "also a whole disk, and a folder that was renamed the same way already"},
    kJsonOption};

constexpr char kDetails[] =
    "Goes through DIR and the folders in it, the deepest first; links are not followed and DIR keeps its name. "
    "Nothing\n"
    "is overwritten: a name that is taken, or that the disk or Windows does not accept, is reported and left (status\n"
    "1). Links within DIR are pointed at new names. Each step of --apply is written to a journal first, from which\n"
    "--undo puts everything back.\n";

int refuse(const std::string& about, const std::string& reason) {
    complain(about, reason);
    return kUsageError;
}

int statusOf(const Report& report, const RunEnd& end) {
    return report.leftSome() || !end.reason.empty() ? kSomeFailed : kDone;
}

int runUndo(const Arguments& arguments) {
    const std::string path = arguments.value("--undo");
    if (!arguments.operands().empty() || arguments.has("--to-windows") || arguments.has("--to-mac") ||
        arguments.has("--apply") || arguments.has("--journal"))
        return refuse("rename", "--undo takes its journal and nothing else");
    Journal journal;
    std::string reason;
    if (!readJournal(path, journal, reason)) return refuse(path, reason);
    namesAreText = journal.isText;
    Report report(journal.tree, true, arguments.has("--json"));
    const RunEnd end = undo(journal, path, report);
    report.finish(nullptr, end, "");
    return statusOf(report, end);
}

/// Why the folder is not to be renamed; empty when nothing speaks against it.
std::string whyNot(const Arguments& arguments, const std::string& root) {
    if (arguments.has("--force")) return {};
    if (isRoot(root)) return "a whole disk: give --force if you mean it";
    const std::string earlier = journalOfEarlierRun(root, arguments.has("--to-windows"));
    if (earlier.empty()) return {};
    return "was renamed this way already, says " + plainPath(earlier) +
           ": rename --undo puts it back, --force would translate its names again";
}

/// Whether a file's folder is a resolved one, or is in it.
bool liesIn(const std::string& root, const std::string& file) {
    const std::size_t end = file.find_last_of(kDiskIgnoresCase ? "\\/:" : "/");
    std::string folder, ignored;
    const std::string given = end == std::string::npos ? "." : file.substr(0, end + 1);
    return resolveFolder(given, folder, ignored) && joined(folder, "").starts_with(joined(root, ""));
}

int run(const Arguments& arguments) {
    if (arguments.value("--undo")) return runUndo(arguments);
    if (arguments.operands().empty()) return refuse("rename", "an argument is missing: DIR");
    if (arguments.has("--to-mac") == arguments.has("--to-windows"))
        return refuse("rename", "give one of --to-windows and --to-mac");
    const std::string& folder = arguments.operands()[0];
    if (folder.empty()) return refuse("rename", "DIR is empty");
    std::string root, reason;
    if (!resolveFolder(folder, root, reason)) return refuse(folder, reason);
    reason = whyNot(arguments, root);
    if (!reason.empty()) return refuse(folder, reason);

    const bool toWindows = arguments.has("--to-windows"), applies = arguments.has("--apply");
    Report report(folder, applies, arguments.has("--json"));
    Tree tree;
    if (!readTree(root, toWindows ? newWindowsName : newMacName, toWindows || kDiskIgnoresCase, report, tree, reason))
        return refuse(folder, reason);
    RenameRun renaming(root, toWindows, tree, report);
    if (!applies || renaming.size() == 0) {
        renaming.plan();
        report.finish(&tree, {}, "");
        return statusOf(report, {});
    }
    const char* given = arguments.value("--journal");
    const std::string journal = given ? given : freeJournalName(root);
    if (given && liesIn(root, journal))
        return refuse(journal, "the journal may not lie in the folder that it tells of");
    if (!renaming.startJournal(journal, reason)) return refuse(plainPath(journal), reason);
    const RunEnd end = renaming.apply();
    report.finish(&tree, end, plainPath(journal));
    return statusOf(report, end);
}

constexpr Command kCommands[] = {
    {.name = "rename",
     .operands = "DIR",
     .summary = "give everything in a folder its Windows or Macintosh name",
     .details = kDetails,
     .options = kOptions,
     .fewest = 0,
     .most = 1,
     .run = run,
     .example = "rename --to-windows Copies"},
};

}  // namespace

std::span<const Command> renameCommands() {
    return kCommands;
}

}  // namespace tamrix::client
