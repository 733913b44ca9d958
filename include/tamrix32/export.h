// How declarations of this library reach its users. Link statically (or build natively) with TAMRIX_STATIC defined;
// the library itself is built with TAMRIX_EXPORTS; without either, everything is imported from Tamrix32.dll.
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

#endif
