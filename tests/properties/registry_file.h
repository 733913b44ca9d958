// The registry's file: any text is read whole or refused with a line of its own and nothing changed; any names and data
// that are saved come back byte for byte, and a name that the format can't hold stops the save instead of changing.
#pragma once

#include <standin.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "properties/property.h"
#include "registry_text.h"

namespace properties {

/// A registry file in a folder of its own.
class RegistryFile {
public:
    RegistryFile() { require(mkdtemp(folder_) != nullptr, "a folder"); }
    ~RegistryFile() {
        unlink(path().c_str());
        rmdir(folder_);
    }
    std::string path() const { return std::string(folder_) + "/registry.reg"; }
    std::string text() const {
        std::ostringstream content;
        content << std::ifstream(path(), std::ios::binary).rdbuf();
        return content.str();
    }
    standin::FileResult loadText(const std::string& text) const {
        std::ofstream(path(), std::ios::binary) << text;
        return standin::loadRegistry(path());
    }

private:
    char folder_[32] = "/tmp/tamrix-test.XXXXXX";
};

inline void property(Input& input) {
    static const RegistryFile file;
    const UINT pages[] = {1252, 932, 936, 949, 950};
    const UINT page = input.oneOf(pages);
    testing_support::emptyRegistry();
    require(standin::setCodePages(page, 437), "setCodePages");
    testing_support::givenValue(HKEY_CURRENT_USER, "before", "n", REG_SZ, "x");
    const auto before = testing_support::registryText();
    if (input.byte() % 4 == 0) {
        const std::string text = "REGEDIT4\n" + input.restBytes();
        const standin::FileResult result = file.loadText(text);
        const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
        require(result.ok == result.message.empty() && result.line <= lines && result.ok == !result.line, "the result");
        if (!result.ok) return require(testing_support::registryText() == before, "a refused file changes nothing");
    }
    while (!input.atEnd()) {
        const HKEY root = input.byte() % 2 ? HKEY_CLASSES_ROOT : HKEY_LOCAL_MACHINE;
        const std::string path = "k" + input.text(6), name = input.text(6);
        const DWORD types[] = {REG_SZ, REG_SZ, REG_BINARY, REG_DWORD, REG_DWORD, 7, 0x89ABCDEF};
        const DWORD type = input.oneOf(types);
        testing_support::givenValue(root, path, name.c_str(), type,
                                    input.bytes(40) + std::string(input.byte() % 2, '\0'));
    }
    const auto stored = testing_support::registryText();
    const standin::FileResult saved = standin::saveRegistry(file.path());
    require(saved.ok || saved.message.find("can't hold") != std::string::npos, saved.message);
    const bool isPlain = std::all_of(stored.begin(), stored.end(), [](const auto& entry) {
        return std::all_of(entry.first.begin(), entry.first.end(), [](char byte) { return byte >= ' ' && byte < '~'; });
    });
    require(saved.ok || !isPlain, "plain names are saved");
    if (!saved.ok) return;
    testing_support::emptyRegistry();
    require(standin::loadRegistry(file.path()).ok && testing_support::registryText() == stored, "what comes back");
}

}  // namespace properties
