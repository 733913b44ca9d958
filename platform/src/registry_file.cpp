// The registry in a file: loaded whole or not at all, and saved so that a crash leaves the old file or the new one.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "faults.h"
#include "regedit4.h"

namespace standin {
namespace {

// An open file; closes itself.
class File {
public:
    explicit File(int descriptor) : descriptor_(descriptor) {}
    ~File() { close(); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    bool isOpen() const { return descriptor_ >= 0; }
    int descriptor() const { return descriptor_; }

    bool close() {
        const bool closed = descriptor_ < 0 || ::close(descriptor_) == 0;
        descriptor_ = -1;
        return closed;
    }

private:
    int descriptor_;
};

FileResult failure(const std::string& what, const std::string& path) {
    FileResult result;
    result.missing = errno == ENOENT;
    result.reason = std::strerror(errno);
    result.message = what + " " + path + ": " + result.reason;
    return result;
}

bool readAll(const File& file, std::string& text) {
    char buffer[65536];
    ssize_t size = 0;
    while ((size = ::read(file.descriptor(), buffer, sizeof buffer)) > 0)
        text.append(buffer, static_cast<std::size_t>(size));
    return size == 0;
}

bool writeAll(const File& file, std::string_view text) {
    while (!text.empty()) {
        const ssize_t size = ::write(file.descriptor(), text.data(), text.size());
        if (size < 0 && errno == EINTR) continue;
        if (size < 0) return false;
        text.remove_prefix(static_cast<std::size_t>(size));
    }
    return true;
}

std::string folderOf(const std::string& path) {
    const auto slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

// The file behind symbolic links, even one that is not there yet, so that replacing it doesn't replace a link to it.
std::string realTarget(std::string path) {
    char resolved[PATH_MAX];
    for (int links = 0; links < 40; ++links) {
        if (::realpath(path.c_str(), resolved)) return resolved;
        const ssize_t size = ::readlink(path.c_str(), resolved, sizeof resolved);
        if (size <= 0) break;
        std::string next(resolved, static_cast<std::size_t>(size));
        if (next[0] != '/') next.insert(0, folderOf(path) + "/");
        path = std::move(next);
    }
    return path;
}

mode_t modeFor(const std::string& target) {
    struct stat status {};
    if (::stat(target.c_str(), &status) == 0) return status.st_mode & 07777;
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

// One saving: its steps in order, each of which the plan may cut.
class Saving {
public:
    explicit Saving(const std::string& path)
        : target_(realTarget(path)), temporary_(folderOf(target_) + "/tamrix.XXXXXX") {}

    FileResult run(std::string_view text) {
        if (writeTemporary(text) && replace())
            return {.ok = true, .missing = false, .line = 0, .message = {}, .reason = {}};
        if (cut_) return {.ok = false, .missing = false, .line = 0, .message = "cut by plan", .reason = {}};
        FileResult result = failure("cannot write", target_);
        if (made_) ::unlink(temporary_.c_str());
        return result;
    }

private:
    bool step() {
        cut_ = cut_ || faultDue(Kind::fileStep);
        return !cut_;
    }

    bool writeTemporary(std::string_view text) {
        if (!step()) return false;
        File file(::mkstemp(temporary_.data()));
        if (!file.isOpen()) return false;
        made_ = true;
        const std::size_t allowed = stepsBeforeFault(Kind::fileStep, text.size());
        if (!writeAll(file, text.substr(0, allowed))) return false;
        cut_ = allowed < text.size();
        if (cut_ || ::fchmod(file.descriptor(), modeFor(target_)) != 0) return false;
        return step() && ::fsync(file.descriptor()) == 0 && file.close();
    }

    bool replace() {
        if (!step() || ::rename(temporary_.c_str(), target_.c_str()) != 0) return false;
        made_ = false;
        if (!step()) return false;
        // Where a folder can't be flushed the new name is in place all the same.
        const File folder(::open(folderOf(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (folder.isOpen()) ::fsync(folder.descriptor());
        return true;
    }

    std::string target_;
    std::string temporary_;
    bool made_ = false;  // the temporary exists under its own name
    bool cut_ = false;
};

}  // namespace

FileResult loadRegistry(const std::string& path) {
    // Not blocking, so that a pipe without a writer is refused as well.
    const File file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.isOpen()) return failure("cannot open", path);
    // A device or pipe may never end, and saving would put a file in its place.
    struct stat status {};
    if (::fstat(file.descriptor(), &status) != 0) return failure("cannot read", path);
    FileResult result;
    if (!S_ISREG(status.st_mode)) {
        result.message = "cannot read " + path + ": not a regular file";
        return result;
    }
    std::string text;
    if (!readAll(file, text)) return failure("cannot read", path);
    const std::scoped_lock lock(registry().guard);
    for (const FileKey& fileKey : readRegedit4(text, result)) {
        bool created = false;
        const auto key = createKey(fileKey.root, fileKey.path, created);
        for (const FileValue& fileValue : fileKey.values) {
            Value& value = key->addValue(fileValue.name);
            value.type = fileValue.type;
            value.data = std::vector<BYTE>(fileValue.data.begin(), fileValue.data.end());
        }
    }
    return result;
}

FileResult saveRegistry(const std::string& path) {
    FileResult result;
    std::optional<std::string> text;
    {
        const std::scoped_lock lock(registry().guard);
        text = writeRegedit4(result.message);
    }
    return text ? replaceFile(path, *text) : result;
}

FileResult replaceFile(const std::string& path, std::string_view text) {
    return Saving(path).run(text);
}

}  // namespace standin
