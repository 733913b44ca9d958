// The native program: the library is linked in and loaded by hand, over the stand-in's code pages and registry, which
// is kept in a file.
#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <iconv.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "client/platform.h"
#include "frame/entry.h"
#include "standin.h"

namespace tamrix::client {

const char kPathSeparator = '/';
const bool kDiskNamesAreText = true;

namespace {

constexpr Option kOptions[] = {
    {"--code-page", "N", "the ANSI code page: 1252 (the default), 1251, 932, 936, 949 or 950"},
    {"--oem-code-page", "N", "the OEM code page: 437 (the default but for double-byte ones), 850 or another"},
    {"--registry", "FILE", "the REGEDIT4 file of settings and mappings"},
};

std::string registryFile;

std::string errorText() {
    return strerror(errno);
}

/// Makes every folder on the way to a file.
bool makeFoldersFor(const std::string& path) {
    for (std::size_t at = path.find('/', 1); at != std::string::npos; at = path.find('/', at + 1))
        if (mkdir(path.substr(0, at).c_str(), 0777) != 0 && errno != EEXIST) return false;
    return true;
}

std::string defaultRegistryFile() {
    const char* data = getenv("XDG_DATA_HOME");
    const char* home = getenv("HOME");
    if (data && data[0] == '/') return std::string(data) + "/tamrix/registry.reg";
    return home && home[0] ? std::string(home) + "/.local/share/tamrix/registry.reg" : "";
}

/// The number of a code page; 0 for what is none.
unsigned codePage(const char* text) {
    char* end = nullptr;
    const unsigned long number = strtoul(text, &end, 10);
    return *end == '\0' && number < 0x10000 ? static_cast<unsigned>(number) : 0;
}

bool chooseCodePages(const Arguments& arguments, std::string& reason) {
    const char* ansiText = arguments.value("--code-page");
    const char* oemText = arguments.value("--oem-code-page");
    const unsigned ansi = ansiText ? codePage(ansiText) : 1252;
    const bool isDouble = ansi == 932 || ansi == 936 || ansi == 949 || ansi == 950;
    const unsigned oem = oemText ? codePage(oemText) : isDouble ? ansi : 437;
    if (standin::setCodePages(ansi, oem)) return true;
    reason = "no such code page: ";
    const bool ansiIsKnown = standin::setCodePages(ansi, ansi);
    reason += !ansiIsKnown && ansiText ? "--code-page " + std::string(ansiText)
                                       : "--oem-code-page " + std::string(oemText ? oemText : "");
    return false;
}

/// Other runs that change the mappings wait here until this process ends and with it the lock.
bool lockFolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (!makeFoldersFor(path)) return false;
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const int handle = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    return handle >= 0 && flock(handle, LOCK_EX) == 0;
}

bool loadSettings(const Arguments& arguments, bool changesMappings, std::string& reason) {
    const char* given = arguments.value("--registry");
    registryFile = given ? given : defaultRegistryFile();
    if (registryFile.empty() && changesMappings)
        reason = "no home folder: name a file with --registry";
    else if (changesMappings && !lockFolderOf(registryFile))
        reason = registryFile + ": " + errorText();
    if (registryFile.empty() || !reason.empty()) return reason.empty();
    const standin::FileResult result = standin::loadRegistry(registryFile);
    if (result.ok || result.missing) return true;
    reason = registryFile + (result.line ? ":" + std::to_string(result.line) : "") + ": " + result.message;
    return false;
}

bool writeDevice(const std::string& path, const std::string& text) {
    FILE* device = fopen(path.c_str(), "wb");
    if (!device) return false;
    const bool written = fwrite(text.data(), 1, text.size(), device) == text.size();
    return fclose(device) == 0 && written;
}

bool convert(const char* to, const char* from, const char* bytes, std::size_t size, char* result, std::size_t& room) {
    const iconv_t converter = iconv_open(to, from);
    if (converter == reinterpret_cast<iconv_t>(-1)) return false;
    char* input = const_cast<char*>(bytes);
    const std::size_t failed = iconv(converter, &input, &size, &result, &room);
    iconv_close(converter);
    return failed == 0 && size == 0;
}

}  // namespace

std::span<const Option> platformOptions() {
    return kOptions;
}

void makeStreamsBinary() {}

bool startLibrary(const Arguments& arguments, bool changesMappings, std::string& reason) {
    if (!chooseCodePages(arguments, reason) || !loadSettings(arguments, changesMappings, reason)) return false;
    // As a loader would, now that the code pages are known: static construction, then the attachment.
    constructStatics();
    return DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr) != 0;
}

bool keepMappings(std::string& reason) {
    const standin::FileResult result = standin::saveRegistry(registryFile);
    if (!result.ok) reason = registryFile + ": " + result.message;
    return result.ok;
}

bool wideFromMac(const std::string& bytes, WideString& wide) {
    wide.resize(bytes.size() * 2);
    std::size_t room = wide.size() * sizeof(WCHAR);
    const bool done =
        convert("UTF-16LE", "MACINTOSH", bytes.data(), bytes.size(), reinterpret_cast<char*>(wide.data()), room);
    wide.resize(wide.size() - room / sizeof(WCHAR));
    return done;
}

bool macFromWide(const WideString& wide, std::string& bytes) {
    bytes.resize(wide.size());
    std::size_t room = bytes.size();
    const bool done = convert("MACINTOSH", "UTF-16LE", reinterpret_cast<const char*>(wide.data()),
                              wide.size() * sizeof(WCHAR), bytes.data(), room);
    bytes.resize(bytes.size() - room);
    return done;
}

std::string argumentText(const std::string& argument) {
    return argument;
}

bool readCounters(long& processes, long& threads) {
    processes = sharedCounters.processCount;
    threads = sharedCounters.threadCount;
    return true;
}

bool listFolder(const std::string& path, std::vector<FolderEntry>& entries, std::string& reason) {
    DIR* folder = opendir(path.c_str());
    if (!folder) {
        reason = errorText();
        return false;
    }
    // Its end is told from an error by errno alone.
    while (const dirent* found = (errno = 0, readdir(folder))) {
        const std::string name = found->d_name;
        struct stat status;
        if (name == "." || name == "..") continue;
        const bool known = fstatat(dirfd(folder), found->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0;
        entries.push_back({name, known && S_ISDIR(status.st_mode)});
    }
    if (errno != 0) reason = errorText();
    closedir(folder);
    return reason.empty();
}

std::string nameKey(const std::string& name) {
    return name;
}

const char* whyNotAName(const std::string& name) {
    if (name.empty() || name == "." || name == "..") return "this disk does not take the name";
    if (name.find('/') != std::string::npos) return "this disk does not take a slash in a name";
    if (name.find('\0') != std::string::npos) return "this disk does not take a zero byte in a name";
    return name.size() > NAME_MAX ? "the name is too long for this disk" : nullptr;
}

bool writeWholeFile(const std::string& path, const std::string& text, std::string& reason) {
    struct stat status;
    const bool isThere = stat(path.c_str(), &status) == 0;
    bool written = false;
    if (isThere && !S_ISREG(status.st_mode)) {
        written = writeDevice(path, text);
    } else if (isThere ? access(path.c_str(), W_OK) == 0 : errno == ENOENT) {
        const standin::FileResult result = standin::replaceFile(path, text);
        if (!result.ok) reason = "cannot write: " + result.reason;
        return result.ok;
    }
    if (!written) reason = "cannot write: " + errorText();
    return written;
}

bool renameWithoutOverwriting(const std::string& from, const std::string& to, std::string& reason) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
    struct stat status;
    if (errno == EINVAL || errno == ENOSYS) {
        // A file system without that kind of renaming.
        if (lstat(to.c_str(), &status) == 0)
            errno = EEXIST;
        else if (rename(from.c_str(), to.c_str()) == 0)
            return true;
    }
    reason = errno == EEXIST ? "collision: the name is taken" : errorText();
    return false;
}

}  // namespace tamrix::client
