// Import and export macros. Clients import everything from Tamrix32.dll. Building the library itself defines
// TAMRIX_EXPORTS. The test suites define TAMRIX_STATIC: they link the modules statically and attach them explicitly.
#ifndef TAMRIX32_EXPORT_H
#define TAMRIX32_EXPORT_H

#if defined(TAMRIX_STATIC)
#define TAMRIX_CLASS
#define TAMRIX_IMPORT
#define TAMRIX_CALL
#elif defined(TAMRIX_EXPORTS)
#define TAMRIX_CLASS __declspec(dllexport)  // whole classes are exported, under the platform's decorated names
#define TAMRIX_IMPORT                       // functions are exported by src/resources/tamrix32.def
#define TAMRIX_CALL __cdecl
#else
#define TAMRIX_CLASS __declspec(dllimport)
#define TAMRIX_IMPORT __declspec(dllimport)
#define TAMRIX_CALL __cdecl
#endif

#ifdef __cplusplus
#define TAMRIX_FUNCTION extern "C" TAMRIX_IMPORT
#else
#define TAMRIX_FUNCTION TAMRIX_IMPORT
#endif

// Newer C++ features, or nothing where the compiler does not have them. In C++98, "defaulted" and "deleted" members are
// only declared: the defaulted ones are imported from the DLL, and a use of a deleted one fails at link time.
#if defined(__cplusplus) && __cplusplus >= 201103L
#define TAMRIX_DEFAULTED = default
#define TAMRIX_DELETED = delete
#define TAMRIX_INT_ENUM : int
#else
#define TAMRIX_DEFAULTED
#define TAMRIX_DELETED
#define TAMRIX_INT_ENUM
#endif
#if defined(__cplusplus) && __cplusplus >= 201703L
#define TAMRIX_MAYBE_UNUSED [[maybe_unused]]
#else
#define TAMRIX_MAYBE_UNUSED
#endif

// Compilers whose C++ name decoration differs from the platform's cannot import the constructor of SExtensionMap. For
// them, extmap.h defines it inline.
#if !defined(TAMRIX_STATIC) && !defined(TAMRIX_EXPORTS) && !defined(_MSC_VER)
#define TAMRIX_INLINE_RECORD
#endif

#endif
