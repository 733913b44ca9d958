// Compares name conversion with a minimal loop, iconv and ICU, and string functions with C's, on the same names and on
// 1,000 names joined to one.
#include <benchmark/benchmark.h>
#include <iconv.h>
#ifdef TAMRIX_BENCH_ICU
#include <unicode/ucnv.h>
#endif

#include <cstring>

#include "bare_loops.h"
#include "calls.h"
#include "entry/entry.h"
#include "macnames/name_settings.h"
#include "measure.h"
#include "names.h"
#include "tamrix32/macnames.h"
#include "tamrix32/strings.h"

namespace {

constexpr std::size_t kNames = 1000;

/// Conversion by iconv in one direction. The names contain only bytes that it can convert, because another byte would
/// end a call early.
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

/// The bytes above 0x7F that iconv can convert in both directions and that are not quoted.
std::string convertibleBytes() {
    Converter converter("CP1252", "MACINTOSH");
    std::string bytes;
    for (int value = 0x80; value < 0x100; ++value) {
        const char byte = static_cast<char>(value);
        char out[4];
        if (!tamrix::nameRules.decodes[value] && converter.convert(out, sizeof out, &byte, 1) == 1) bytes += byte;
    }
    return bytes;
}

struct Sample {
    Texts mac;
    Texts windows;
    Texts converted;  // the Macintosh names, converted by iconv
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
    compare(
        "AFPtoOSCopy", names.mac,
        [](char* dst, const Text& text) { return AFPtoOSCopy(dst, text.name.c_str(), kRoom); }, "bare loop to Windows",
        [&tables](char* dst, const Text& text) { return bare::toWindows(tables, dst, text.name.c_str()); }, 1.25);
    static Converter toWindows("CP1252", "MACINTOSH");
    measureConverter("iconv to Windows", names.mac, toWindows);
    rows().push_back({"AFPtoOSCopy", "iconv to Windows", 0.2});
#ifdef TAMRIX_BENCH_ICU
    measureIcu("ICU to Windows", names.mac, "windows-1252", "macintosh");
    rows().push_back({"AFPtoOSCopy", "ICU to Windows", kNoLimit});
#endif
    compare(
        "OStoAFPCopy", names.windows,
        [](char* dst, const Text& text) { return OStoAFPCopy(dst, text.name.c_str(), kRoom); },
        "bare loop to Macintosh",
        [&tables](char* dst, const Text& text) { return bare::toMac(tables, dst, text.name.c_str()); }, 1.25);
    static Converter toMac("MACINTOSH", "CP1252");
    measureConverter("iconv to Macintosh", names.converted, toMac);
    rows().push_back({"OStoAFPCopy", "iconv to Macintosh", 0.2});
#ifdef TAMRIX_BENCH_ICU
    measureIcu("ICU to Macintosh", names.converted, "macintosh", "windows-1252");
    rows().push_back({"OStoAFPCopy", "ICU to Macintosh", kNoLimit});
#endif
}

/// Compares the length function with a counting loop, and conversion in place with a loop that uses a temporary block.
template <typename Length, typename Loop>
void compareForms(const Texts& texts, const char* direction, const char* length, int (*ours)(const char*), Length bare,
                  const char* inPlace, int (*translate)(char*, unsigned), Loop loop) {
    const bare::Tables& tables = sample().tables;
    compare(
        length, texts, [ours](char*, const Text& text) { return ours(text.name.c_str()); },
        std::string("bare length to ") + direction,
        [=, &tables](char*, const Text& text) { return bare(tables, text.name.c_str()); }, 1.25);
    // The maximum that quoting may need.
    const auto room = [](const Text& text) { return static_cast<unsigned>(5 * text.name.size() + 1); };
    compare(
        inPlace, texts, [=](char* dst, const Text& text) { return translate(calls::fresh(dst, text), room(text)); },
        std::string("loop and block, to ") + direction,
        [=, &tables](char* dst, const Text& text) {
            return bare::inPlace(loop, tables, calls::fresh(dst, text), room(text));
        },
        1.25);
}

/// Compares the library's conversion by the character table with a loop that gets the same table as an argument.
template <typename Ours, typename Bare, typename Call>
void compareTable(const char* label, Ours* ours, const char* reference, Bare* loop, const unsigned char* table,
                  Call call) {
    const auto work = [=](char* dst, const Text& text) {
        const auto translate = [ours](auto... arguments) { return ours(arguments...), 0; };
        return call(translate, dst, text);
    };
    const auto other = [=](char* dst, const Text& text) {
        const auto translate = [loop, table](auto... arguments) { return loop(table, arguments...); };
        return call(translate, dst, text);
    };
    compare(label, sample().mac, work, reference, other, 1.25);
}

void registerOtherForms() {
    const Sample& names = sample();
    compareForms(names.mac, "Windows", "AFPtoOSLen", AFPtoOSLen, bare::windowsLength, "AFPtoOS in place", AFPtoOS,
                 bare::toWindows);
    compareForms(names.windows, "Macintosh", "OStoAFPLen", OStoAFPLen, bare::macLength, "OStoAFP in place", OStoAFP,
                 bare::toMac);
    const bare::Tables& tables = names.tables;
    compareTable("SBCS_AtoI", SBCS_AtoI, "table, in place", bare::translate, tables.toWindows, calls::inPlace);
    compareTable("SBCS_AtoI_Copy", SBCS_AtoI_Copy, "table, copied", bare::copy, tables.toWindows, calls::copy);
    compareTable("SBCS_AtoI_nCopy", SBCS_AtoI_nCopy, "table, filled up", bare::copyFilled, tables.toWindows,
                 calls::copyBounded);
    compareTable("SBCS_ItoA", SBCS_ItoA, "table, in place, back", bare::translate, tables.toMac, calls::inPlace);
    compareTable("SBCS_ItoA_Copy", SBCS_ItoA_Copy, "table, copied, back", bare::copy, tables.toMac, calls::copy);
    compareTable("SBCS_ItoA_nCopy", SBCS_ItoA_nCopy, "table, filled up, back", bare::copyFilled, tables.toMac,
                 calls::copyBounded);
}

/// Compares two functions that are called in the same way; `call` gets the function, a buffer and a text.
template <typename Ours, typename Theirs, typename Call>
void comparePair(const char* label, Ours* ours, const char* reference, Theirs* theirs, Call call, double limit = 1.3) {
    compare(
        label, sample().windows, [=, f = opaque(ours)](char* dst, const Text& text) { return call(f, dst, text); },
        reference, [=, f = opaque(theirs)](char* dst, const Text& text) { return call(f, dst, text); }, limit);
}

void registerStrings() {
    using namespace calls;
    using Find = const char*(const char*, int);
    // dbcs_strlen converts the result of strlen to an int, so the limit is for a function that does the same. The row
    // for strlen itself is for information.
    comparePair("dbcs_strlen", dbcs_strlen, "strlen as an int", bare::length, length);
    measureEach("strlen", sample().windows.each,
                [=, f = opaque(std::strlen)](char* dst, const Text& text) { return length(f, dst, text); });
    rows().push_back({"dbcs_strlen", "strlen", kNoLimit});
    comparePair("dbcs_strcpy", dbcs_strcpy, "strcpy", std::strcpy, copy);
    comparePair("dbcs_strcat", dbcs_strcat, "strcat", std::strcat, append);
    comparePair("dbcs_strncpy", dbcs_strncpy, "strncpy", std::strncpy, copyBounded);
    comparePair<char*(const char*, int), Find>("dbcs_strchr", dbcs_strchr, "strchr", std::strchr, find);
    comparePair<char*(const char*, int), Find>("dbcs_strrchr", dbcs_strrchr, "strrchr", std::strrchr, find);
    comparePair("dbcs_strcmp", dbcs_strcmp, "strcmp", std::strcmp, calls::compare);
    // The limits are for a loop, because standard C has no case-insensitive comparison. strcasecmp uses vector
    // instructions and reads past the terminator, which only the C library may do; its rows are for information.
    const auto compareWithLoop = [](const char* label, const char* reference, auto call) {
        measureEach(reference, sample().windows.each,
                    [=](char* dst, const Text& text) { return call(bare::compareByTolower, dst, text); });
        rows().push_back({label, reference, 1.3});
    };
    comparePair("dbcs_stricmp", dbcs_stricmp, "strcasecmp", strcasecmp, calls::compare, kNoLimit);
    compareWithLoop("dbcs_stricmp", "tolower loop", calls::compare);
    comparePair("dbcs_stricmp, other case", dbcs_stricmp, "strcasecmp, other case", strcasecmp, compareCase, kNoLimit);
    compareWithLoop("dbcs_stricmp, other case", "tolower loop, other case", compareCase);
    comparePair("dbcs_strupr", dbcs_strupr, "toupper loop, in place", bare::upper, inPlace);
    comparePair("dbcs_strlwr", dbcs_strlwr, "tolower loop, in place", bare::lower, inPlace);
    comparePair("BufStrCpy", BufStrCpy, "memccpy", bare::copyUpTo, copyBounded);
    comparePair("BufStrCpy, cut", BufStrCpy, "memccpy, cut", bare::copyUpTo, copyCut);
    comparePair("dbcs_prevchar", dbcs_prevchar, "a pointer less one", bare::previous, previous, kNoLimit);
    comparePair("dbcs_trunc", dbcs_trunc, "strnlen", bare::truncated, cut, kNoLimit);
    comparePair("isdbchar of each byte", isdbchar, "isalpha of each byte", bare::isLetter, ofEachByte, kNoLimit);
}

}  // namespace

int main(int argc, char** argv) {
    DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr);
    registerTranslation();
    registerOtherForms();
    registerStrings();
    return runAndPrint(argc, argv, rows());
}
