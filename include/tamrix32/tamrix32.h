/// @file
/// Everything that Tamrix32 offers. From C, the flat functions.
#ifndef TAMRIX32_TAMRIX32_H
#define TAMRIX32_TAMRIX32_H

#include "tamrix32/about.h"
#include "tamrix32/browse.h"
#include "tamrix32/dialogs.h"
#include "tamrix32/extmap.h"
#include "tamrix32/frame.h"
#include "tamrix32/macnames.h"
#include "tamrix32/registry.h"
#include "tamrix32/strings.h"
#include "tamrix32/version.h"

#endif
