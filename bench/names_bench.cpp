// Name translation against a bare loop and against iconv, and string functions against C's, on the same names.
#include <benchmark/benchmark.h>
#include <iconv.h>

#include <cstring>

#include "bare_loops.h"
#include "frame/entry.h"
#include "frame/settings.h"
#include "names.h"
#include "ratio_reporter.h"
#include "tamrix32/macnames.h"
#include "tamrix32/strings.h"

namespace {

constexpr std::size_t kNames = 1024;

/// One way through iconv; bytes that it can't translate would end a call early, so names hold none of them.
class Converter {
public:
    Converter(const char* to, const char* from) : handle(iconv_open(to, from)) {}
    ~Converter() { iconv_close(handle); }
    std::size_t convert(char* dst, std::size_t room, const char* src, std::size_t size) {
        char* in = const_cast<char*>(src);
        char* out = dst;
        iconv(handle, nullptr, nullptr, nullptr, nullptr);
        if (iconv(handle, &in, &size, &out, &room) == static_cast<std::size_t>(-1)) return 0;
        return static_cast<std::size_t>(out - dst);
    }

private:
    iconv_t handle;
};

/// The bytes above 0x7F that iconv knows on both sides and that are not quoted.
std::string convertibleBytes() {
    Converter converter("CP1252", "MACINTOSH");
    std::string bytes;
    for (int value = 0x80; value < 0x100; ++value) {
        const char byte = static_cast<char>(value);
        char out[4];
        if (!tamrix::nameRules.inSet[value] && converter.convert(out, sizeof out, &byte, 1) == 1) bytes += byte;
    }
    return bytes;
}

struct Sample {
    std::vector<std::string> mac;
    std::vector<std::string> windows;
    std::vector<std::string> converted;  // the Macintosh names by iconv
    bare::Tables tables{};
};

const Sample& sample() {
    static const Sample made = [] {
        Sample names;
        Converter converter("CP1252", "MACINTOSH");
        names.mac = sampleNames(kNames, convertibleBytes());
        for (const std::string& name : names.mac) {
            char buffer[256];
            AFPtoOSCopy(buffer, name.c_str(), sizeof buffer);
            names.windows.push_back(buffer);
            names.converted.push_back({buffer, converter.convert(buffer, sizeof buffer, name.c_str(), name.size())});
        }
        for (int byte = 0; byte < 256; ++byte) {
            names.tables.toWindows[byte] = tamrix::nameRules.mac[byte].image();
            names.tables.toMac[byte] = tamrix::nameRules.windows[byte].image();
            names.tables.quoted[byte] = tamrix::nameRules.mac[byte].role() == tamrix::ByteRole::quoted;
            names.tables.decodes[byte] = tamrix::nameRules.decodes[byte];
        }
        return names;
    }();
    return made;
}

/// Times `work` on each name in turn; the work gets a buffer and the name and gives a number that depends on what it
/// did.
template <typename Work>
void measure(const char* label, const std::vector<std::string>& names, Work work) {
    benchmark::RegisterBenchmark(label, [&names, work](benchmark::State& state) {
        char buffer[512] = "";
        for (auto _ : state) {
            for (const std::string& name : names) {
                benchmark::DoNotOptimize(work(buffer, name));
                benchmark::ClobberMemory();
            }
        }
        state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * names.size()));
    });
}

void registerTranslation() {
    const Sample& names = sample();
    const bare::Tables& tables = names.tables;
    measure("AFPtoOSCopy", names.mac,
            [](char* dst, const std::string& name) { return AFPtoOSCopy(dst, name.c_str(), 256); });
    measure("bare_to_Windows", names.mac,
            [&tables](char* dst, const std::string& name) { return bare::toWindows(tables, dst, name.c_str()); });
    measure("OStoAFPCopy", names.windows,
            [](char* dst, const std::string& name) { return OStoAFPCopy(dst, name.c_str(), 256); });
    measure("bare_to_Macintosh", names.windows,
            [&tables](char* dst, const std::string& name) { return bare::toMac(tables, dst, name.c_str()); });
    static Converter toWindows("CP1252", "MACINTOSH");
    measure("iconv_to_Windows", names.mac, [](char* dst, const std::string& name) {
        return toWindows.convert(dst, 256, name.c_str(), name.size() + 1);
    });
    static Converter toMac("MACINTOSH", "CP1252");
    measure("iconv_to_Macintosh", names.converted,
            [](char* dst, const std::string& name) { return toMac.convert(dst, 256, name.c_str(), name.size() + 1); });
}

void registerStrings() {
    const std::vector<std::string>& names = sample().windows;
    using Name = const std::string&;
    measure("dbcs_strlen", names, [](char*, Name name) { return dbcs_strlen(name.c_str()); });
    measure("strlen", names, [](char*, Name name) { return std::strlen(name.c_str()); });
    measure("dbcs_strcpy", names, [](char* dst, Name name) { return dbcs_strcpy(dst, name.c_str()); });
    measure("strcpy", names, [](char* dst, Name name) { return std::strcpy(dst, name.c_str()); });
    measure("dbcs_strncpy", names, [](char* dst, Name name) { return dbcs_strncpy(dst, name.c_str(), 64); });
    measure("strncpy", names, [](char* dst, Name name) { return std::strncpy(dst, name.c_str(), 64); });
    measure("dbcs_strchr", names, [](char*, Name name) { return dbcs_strchr(name.c_str(), '~'); });
    measure("strchr", names, [](char*, Name name) { return std::strchr(name.c_str(), '~'); });
    measure("dbcs_strrchr", names, [](char*, Name name) { return dbcs_strrchr(name.c_str(), '.'); });
    measure("strrchr", names, [](char*, Name name) { return std::strrchr(name.c_str(), '.'); });
    // Equal strings in other places, so that every comparison runs to the end.
    static const std::vector<std::string> copies = names;
    const auto copyOf = [&names](Name name) { return copies[static_cast<std::size_t>(&name - names.data())].c_str(); };
    measure("dbcs_strcmp", names, [copyOf](char*, Name name) { return dbcs_strcmp(copyOf(name), name.c_str()); });
    measure("strcmp", names, [copyOf](char*, Name name) { return std::strcmp(copyOf(name), name.c_str()); });
    measure("dbcs_stricmp", names, [copyOf](char*, Name name) { return dbcs_stricmp(copyOf(name), name.c_str()); });
    measure("strcasecmp", names, [copyOf](char*, Name name) { return strcasecmp(copyOf(name), name.c_str()); });
}

}  // namespace

int main(int argc, char** argv) {
    DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr);
    std::vector<char*> arguments(argv, argv + argc);
    // Medians of interleaved runs, so that what else the machine does falls on all alike.
    std::string defaults[] = {"--benchmark_repetitions=9", "--benchmark_enable_random_interleaving=true",
                              "--benchmark_min_time=0.05", "--benchmark_display_aggregates_only=true"};
    for (std::string& option : defaults) arguments.insert(arguments.begin() + 1, option.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    registerTranslation();
    registerStrings();
    RatioReporter reporter({{"AFPtoOSCopy", "bare_to_Windows", 1.25},
                            {"OStoAFPCopy", "bare_to_Macintosh", 1.25},
                            {"AFPtoOSCopy", "iconv_to_Windows", 0.2},
                            {"OStoAFPCopy", "iconv_to_Macintosh", 0.2},
                            {"dbcs_strlen", "strlen", 1.3},
                            {"dbcs_strcpy", "strcpy", 1.3},
                            {"dbcs_strncpy", "strncpy", 1.3},
                            {"dbcs_strchr", "strchr", 1.3},
                            {"dbcs_strrchr", "strrchr", 1.3},
                            {"dbcs_strcmp", "strcmp", 1.3},
                            {"dbcs_stricmp", "strcasecmp", 1.3}});
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return reporter.printRatios() ? 0 : 1;
}
