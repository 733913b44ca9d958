/* The part of Win32 without windows, drawing and dialogs, for native builds. Declares only the types, constants and
   functions that the library's modules, the command and their tests use, with the platform's names and documented
   behaviour, except that no call sets the thread's last error. tests/registry_calls_test.cpp tests the registry calls
   here and on the real platform.

   LONG and DWORD have 32 bits everywhere. WCHAR is char16_t here but wchar_t on Windows, so use WCHAR, never wchar_t.
   Compiles as C and as C++. Longer than other headers, because all sources include this one header by this name. */
#pragma once

#include <stddef.h>
#include <stdint.h>
#ifndef __cplusplus
#include <uchar.h>
#endif

#define WINAPI
#define CALLBACK
#define __cdecl

#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif

/* Integers, strings and handles. */

typedef uint8_t BYTE;
typedef uint16_t WORD;
typedef uint32_t DWORD;
typedef int32_t LONG;
typedef unsigned int UINT;
typedef int BOOL;
typedef char16_t WCHAR;
typedef intptr_t INT_PTR;
typedef intptr_t LONG_PTR;
typedef uintptr_t UINT_PTR;
typedef uintptr_t ULONG_PTR;
typedef uintptr_t DWORD_PTR;
typedef size_t SIZE_T;
typedef UINT_PTR WPARAM;
typedef LONG_PTR LPARAM;
typedef LONG_PTR LRESULT;
typedef DWORD LCID;
typedef DWORD REGSAM;

typedef void* LPVOID;
typedef BYTE* LPBYTE;
typedef DWORD* LPDWORD;
typedef LONG* PLONG;
typedef BOOL* LPBOOL;
typedef char* LPSTR;
typedef const char* LPCSTR;
typedef WCHAR* LPWSTR;
typedef const WCHAR* LPCWSTR;

typedef void* HGLOBAL;
typedef struct HKEY__* HKEY;
typedef HKEY* PHKEY;
typedef struct HINSTANCE__* HINSTANCE;
typedef HINSTANCE HMODULE;
typedef struct HWND__* HWND;
typedef struct HRSRC__* HRSRC;

/* Drawing: only the types in declarations of public headers. */
typedef struct HBITMAP__* HBITMAP;
typedef struct HFONT__* HFONT;
typedef struct HPALETTE__* HPALETTE;
typedef DWORD COLORREF;
typedef struct tagRECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
} RECT;

typedef INT_PTR(CALLBACK* DLGPROC)(HWND, UINT, WPARAM, LPARAM);

typedef struct _FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
} FILETIME, *PFILETIME;

typedef struct _SECURITY_ATTRIBUTES {
    DWORD nLength;
    LPVOID lpSecurityDescriptor;
    BOOL bInheritHandle;
} SECURITY_ATTRIBUTES;

#define LOBYTE(w) ((BYTE)((DWORD_PTR)(w)&0xff))
#define HIBYTE(w) ((BYTE)(((DWORD_PTR)(w) >> 8) & 0xff))
#define LOWORD(l) ((WORD)((DWORD_PTR)(l)&0xffff))
#define HIWORD(l) ((WORD)(((DWORD_PTR)(l) >> 16) & 0xffff))
#define MAKEWORD(low, high) ((WORD)(((BYTE)(low)) | ((WORD)((BYTE)(high)) << 8)))

/* Result codes. */

#define ERROR_SUCCESS 0
#define ERROR_FILE_NOT_FOUND 2
#define ERROR_ACCESS_DENIED 5
#define ERROR_INVALID_HANDLE 6
#define ERROR_NOT_ENOUGH_MEMORY 8
#define ERROR_INVALID_DATA 13
#define ERROR_INVALID_PARAMETER 87
#define ERROR_BAD_PATHNAME 161
#define ERROR_MORE_DATA 234
#define ERROR_NO_MORE_ITEMS 259
#define ERROR_NOACCESS 998
#define ERROR_BADKEY 1010
#define ERROR_KEY_DELETED 1018

/* Registry. */

#define HKEY_CLASSES_ROOT ((HKEY)(ULONG_PTR)0x80000000u)
#define HKEY_CURRENT_USER ((HKEY)(ULONG_PTR)0x80000001u)
#define HKEY_LOCAL_MACHINE ((HKEY)(ULONG_PTR)0x80000002u)
#define HKEY_USERS ((HKEY)(ULONG_PTR)0x80000003u)

#define DELETE 0x00010000
#define READ_CONTROL 0x00020000
#define MAXIMUM_ALLOWED 0x02000000

#define KEY_QUERY_VALUE 0x0001
#define KEY_SET_VALUE 0x0002
#define KEY_CREATE_SUB_KEY 0x0004
#define KEY_ENUMERATE_SUB_KEYS 0x0008
#define KEY_NOTIFY 0x0010
#define KEY_READ (READ_CONTROL | KEY_QUERY_VALUE | KEY_ENUMERATE_SUB_KEYS | KEY_NOTIFY)
#define KEY_ALL_ACCESS 0x000F003F

#define REG_OPTION_NON_VOLATILE 0
#define REG_CREATED_NEW_KEY 1
#define REG_OPENED_EXISTING_KEY 2

#define REG_NONE 0
#define REG_SZ 1
#define REG_EXPAND_SZ 2
#define REG_BINARY 3
#define REG_DWORD 4

#ifdef __cplusplus
extern "C" {
#endif

/* Differences from the platform: HKEY_CLASSES_ROOT is a separate root, not a view of other keys. Data is returned
   exactly as it was stored; newer systems sometimes add a missing terminator. The time of a key's last change is
   always 0. */
LONG WINAPI RegOpenKeyExA(HKEY key, LPCSTR path, DWORD options, REGSAM access, PHKEY result);
LONG WINAPI RegCreateKeyExA(HKEY key, LPCSTR path, DWORD reserved, LPSTR className, DWORD options, REGSAM access,
                            SECURITY_ATTRIBUTES* security, PHKEY result, LPDWORD disposition);
LONG WINAPI RegCreateKeyA(HKEY key, LPCSTR path, PHKEY result);
LONG WINAPI RegCloseKey(HKEY key);
LONG WINAPI RegDeleteKeyA(HKEY key, LPCSTR path);
LONG WINAPI RegEnumKeyA(HKEY key, DWORD index, LPSTR name, DWORD nameSize);
LONG WINAPI RegEnumKeyExA(HKEY key, DWORD index, LPSTR name, LPDWORD nameSize, LPDWORD reserved, LPSTR className,
                          LPDWORD classSize, PFILETIME lastWrite);
LONG WINAPI RegEnumValueA(HKEY key, DWORD index, LPSTR name, LPDWORD nameSize, LPDWORD reserved, LPDWORD type,
                          LPBYTE data, LPDWORD dataSize);
LONG WINAPI RegQueryValueExA(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD dataSize);
LONG WINAPI RegQueryValueA(HKEY key, LPCSTR path, LPSTR data, PLONG dataSize);
LONG WINAPI RegSetValueExA(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD dataSize);
LONG WINAPI RegDeleteValueA(HKEY key, LPCSTR name);

/* Code pages and strings. */

#define CP_ACP 0
#define CP_OEMCP 1
#define MB_PRECOMPOSED 0x00000001
#define MB_ERR_INVALID_CHARS 0x00000008
#define LCMAP_LOWERCASE 0x00000100
#define LCMAP_UPPERCASE 0x00000200
#define LOCALE_SYSTEM_DEFAULT 0x0800

UINT WINAPI GetACP(void);
UINT WINAPI GetOEMCP(void);
BOOL WINAPI IsDBCSLeadByte(BYTE value);
int WINAPI MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR text, int length, LPWSTR wide, int capacity);
int WINAPI WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR wide, int length, LPSTR text, int capacity,
                               LPCSTR defaultCharacter, LPBOOL usedDefault);
int WINAPI LCMapStringA(LCID locale, DWORD flags, LPCSTR source, int length, LPSTR target, int capacity);

/* Modules, resources and global memory. */

#define DLL_PROCESS_DETACH 0
#define DLL_PROCESS_ATTACH 1
#define DLL_THREAD_ATTACH 2
#define DLL_THREAD_DETACH 3

#define MAKEINTRESOURCEA(id) ((LPSTR)(ULONG_PTR)(WORD)(id))
#define IS_INTRESOURCE(name) (((ULONG_PTR)(name) >> 16) == 0)
#define RT_DIALOG MAKEINTRESOURCEA(5)

#define GMEM_MOVEABLE 0x0002
#define GMEM_ZEROINIT 0x0040

HMODULE WINAPI GetModuleHandleA(LPCSTR name);
HRSRC WINAPI FindResourceA(HMODULE module, LPCSTR name, LPCSTR type);
DWORD WINAPI SizeofResource(HMODULE module, HRSRC resource);
HGLOBAL WINAPI LoadResource(HMODULE module, HRSRC resource);
LPVOID WINAPI LockResource(HGLOBAL data);
BOOL WINAPI FreeResource(HGLOBAL data);

HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T size);
LPVOID WINAPI GlobalLock(HGLOBAL block);
BOOL WINAPI GlobalUnlock(HGLOBAL block);
SIZE_T WINAPI GlobalSize(HGLOBAL block);
HGLOBAL WINAPI GlobalFree(HGLOBAL block);

/* Message boxes, window classes and counters. */

#define MB_OK 0x00000000
#define MB_SETFOREGROUND 0x00010000
#define IDOK 1

int WINAPI MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT style);
BOOL WINAPI UnregisterClassA(LPCSTR name, HINSTANCE module);

static inline LONG InterlockedIncrement(LONG volatile* number) {
    return __atomic_add_fetch(number, 1, __ATOMIC_SEQ_CST);
}
static inline LONG InterlockedDecrement(LONG volatile* number) {
    return __atomic_sub_fetch(number, 1, __ATOMIC_SEQ_CST);
}

#ifdef __cplusplus
}
#endif
