// tamrix rename: converts the names of everything in a folder, and undoes that.
#include "client/command.h"
#include "client/output.h"
#include "client/rename_names.h"
#include "client/rename_report.h"
#include "client/rename_run.h"

namespace tamrix::client {
namespace {

constexpr Option kOptions[] = {
    {.name = "--to-windows", .help = "DIR contains Macintosh names"},
    {.name = "--to-mac", .help = "DIR contains Windows names"},
    {.name = "--apply", .help = "rename; without it, only list the new names"},
    {.name = "--journal", .value = "FILE", .help = "record the steps in this new file (default: a file next to DIR)"},
    {.name = "--undo", .value = "FILE", .help = "revert the steps in this journal"},
    {.name = "--force",
     .help = "also rename a whole disk, or a folder that has already been renamed in this direction"},
    kJsonOption};

constexpr char kDetails[] =
    "Renames everything in DIR and its subfolders, the deepest entries first. DIR keeps its name, and links are not\n"
    "followed. Nothing is overwritten: if a new name already exists, or the disk or Windows does not accept it, the\n"
    "entry is reported and skipped (exit status 1). Links to entries in DIR are changed to point to the new names; on\n"
    "Windows they are only reported. --apply records each step in a journal first; --undo reverts the steps in it.\n";

int refuse(const std::string& about, const std::string& reason) {
    complain(about, reason);
    return kUsageError;
}

int statusOf(const Report& report, const RunEnd& end) {
    return report.skippedSome() || !end.reason.empty() ? kSomeFailed : kDone;
}

int runUndo(const Arguments& arguments) {
    const std::string path = arguments.value("--undo");
    if (!arguments.operands().empty() || arguments.has("--to-windows") || arguments.has("--to-mac") ||
        arguments.has("--apply") || arguments.has("--journal"))
        return refuse("rename", "--undo takes only the journal");
    Journal journal;
    AppendFile file;
    std::string reason;
    if (!openJournal(path, journal, file, reason)) return refuse(path, reason);
    // The options say whether the journal's path is text or bytes; the journal says it for the names in it.
    namesAreText = journal.isText;
    Report report(journal.tree, true, arguments.has("--json"));
    const RunEnd end = undo(journal, file, report);
    report.finish(nullptr, end, "");
    return statusOf(report, end);
}

/// The error message for renaming again what the journal records; empty if there is no journal.
std::string whyNotTwice(const std::string& what, const std::string& journal) {
    if (journal.empty()) return {};
    return what + "has already been renamed in this direction (journal: " + plainPath(journal) +
           "); use --undo to revert it, or --force to convert the names again";
}

/// Why the folder must not be renamed; empty if it may be.
std::string whyNot(const Arguments& arguments, const std::string& root) {
    if (arguments.has("--force")) return {};
    if (isRoot(root)) return "this is a whole disk; use --force to rename it anyway";
    return whyNotTwice("", journalOfEarlierRun(root, arguments.has("--to-windows")));
}

/// Whether a file is in the resolved folder `root` or in one of its subfolders.
bool isInFolder(const std::string& root, const std::string& file) {
    const std::size_t end = file.find_last_of(kDiskIgnoresCase ? "\\/:" : "/");
    std::string folder, ignored;
    const std::string given = end == std::string::npos ? "." : file.substr(0, end + 1);
    return resolveFolder(given, folder, ignored) && joined(folder, "").starts_with(joined(root, ""));
}

int run(const Arguments& arguments) {
    if (arguments.value("--undo")) return runUndo(arguments);
    if (arguments.operands().empty()) return refuse("rename", "missing argument: DIR");
    if (arguments.has("--to-mac") == arguments.has("--to-windows"))
        return refuse("rename", "use either --to-windows or --to-mac");
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
    if (!arguments.has("--force")) reason = whyNotTwice("a folder in it ", journalInTree(tree, root, toWindows));
    if (!reason.empty()) return report.refuse(folder, reason);
    RenameRun renaming(root, toWindows, tree, report);
    if (!applies || renaming.size() == 0) {
        renaming.plan();
        report.finish(&tree, {}, "");
        return statusOf(report, {});
    }
    const char* given = arguments.value("--journal");
    const std::string journal = given ? given : freeJournalName(root);
    if (given && isInFolder(root, journal))
        return report.refuse(journal, "the journal must not be in the folder to rename");
    if (!renaming.startJournal(journal, reason)) return report.refuse(plainPath(journal), reason);
    const RunEnd end = renaming.apply();
    report.finish(&tree, end, plainPath(journal));
    return statusOf(report, end);
}

constexpr Command kCommands[] = {
    {.name = "rename",
     .operands = "DIR",
     .summary = "convert the names of everything in a folder",
     .details = kDetails,
     .options = kOptions,
     .maxOperands = 1,
     .run = run,
     .example = "rename --to-windows Copies"},
};

}  // namespace

std::span<const Command> renameCommands() {
    return kCommands;
}

}  // namespace tamrix::client
