# 32-bit Windows with the platform's C++ ABI: clang's MSVC target with MinGW-w64's headers and import libraries and the
# header-only part of its libstdc++. There is no vendor C++ runtime; src/runtime/ contains the start-up code.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86)
set(CMAKE_C_COMPILER clang)
set(CMAKE_C_COMPILER_TARGET i686-pc-windows-msvc)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_CXX_COMPILER_TARGET i686-pc-windows-msvc)
set(CMAKE_RC_COMPILER llvm-rc)
set(CMAKE_MT llvm-mt)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_MSVC_RUNTIME_LIBRARY "")

# MinGW-w64's GCC prints the folders of its headers and import libraries.
set(mingwCompiler i686-w64-mingw32-g++-posix)
execute_process(COMMAND ${mingwCompiler} -print-file-name=include/c++ OUTPUT_VARIABLE stdcxx
                OUTPUT_STRIP_TRAILING_WHITESPACE)
execute_process(COMMAND ${mingwCompiler} -print-file-name=libkernel32.a OUTPUT_VARIABLE kernel32
                OUTPUT_STRIP_TRAILING_WHITESPACE)
get_filename_component(TAMRIX_IMPORT_LIBRARIES ${kernel32} REALPATH)
get_filename_component(TAMRIX_IMPORT_LIBRARIES ${TAMRIX_IMPORT_LIBRARIES} DIRECTORY)
get_filename_component(mingwHeaders ${TAMRIX_IMPORT_LIBRARIES}/../include REALPATH)

set(flags "-march=i486 -mno-sse -mno-mmx -fno-ms-compatibility -fms-extensions -D_X86_=1 -D__MINGW32__")
string(APPEND flags " -D__USE_MINGW_ANSI_STDIO=0 -DWINVER=0x0400 -D_WIN32_WINNT=0x0400 -D_WIN32_IE=0x0400 -include stdio.h")
# MinGW's headers expect __declspec to be a macro, as in GCC; without it, C++20's <memory> does not compile.
string(APPEND flags " -D__declspec=__declspec")
set(CMAKE_C_FLAGS_INIT "${flags} -isystem ${mingwHeaders}")
string(APPEND flags " -fno-exceptions -fno-rtti -fno-threadsafe-statics")
set(CMAKE_CXX_FLAGS_INIT "${flags} -nostdinc++ -isystem ${stdcxx} -isystem ${stdcxx}/i686-w64-mingw32 -isystem ${mingwHeaders}")
set(CMAKE_RC_FLAGS_INIT "-I ${mingwHeaders}")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-fuse-ld=lld-link -nostdlib -Wno-unused-command-line-argument")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-fuse-ld=lld-link -nostdlib -Wno-unused-command-line-argument")
set(CMAKE_C_STANDARD_LIBRARIES "" CACHE STRING "" FORCE)
set(CMAKE_CXX_STANDARD_LIBRARIES "" CACHE STRING "" FORCE)
