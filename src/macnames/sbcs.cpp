#include "macnames/sbcs.h"

#include <cstring>

#include "macnames/name_settings.h"
#include "tamrix32/macnames.h"

namespace tamrix {
namespace {

char imageOf(const CharacterTable* table, TableColumn column, char byte) {
    return table ? static_cast<char>((*table)[static_cast<unsigned char>(byte)].*column) : byte;
}

}  // namespace

void translateString(const CharacterTable* table, TableColumn column, char* s) {
    if (!table) return;
    for (; *s; ++s) *s = imageOf(table, column, *s);
}

void copyTranslated(const CharacterTable* table, TableColumn column, char* dst, const char* src, std::size_t size) {
    std::size_t count = 0;
    for (; count != size && src[count]; ++count) dst[count] = imageOf(table, column, src[count]);
    std::memset(dst + count, 0, size - count);
}

void copyTranslated(const CharacterTable* table, TableColumn column, char* dst, const char* src) {
    for (; *src; ++src) *dst++ = imageOf(table, column, *src);
    *dst = 0;
}

}  // namespace tamrix

using tamrix::CharacterPair;
using tamrix::copyTranslated;
using tamrix::sbcsTranslator;
using tamrix::translateString;

void TAMRIX_CALL SBCS_AtoI(char* s) {
    translateString(sbcsTranslator.table, &CharacterPair::toWindows, s);
}

void TAMRIX_CALL SBCS_ItoA(char* s) {
    translateString(sbcsTranslator.table, &CharacterPair::toMacintosh, s);
}

void TAMRIX_CALL SBCS_AtoI_Copy(char* dst, const char* src) {
    copyTranslated(sbcsTranslator.table, &CharacterPair::toWindows, dst, src);
}

void TAMRIX_CALL SBCS_ItoA_Copy(char* dst, const char* src) {
    copyTranslated(sbcsTranslator.table, &CharacterPair::toMacintosh, dst, src);
}

void TAMRIX_CALL SBCS_AtoI_nCopy(char* dst, const char* src, unsigned n) {
    copyTranslated(sbcsTranslator.table, &CharacterPair::toWindows, dst, src, n);
}

void TAMRIX_CALL SBCS_ItoA_nCopy(char* dst, const char* src, unsigned n) {
    copyTranslated(sbcsTranslator.table, &CharacterPair::toMacintosh, dst, src, n);
}
