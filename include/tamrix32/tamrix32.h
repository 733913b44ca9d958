/// @file
/// Everything that Tamrix32 offers. From C, the flat functions.
///
/// @mainpage Tamrix32
/// | header | what it offers |
/// |---|---|
/// | macnames.h | names and characters of Macintosh volumes, UNC paths with zones |
/// | extmap.h | Macintosh types and creators of file-name extensions |
/// | strings.h | strings that never split a double-byte character |
/// | registry.h | registry keys and values as objects |
/// | dialogs.h | dialogs in the configured font; the two mapping dialogs |
/// | browse.h | the file, save and folder dialog |
/// | about.h | raw resources, and the animated about box |
/// | frame.h | the library's own module |
/// | version.h | the version of the headers |
///
/// What holds for all of it: strings are zero-terminated bytes in the active ANSI code page; sizes and lengths are
/// bytes, and a capacity includes the terminator; results are 1 for success and 0 (or null) for failure unless a
/// function says otherwise; nothing throws. A parameter of type `char*` that a function only reads may be given a
/// literal by a cast: nothing writes through it.
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
