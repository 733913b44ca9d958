// The exported functions for name conversion, which use the process's rules, and the in-place versions.
#include <memory>
#include <new>

#include "macnames/name_codec.h"
#include "macnames/name_settings.h"
#include "tamrix32/macnames.h"
#include "tamrix32/strings.h"

namespace {

using Translation = int (*)(const tamrix::NameRules& rules, char* dst, const char* name, unsigned size);

/// Converts into a temporary buffer of the same capacity and copies the result up to its first zero.
int translateInPlace(Translation translation, char* name, unsigned size) {
    if (size == 0) return translation(tamrix::nameRules, name, name, 0);
    const std::unique_ptr<char[]> translated(new (std::nothrow) char[size]);
    if (!translated) return tamrix::kDoesNotFit;
    const int result = translation(tamrix::nameRules, translated.get(), name, size);
    dbcs_strcpy(name, translated.get());
    return result;
}

}  // namespace

int TAMRIX_CALL AFPtoOSCopy(char* dst, const char* afpName, unsigned size) {
    return tamrix::macToWindows(tamrix::nameRules, dst, afpName, size);
}

int TAMRIX_CALL AFPtoOSLen(const char* afpName) {
    return tamrix::macToWindowsCapacity(tamrix::nameRules, afpName);
}

int TAMRIX_CALL AFPtoOS(char* name, unsigned size) {
    return translateInPlace(tamrix::macToWindows, name, size);
}

int TAMRIX_CALL OStoAFPCopy(char* dst, const char* osName, unsigned size) {
    return tamrix::windowsToMac(tamrix::nameRules, dst, osName, size);
}

int TAMRIX_CALL OStoAFPLen(const char* osName) {
    return tamrix::windowsToMacCapacity(tamrix::nameRules, osName);
}

int TAMRIX_CALL OStoAFP(char* name, unsigned size) {
    return translateInPlace(tamrix::windowsToMac, name, size);
}
