// The native program: the library is linked in and runs on the stand-in's code pages and registry, which is stored in a
// file. This file calls the library's entry point.
#include <errno.h>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "client/system/error_text.h"
#include "client/system/registry_file_native.h"
#include "client/system/startup.h"
#include "entry/entry.h"
#include "standin.h"

namespace tamrix::client {
namespace {

constexpr Option kOptions[] = {
    {.name = "--code-page", .value = "N", .help = "the ANSI code page: 1252 (default), 1251, 932, 936, 949 or 950"},
    {.name = "--oem-code-page",
     .value = "N",
     .help = "the OEM code page: 437, 850, 866 or another (default: the one that Windows has with the ANSI code page)"},
    {.name = "--registry", .value = "FILE", .help = "the REGEDIT4 file with settings and mappings"},
};

std::string registryFile;

/// Creates the missing folders of a file's path.
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

/// Parses the number of a code page; 0 if it is not one.
unsigned codePage(const char* text) {
    char* end = nullptr;
    const unsigned long number = strtoul(text, &end, 10);
    return *end == '\0' && number < 0x10000 ? static_cast<unsigned>(number) : 0;
}

bool chooseCodePages(const Arguments& arguments, std::string& reason) {
    const char* ansiText = arguments.value("--code-page");
    const char* oemText = arguments.value("--oem-code-page");
    const unsigned ansi = ansiText ? codePage(ansiText) : 1252;
    // As on Windows: Western and Cyrillic systems have an OEM code page of their own.
    const unsigned usual = ansi == 1252 ? 437 : ansi == 1251 ? 866 : ansi;
    const unsigned oem = oemText ? codePage(oemText) : usual;
    if (standin::setCodePages(ansi, oem)) return true;
    reason = "no such code page: ";
    const bool ansiIsKnown = standin::setCodePages(ansi, ansi);
    reason += !ansiIsKnown && ansiText ? "--code-page " + std::string(ansiText)
                                       : "--oem-code-page " + std::string(oemText ? oemText : "");
    return false;
}

/// Locks the folder of the registry file until this process ends; waits while another run has the lock.
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
        reason = "no home folder; use --registry FILE";
    else if (changesMappings && !lockFolderOf(registryFile))
        reason = registryFile + ": " + errorText();
    if (registryFile.empty() || !reason.empty()) return reason.empty();
    return loadRegistry(registryFile, reason);
}

}  // namespace

std::span<const Option> platformOptions() {
    return kOptions;
}

bool startLibrary(const Arguments& arguments, bool changesMappings, std::string& reason) {
    if (!chooseCodePages(arguments, reason) || !loadSettings(arguments, changesMappings, reason)) return false;
    // Attaches the library as a loader would, once the code pages are known.
    return DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr) != 0;
}

bool saveMappings(std::string& reason) {
    return saveRegistry(registryFile, reason);
}

bool readCounters(long& processes, long& threads) {
    processes = sharedCounters.processCount;
    threads = sharedCounters.threadCount;
    return true;
}

}  // namespace tamrix::client
