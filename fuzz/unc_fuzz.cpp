// UNC paths: any path splits into parts that fit, and what is joined from parts without delimiters splits into them.
#include <cstring>
#include <memory>
#include <string>

#include "fuzz_input.h"
#include "macnames/unc.h"

namespace {

using fuzzing::require;

struct Outputs {
    Outputs(std::size_t size, unsigned restCapacity)
        : zone(new char[size]),
          name(new char[size]),
          share(new char[size]),
          rest(new char[restCapacity]),
          restSize(restCapacity) {
        for (char* part : {zone.get(), name.get(), share.get()}) std::strcpy(part, "");
    }
    tamrix::UncParts parts() { return {zone.get(), name.get(), share.get(), rest.get(), restSize}; }

    std::unique_ptr<char[]> zone, name, share, rest;
    unsigned restSize;
};

void splitAny(const tamrix::LeadByteTable& leads, const std::string& path, unsigned restSize) {
    if (!tamrix::hasUncPrefix(path.c_str())) return;
    const std::unique_ptr<char[]> copy(new char[path.size() + 1]);
    std::memcpy(copy.get(), path.c_str(), path.size() + 1);
    Outputs outputs(path.size() + 1, restSize);
    const int kind = tamrix::splitUnc(leads, copy.get(), outputs.parts());
    require(kind >= 0 && kind <= 2);
    require(kind != 2 || (outputs.zone[0] && outputs.name[0] && outputs.share[0]));
    require(restSize == 0 || std::memchr(outputs.rest.get(), 0, restSize) != nullptr);
}

void joinParts(const tamrix::LeadByteTable& leads, int kind, const std::string& zone, const std::string& name,
               const std::string& share) {
    const int needed = tamrix::uncLength(leads, kind, zone.c_str(), name.c_str(), share.c_str());
    if (needed == 0) return;
    const auto size = static_cast<unsigned short>(needed);
    const std::unique_ptr<char[]> path(new char[size]);
    const int joined = tamrix::joinUnc(leads, kind, path.get(), size, zone.c_str(), name.c_str(), share.c_str());
    require(std::strlen(path.get()) < size);
    for (const std::string& part : {zone, name, share})
        if (part.empty() || part.find_first_of("@`\\*") != std::string::npos || leads.leads(part.back())) return;
    Outputs outputs(size, 1);
    require(joined == 1 && tamrix::splitUnc(leads, path.get(), outputs.parts()) == kind);
    require(zone == outputs.zone.get() && name == outputs.name.get() && share == outputs.share.get());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::Input input(data, size);
    const tamrix::LeadByteTable leads = input.leadBytes();
    const int kind = input.byte() % 4;
    const unsigned restSize = input.byte();
    const std::string zone = input.text(40);
    const std::string name = input.text(40);
    joinParts(leads, kind, zone, name, input.text(40));
    const std::string path = input.rest();
    splitAny(leads, path, restSize);
    splitAny(leads, "\\\\" + path, restSize);
    return 0;
}
