// Name translation against a bare loop, iconv and ICU, and string functions against C's, on the same names; and all on
// a thousand names joined to one.
#include <benchmark/benchmark.h>
#include <iconv.h>
#ifdef TAMRIX_BENCH_ICU
#include <unicode/ucnv.h>
#endif

#include <cstring>

#include "bare_loops.h"
#include "calls.h"
#include "frame/entry.h"
#include "frame/settings.h"
#include "names.h"
#include "table_reporter.h"
#include "tamrix32/macnames.h"
#include "tamrix32/strings.h"

namespace {

constexpr std::size_t kNames = 1000;
constexpr unsigned kRoom = 1 << 18;

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
    Texts mac;
    Texts windows;
    Texts converted;  // the Macintosh names by iconv
    bare::Tables tables{};
};

const Sample& sample() {
    static const Sample made = [] {
        Sample names;
        Converter converter("CP1252", "MACINTOSH");
        for (const std::string& name : sampleNames(kNames, convertibleBytes())) {
            char buffer[256];
            names.mac.add(name);
            AFPtoOSCopy(buffer, name.c_str(), sizeof buffer);
            names.windows.add(buffer);
            names.converted.add({buffer, converter.convert(buffer, sizeof buffer, name.c_str(), name.size())});
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

/// Times `work` on each text in turn; the work gets a buffer and the text and gives a number that depends on what it
/// did.
template <typename Work>
void measureEach(const std::string& label, const std::vector<Text>& texts, Work work) {
    benchmark::RegisterBenchmark(label.c_str(), [&texts, work](benchmark::State& state) {
        std::vector<char> buffer(kRoom);
        for (auto _ : state) {
            for (const Text& text : texts) {
                benchmark::DoNotOptimize(work(buffer.data(), text));
                benchmark::ClobberMemory();
            }
        }
        state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * texts.size()));
    });
}

template <typename Work>
void measure(const std::string& label, const Texts& texts, Work work) {
    measureEach(label, texts.each, work);
    measureEach(thousandTimesTheWork(label), texts.joined, work);
}

void measureConverter(const std::string& label, const Texts& texts, Converter& converter) {
    measureEach(label, texts.each, [&converter](char* dst, const Text& text) {
        return converter.convert(dst, kRoom, text.name.c_str(), text.name.size() + 1);
    });
}

#ifdef TAMRIX_BENCH_ICU
void measureIcu(const std::string& label, const Texts& texts, const char* to, const char* from) {
    UErrorCode error = U_ZERO_ERROR;
    UConverter* const target = ucnv_open(to, &error);
    UConverter* const source = ucnv_open(from, &error);
    measureEach(label, texts.each, [=](char* dst, const Text& text) {
        char* out = dst;
        const char* in = text.name.c_str();
        UErrorCode result = U_ZERO_ERROR;
        ucnv_convertEx(target, source, &out, dst + kRoom, &in, in + text.name.size() + 1, nullptr, nullptr, nullptr,
                       nullptr, 1, 1, &result);
        return out - dst;
    });
}
#endif

void registerTranslation() {
    const Sample& names = sample();
    const bare::Tables& tables = names.tables;
    measure("AFPtoOSCopy", names.mac,
            [](char* dst, const Text& text) { return AFPtoOSCopy(dst, text.name.c_str(), kRoom); });
    measureEach("bare loop to Windows", names.mac.each,
                [&tables](char* dst, const Text& text) { return bare::toWindows(tables, dst, text.name.c_str()); });
    measure("OStoAFPCopy", names.windows,
            [](char* dst, const Text& text) { return OStoAFPCopy(dst, text.name.c_str(), kRoom); });
    measureEach("bare loop to Macintosh", names.windows.each,
                [&tables](char* dst, const Text& text) { return bare::toMac(tables, dst, text.name.c_str()); });
    static Converter toWindows("CP1252", "MACINTOSH");
    measureConverter("iconv to Windows", names.mac, toWindows);
    static Converter toMac("MACINTOSH", "CP1252");
    measureConverter("iconv to Macintosh", names.converted, toMac);
#ifdef TAMRIX_BENCH_ICU
    measureIcu("ICU to Windows", names.mac, "windows-1252", "macintosh");
    measureIcu("ICU to Macintosh", names.converted, "macintosh", "windows-1252");
#endif
}

/// Kept from the compiler, so that the library's functions and C's are called alike and none is inlined.
template <typename Function>
Function* called(Function* function) {
    Function* volatile kept = function;
    return kept;
}

/// Measures two functions in the same way; `call` gets the function, a buffer and a text.
template <typename Ours, typename Theirs, typename Call>
void measurePair(const char* label, Ours* ours, const char* reference, Theirs* theirs, Call call) {
    const Texts& texts = sample().windows;
    measure(label, texts, [=, f = called(ours)](char* dst, const Text& text) { return call(f, dst, text); });
    measureEach(reference, texts.each,
                [=, f = called(theirs)](char* dst, const Text& text) { return call(f, dst, text); });
}

void registerStrings() {
    using namespace calls;
    using Find = const char*(const char*, int);
    measurePair("dbcs_strlen", dbcs_strlen, "strlen", std::strlen, length);
    measurePair("dbcs_strcpy", dbcs_strcpy, "strcpy", std::strcpy, copy);
    measurePair("dbcs_strcat", dbcs_strcat, "strcat", std::strcat, append);
    measurePair("dbcs_strncpy", dbcs_strncpy, "strncpy", std::strncpy, copyBounded);
    measurePair<char*(const char*, int), Find>("dbcs_strchr", dbcs_strchr, "strchr", std::strchr, find);
    measurePair<char*(const char*, int), Find>("dbcs_strrchr", dbcs_strrchr, "strrchr", std::strrchr, find);
    measurePair("dbcs_strcmp", dbcs_strcmp, "strcmp", std::strcmp, compare);
    measurePair("dbcs_stricmp", dbcs_stricmp, "strcasecmp", strcasecmp, compare);
    measurePair("dbcs_stricmp, other case", dbcs_stricmp, "strcasecmp, other case", strcasecmp, compareCase);
    // C itself has no comparison without case. The vendor's, written for vector units, reads past terminators, which is
    // the vendor's privilege; it is there to be seen.
    measureEach("tolower loop", sample().windows.each,
                [=](char* dst, const Text& text) { return compare(bare::compareByTolower, dst, text); });
    measureEach("tolower loop, other case", sample().windows.each,
                [=](char* dst, const Text& text) { return compareCase(bare::compareByTolower, dst, text); });
}

}  // namespace

int main(int argc, char** argv) {
    DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr);
    registerTranslation();
    registerStrings();
    return runAndPrint(argc, argv,
                       {{"AFPtoOSCopy", "bare loop to Windows", 1.25},
                        {"AFPtoOSCopy", "iconv to Windows", 0.2},
#ifdef TAMRIX_BENCH_ICU
                        {"AFPtoOSCopy", "ICU to Windows", kNoLimit},
#endif
                        {"OStoAFPCopy", "bare loop to Macintosh", 1.25},
                        {"OStoAFPCopy", "iconv to Macintosh", 0.2},
#ifdef TAMRIX_BENCH_ICU
                        {"OStoAFPCopy", "ICU to Macintosh", kNoLimit},
#endif
                        {"dbcs_strlen", "strlen", 1.3},
                        {"dbcs_strcpy", "strcpy", 1.3},
                        {"dbcs_strcat", "strcat", 1.3},
                        {"dbcs_strncpy", "strncpy", 1.3},
                        {"dbcs_strchr", "strchr", 1.3},
                        {"dbcs_strrchr", "strrchr", 1.3},
                        {"dbcs_strcmp", "strcmp", 1.3},
                        {"dbcs_stricmp", "strcasecmp", kNoLimit},
                        {"dbcs_stricmp", "tolower loop", 1.3},
                        {"dbcs_stricmp, other case", "strcasecmp, other case", kNoLimit},
                        {"dbcs_stricmp, other case", "tolower loop, other case", 1.3}});
}
