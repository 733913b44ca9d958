// How declarations of this library reach its users: everything is imported from Tamrix32.dll. The library itself is
// built with TAMRIX_EXPORTS; TAMRIX_STATIC is for its own suites, which link its modules and attach them by hand.
#ifndef TAMRIX32_EXPORT_H
#define TAMRIX32_EXPORT_H

#if defined(TAMRIX_STATIC)
#define TAMRIX_CLASS
#define TAMRIX_IMPORT
#define TAMRIX_CALL
#elif defined(TAMRIX_EXPORTS)
#define TAMRIX_CLASS __declspec(dllexport)  // classes leave whole, under the platform's decoration
#define TAMRIX_IMPORT                       // functions leave through src/resources/tamrix32.def
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

// What C++98 cannot say. Without "= default" and "= delete" a member is declared only: the former are imported like all
// others, the latter leave the linker to complain.
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

// A compiler with a C++ decoration of its own finds no exported constructor, so the plain record brings it along.
#if !defined(TAMRIX_STATIC) && !defined(TAMRIX_EXPORTS) && !defined(_MSC_VER)
#define TAMRIX_INLINE_RECORD
#endif

#endif
