// What the sources of names refer to besides, for a program that is made of them alone.
#include <cstring>

#include "macnames/name_settings.h"
#include "tamrix32/strings.h"

tamrix::SbcsTranslator tamrix::sbcsTranslator;
tamrix::NameRules tamrix::nameRules{};

char* dbcs_strcpy(char* dst, const char* src) {
    return std::strcpy(dst, src);
}
