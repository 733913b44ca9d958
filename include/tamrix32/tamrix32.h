/// @file
/// Includes every header of Tamrix32. C can use the flat functions.
///
/// @mainpage Tamrix32
/// | header | contents |
/// |---|---|
/// | macnames.h | Macintosh file names and characters, UNC paths with zones |
/// | extmap.h | Macintosh types and creators of file-name extensions |
/// | strings.h | strings that never split a double-byte character |
/// | registry.h | registry keys and values as objects |
/// | dialogs.h | dialogs in the configured font; the two mapping dialogs |
/// | browse.h | the file, save and folder dialog |
/// | about.h | raw resources, and the animated about box |
/// | module.h | the library's module handle |
/// | version.h | the version of the headers |
///
/// Rules for the whole library, unless a function says otherwise: strings are zero-terminated byte strings in the
/// active ANSI code page. Sizes and lengths are in bytes, and a capacity includes the terminator. Functions return 1
/// for success and 0 (or null) for failure. Nothing throws. A literal may be cast and passed to a `char*` parameter
/// that a function only reads: nothing writes to it.
#ifndef TAMRIX32_TAMRIX32_H
#define TAMRIX32_TAMRIX32_H

#include "tamrix32/about.h"
#include "tamrix32/browse.h"
#include "tamrix32/dialogs.h"
#include "tamrix32/extmap.h"
#include "tamrix32/macnames.h"
#include "tamrix32/module.h"
#include "tamrix32/registry.h"
#include "tamrix32/strings.h"
#include "tamrix32/version.h"

#endif
